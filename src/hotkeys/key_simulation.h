// The program's own key strokes: letting go what the user's hotkey still holds, single keys, the copy and
// the paste stroke. Main thread only. The system does not tell whether a synthetic event arrived (a window
// of a higher integrity level never gets it).
//
// A stroke is played whole. The system serves the hook while a stroke is sent, and a user who lets Ctrl go
// just then would make a typed "c" of a copy stroke: what he does meanwhile is held back and comes behind
// it.
#pragma once

#include <windows.h>

#include <array>
#include <span>
#include <vector>

namespace verbatix {

// Extra information of every key event the program sends; the program's own hook lets such events pass.
inline constexpr ULONG_PTR kSyntheticInputTag = 444;

// One key event: virtual-key code and KEYEVENTF_ flags.
struct KeyStroke {
    BYTE key;
    DWORD flags;
    bool operator==(const KeyStroke&) const = default;
};

// The keys that ReleaseHeldModifiers looks at, and the record of which of them were down, in that order.
// Shift is not among them: a hotkey held with Shift pastes with Shift.
inline constexpr std::array<BYTE, 11> kReleasableKeys = {VK_LWIN,    VK_RWIN,    VK_RMENU,    VK_LMENU,
                                                         VK_MENU,    VK_CONTROL, VK_RCONTROL, VK_LCONTROL,
                                                         VK_LBUTTON, VK_MBUTTON, VK_RBUTTON};
using HeldKeys = std::array<bool, kReleasableKeys.size()>;

// The key-up events that let go what is held.
std::vector<KeyStroke> ReleaseStrokes(const HeldKeys& held);

// Whether the event is of the left Ctrl that the system itself presses and lets go along with right Alt
// where that is an Alt-Gr. It does so for a right Alt of ours as well, and without our tag.
constexpr bool IsControlOfAltGr(const KBDLLHOOKSTRUCT& event) {
    constexpr DWORD kMadeBySystem = 0x200;  // in the scan code
    return event.vkCode == VK_LCONTROL && (event.scanCode & kMadeBySystem) != 0;
}

// Sends one event with the key's scan code and the tag.
void SendTagged(KeyStroke stroke);

// Lets go every modifier key and mouse button that the system believes to be down, and records them.
void ReleaseHeldModifiers(HeldKeys& held);

// Lets the right Ctrl of a hotkey go, which the one above does not reach: its release lacks the extended
// flag. To a copy and a paste that makes no difference, and a user who holds it may go on to the next
// hotkey; Tab, Enter and what is typed would be something else with it.
void LetRightControlGo();

// Sends these events and nothing between them.
void PlayWhole(std::span<const KeyStroke> strokes);

// For the hook: whether the user's event came in the middle of a stroke. Then it has been taken over, to be
// played again behind the stroke, and nobody may get it now. Of his Alt-Gr right Alt alone is played again,
// which brings its Ctrl along.
bool IsHeldBack(const KBDLLHOOKSTRUCT& event);

// Each releases the held modifiers first. SendPaste then waits that many milliseconds before its stroke.
// False, and no stroke is sent, when the strokes are not let go (see below).
bool PressKey(BYTE key);
bool SendCopy();
bool SendPaste(DWORD milliseconds);

// How many copy strokes were sent since the start.
unsigned CopyStrokes();

// What became of the strokes of an execution.
enum class Aim {
    Free,         // they go to whatever has the keyboard
    Missed,       // another window was in front when the first of them was due: none is sent any more
    PasteMissed,  // the same, and it was a paste stroke: what should be pasted is on the clipboard
    Withheld,     // what they should paste or copy found no clipboard: none is sent any more
};

// Aims the strokes that follow at a window: the first of them goes out only while that window is in front,
// the others follow the focus, as a form needs it. Null: nothing is aimed at.
void AimStrokes(HWND window);
Aim StrokeAim();

// Sends no stroke any more until the next AimStrokes.
void WithholdStrokes();

// Whether a stroke may go out now. The window gets a moment to come back from a box of our own.
bool MaySendStroke();

}  // namespace verbatix
