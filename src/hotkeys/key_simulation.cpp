#include "hotkeys/key_simulation.h"

#include <algorithm>
#include <optional>

#include "hotkeys/pause.h"
#include "hotkeys/press_log.h"
#include "hotkeys/stroke_target.h"

namespace verbatix {

std::vector<KeyStroke> ReleaseStrokes(const HeldKeys& held) {
    std::vector<KeyStroke> strokes;
    bool altHeld = false;
    for (std::size_t i = 0; i < held.size(); ++i) {
        if (!held[i]) continue;
        if (kReleasableKeys[i] == VK_MENU) {
            altHeld = true;
        } else {
            // The mouse buttons go up as if they were keys: the key state is what must change, no
            // program is to see the end of a click.
            strokes.push_back({kReleasableKeys[i], KEYEVENTF_KEYUP});
        }
    }
    // Left Alt went up above; the neutral Alt comes last and extended, which reaches the right one too.
    if (altHeld) strokes.push_back({VK_MENU, KEYEVENTF_EXTENDEDKEY | KEYEVENTF_KEYUP});
    return strokes;
}

void SendTagged(KeyStroke stroke) {
    keybd_event(stroke.key, static_cast<BYTE>(MapVirtualKeyW(stroke.key, MAPVK_VK_TO_VSC)), stroke.flags,
                kSyntheticInputTag);
}

void ReleaseHeldModifiers(HeldKeys& held) {
    for (std::size_t i = 0; i < held.size(); ++i) held[i] = GetKeyState(kReleasableKeys[i]) < 0;
    for (const KeyStroke stroke : ReleaseStrokes(held)) SendTagged(stroke);
}

namespace {

// More than a person types while a stroke is sent; what goes beyond is let through.
struct HeldBack {
    bool playing = false;
    BYTE key = 0;                 // of the event that is being sent
    std::optional<bool> control;  // of an Alt-Gr: whether it went up
    std::array<KBDLLHOOKSTRUCT, 32> events;
    std::size_t count = 0;
};

HeldBack heldBack;

}  // namespace

bool IsHeldBack(const KBDLLHOOKSTRUCT& event) {
    if (!heldBack.playing || event.dwExtraInfo == kSyntheticInputTag) return false;
    if (heldBack.count == heldBack.events.size()) return false;
    // Played again as a Ctrl of its own, it would be let go by nobody.
    if (IsControlOfAltGr(event)) {
        if (heldBack.key == VK_RMENU) return false;
        heldBack.control = (event.flags & LLKHF_UP) != 0;
        return true;
    }
    heldBack.events[heldBack.count++] = event;
    return true;
}

// As it came, so that the hook decides on it now.
static void PlayAgain(const KBDLLHOOKSTRUCT& event) {
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = static_cast<WORD>(event.vkCode);
    input.ki.wScan = static_cast<WORD>(event.scanCode);
    input.ki.dwExtraInfo = event.dwExtraInfo;
    if (event.flags & LLKHF_EXTENDED) input.ki.dwFlags |= KEYEVENTF_EXTENDEDKEY;
    if (event.flags & LLKHF_UP) input.ki.dwFlags |= KEYEVENTF_KEYUP;
    if (event.vkCode == VK_PACKET) {  // a character that another program types
        input.ki.wVk = 0;
        input.ki.dwFlags |= KEYEVENTF_UNICODE;
    }
    SendInput(1, &input, sizeof input);
}

// Whether the right Alt of the Ctrl that was held back was so too, and brings it along.
static bool BringsControl(const HeldBack& taken) {
    return std::any_of(
        taken.events.begin(), taken.events.begin() + static_cast<std::ptrdiff_t>(taken.count),
        [&](const KBDLLHOOKSTRUCT& event) {
            return event.vkCode == VK_RMENU && ((event.flags & LLKHF_UP) != 0) == *taken.control;
        });
}

void PlayWhole(std::span<const KeyStroke> strokes) {
    heldBack.playing = true;
    for (const KeyStroke stroke : strokes) {
        heldBack.key = stroke.key;
        SendTagged(stroke);
    }
    heldBack.playing = false;
    const HeldBack taken = heldBack;
    heldBack.count = 0;
    heldBack.control.reset();
    // Its Alt comes only now, behind the stroke, and by itself.
    if (taken.control && !BringsControl(taken))
        SendTagged({VK_LCONTROL, *taken.control ? DWORD{KEYEVENTF_KEYUP} : 0});
    for (std::size_t i = 0; i < taken.count; ++i) PlayAgain(taken.events[i]);
}

// What the user did before now counts before: his release of the hotkey, waiting for the hook, would else
// be served in the middle of the next stroke.
static void ReleaseForStroke() {
    ServeWaitingKeys();
    HeldKeys held;
    ReleaseHeldModifiers(held);
}

static void PlayControlStroke(BYTE key) {
    const KeyStroke strokes[] = {
        {VK_LCONTROL, 0}, {key, 0}, {key, KEYEVENTF_KEYUP}, {VK_LCONTROL, KEYEVENTF_KEYUP}};
    PlayWhole(strokes);
}

namespace {

struct AimedStrokes {
    HWND window = nullptr;  // until the first stroke
    Aim aim = Aim::Free;
};

AimedStrokes aimed;

}  // namespace

void AimStrokes(HWND window) {
    aimed = {window, Aim::Free};
}

void WithholdStrokes() {
    aimed = {nullptr, Aim::Withheld};
}

Aim StrokeAim() {
    return aimed.aim;
}

// A box that has gone hands the foreground on through nobody or another window of ours.
static bool IsOnItsWay(HWND front) {
    DWORD process = 0;
    GetWindowThreadProcessId(front, &process);
    return process == 0 || process == GetCurrentProcessId();
}

static bool ComesToFront(HWND window) {
    constexpr int kTries = 20;
    constexpr DWORD kPause = 10;
    for (int tried = 0; tried < kTries && IsWindow(window); ++tried) {
        const HWND front = GetForegroundWindow();
        if (front == window) return true;
        if (!IsOnItsWay(front)) return false;
        Pause(kPause);
    }
    return false;
}

bool MaySendStroke() {
    if (!aimed.window) return aimed.aim == Aim::Free;
    if (!ComesToFront(aimed.window)) aimed.aim = Aim::Missed;
    aimed.window = nullptr;
    return aimed.aim == Aim::Free;
}

void LetRightControlGo() {
    if (GetAsyncKeyState(VK_RCONTROL) < 0)
        SendTagged({VK_CONTROL, KEYEVENTF_EXTENDEDKEY | KEYEVENTF_KEYUP});
}

bool PressKey(BYTE key) {
    ReleaseForStroke();
    LetRightControlGo();
    if (!MaySendStroke()) return false;
    const KeyStroke strokes[] = {{key, 0}, {key, KEYEVENTF_KEYUP}};
    PlayWhole(strokes);
    ++CurrentPress().strokes;
    return true;
}

static unsigned copyStrokes = 0;

unsigned CopyStrokes() {
    return copyStrokes;
}

bool SendCopy() {
    ReleaseForStroke();
    if (!MaySendStroke()) return false;
    PlayControlStroke('C');
    ++copyStrokes;
    ++CurrentPress().copies;
    NoteStroke();
    return true;
}

bool SendPaste(DWORD milliseconds) {
    ReleaseForStroke();
    Pause(milliseconds);
    const bool isFirst = aimed.window != nullptr;
    if (!MaySendStroke()) {
        if (isFirst) aimed.aim = Aim::PasteMissed;
        return false;
    }
    PlayControlStroke('V');
    ++CurrentPress().pastes;
    NoteStroke();
    return true;
}

}  // namespace verbatix
