#include "clipboard/paste_content.h"

#include "clipboard/clipboard_session.h"
#include "clipboard/clipboard_text.h"
#include "clipboard/html_clipboard.h"
#include "hotkeys/key_simulation.h"
#include "hotkeys/pause.h"
#include "hotkeys/stroke_target.h"

namespace verbatix {

// Beyond the fixed waits. A program that needs longer for a stroke gets what comes then; the hook itself
// has to answer the system.
static void LetTargetPaste() {
    constexpr DWORD kLimit = 500;
    constexpr DWORD kLimitInsideHook = 100;
    AwaitStroke(isInsideHook ? kLimitInsideHook : kLimit);
}

static bool OrWithhold(bool done) {
    if (!done) WithholdStrokes();
    return done;
}

Stay StayOfPastes() {
    return IsPreviousClipboardKept() ? Stay::ForThePaste : Stay::UntilReplaced;
}

bool PutTextToPaste(std::wstring_view text) {
    LetTargetPaste();
    return OrWithhold(ClipboardPutText(text, StayOfPastes()));
}

bool PutHtmlToPaste(std::wstring_view text) {
    LetTargetPaste();
    return OrWithhold(HtmlClipboardPut(text, StayOfPastes()));
}

bool PutSavedToPaste(const SavedClipboard& store) {
    LetTargetPaste();
    return OrWithhold(PutSavedClipboard(store, kClipboardPatience, StayOfPastes()));
}

bool ClearForCopy() {
    LetTargetPaste();
    return OrWithhold(ClearClipboard());
}

}  // namespace verbatix
