#include "clipboard/paste_content.h"

#include "clipboard/clipboard_session.h"
#include "clipboard/clipboard_text.h"
#include "clipboard/html_clipboard.h"
#include "hotkeys/key_simulation.h"
#include "hotkeys/pause.h"
#include "hotkeys/stroke_target.h"

namespace verbatix {

static bool OrWithhold(bool done) {
    if (!done) WithholdStrokes();
    return done;
}

Stay StayOfPastes() {
    return IsPreviousClipboardKept() ? Stay::ForThePaste : Stay::UntilReplaced;
}

bool PutTextToPaste(std::wstring_view text) {
    AwaitLastStroke();
    return OrWithhold(ClipboardPutText(text, StayOfPastes()));
}

bool PutHtmlToPaste(std::wstring_view text) {
    AwaitLastStroke();
    return OrWithhold(HtmlClipboardPut(text, StayOfPastes()));
}

bool PutSavedToPaste(const SavedClipboard& store) {
    AwaitLastStroke();
    return OrWithhold(PutSavedClipboard(store, kClipboardPatience, StayOfPastes()));
}

bool ClearForCopy() {
    AwaitLastStroke();
    return OrWithhold(ClearClipboard());
}

}  // namespace verbatix
