#include "clipboard/slots.h"

#include <windows.h>

#include "base/debug.h"
#include "clipboard/clipboard_session.h"
#include "clipboard/paste_content.h"
#include "clipboard/saved_clipboard.h"
#include "hotkeys/key_simulation.h"
#include "hotkeys/pause.h"
#include "hotkeys/stroke_target.h"

namespace verbatix {

namespace {

constexpr DWORD kAnswerTime = 100;     // ms, for the foreground program to act on the copy stroke
constexpr DWORD kBeforePaste = 20;     // ms
constexpr DWORD kBetweenPastes = 500;  // ms

bool NamesSlot(wchar_t character) {
    return character >= L'1' && character <= L'9';
}

}  // namespace

int SlotIndexFromChar(wchar_t character) {
    return NamesSlot(character) ? character - L'0' : 1;
}

void SaveSlot(wchar_t character) {
    const int slot = SlotIndexFromChar(character);
    SaveUsersClipboard(clipboardSlots[slot]);
    DebugLine(L"Save: %d slot: %d\n", clipboardSlots[slot].Count(), slot);
}

void CopySlot(wchar_t character, bool restoreOldClipboard) {
    const int slot = SlotIndexFromChar(character);
    if (!MaySendStroke()) return;
    if (restoreOldClipboard) {
        KeepPreviousClipboard();
        Pause(kAnswerTime);
    }
    SendCopy();
    AwaitCopy(kAnswerTime);
    SaveClipboard(clipboardSlots[slot]);
    DebugLine(L"Copy: %d slot: %d\n", clipboardSlots[slot].Count(), slot);
    if (restoreOldClipboard) GiveBackPreviousClipboard(kClipboardPatience);
}

void PasteSlot(wchar_t character) {
    const int slot = SlotIndexFromChar(character);
    DebugLine(L"Paste: %d slot: %d\n", clipboardSlots[slot].Count(), slot);
    if (PutSavedToPaste(clipboardSlots[slot])) SendPaste(kBeforePaste);
}

void PasteSlots(std::wstring_view digits) {
    bool first = true;
    for (const wchar_t character : digits) {
        if (!NamesSlot(character)) continue;
        if (!first) Pause(kBetweenPastes);
        first = false;
        const SavedClipboard& slot = clipboardSlots[SlotIndexFromChar(character)];
        if (!PutSavedToPaste(slot) || !SendPaste(kBeforePaste)) return;
    }
}

}  // namespace verbatix
