#include "hotkeys/keyboard_hook.h"

#include <algorithm>
#include <utility>

#include "hotkeys/hotkey_names.h"
#include "hotkeys/notice.h"
#include "hotkeys/pause.h"
#include "hotkeys/press_log.h"
#include "ids.h"

namespace verbatix {

KeyboardHook keyboardHook;

static unsigned ReadStateWord() {
    unsigned word = 0;
    for (unsigned bit = 0; bit < kStateWordKeys.size(); ++bit) {
        if (GetKeyState(kStateWordKeys[bit]) < 0) word |= 1U << bit;
    }
    return word;
}

// Before the event that the hook is asked about.
static bool IsKeyDown(DWORD key) {
    return GetAsyncKeyState(static_cast<int>(key)) < 0;
}

static bool IsPausedInFront() {
    return !keyboardHook.pausedPrograms.empty() &&
           HasProgram(keyboardHook.pausedPrograms, ProgramOfWindow(GetForegroundWindow()));
}

namespace {

struct PressedEntry {
    std::wstring text;  // a copy: executing may pump messages, and the list may change under it
    HotkeyPress press;
};

// Between its press and its execution; the hook is busy all the while.
std::optional<PressedEntry> pressedEntry;

}  // namespace

static void PostCommand(WORD command) {
    const HWND window = keyboardHook.client.mainWindow;
    if (window) PostMessageW(window, WM_COMMAND, command, 0);
}

HookIsBusy::HookIsBusy()
    : before_(std::exchange(keyboardHook.trigger.busy, true)), start_(GetTickCount64()) {}

HookIsBusy::~HookIsBusy() {
    constexpr ULONGLONG kMayHaveCostTheHook = 200;
    const ULONGLONG end = GetTickCount64();
    keyboardHook.trigger.busy = before_;
    keyboardHook.trigger.claims.OnBlindTime(end);
    keyboardHook.lastEventAt = static_cast<DWORD>(end);
    if (end - start_ > kMayHaveCostTheHook) PostCommand(CMD_REINSTALL_HOOK);
}

static void Execute(const PressedEntry& entry) {
    if (!keyboardHook.client.executeEntry) return;
    keyboardHook.press = entry.press;
    ContinuePress(entry.press.number);
    const HookIsBusy busy;
    const ULONGLONG start = GetTickCount64();
    keyboardHook.client.executeEntry(entry.text);
    CurrentPress().milliseconds = static_cast<DWORD>(GetTickCount64() - start);
    EndPress(PressEnd::kDone);
}

void RunPressedEntry() {
    const auto entry = std::exchange(pressedEntry, std::nullopt);
    if (!entry) return;
    keyboardHook.trigger.busy = false;  // it was so for this entry
    Execute(*entry);
}

static bool FitsInsideHook(const std::wstring& text) {
    const auto fits = keyboardHook.client.fitsInsideHook;
    return !keyboardHook.stepIsRunning && (!fits || fits(text, keyboardHook.limit));
}

// After the time limit the system lets the press through. It looks at the next event of the keyboard only
// when it is done with that one, so a release that comes while the hook still is at it is of such a press.
static void ExecuteInsideHook(const PressedEntry& entry, ULONGLONG asked) {
    ClaimedKeys& claims = keyboardHook.trigger.claims;
    claims.SetLost(entry.press.key, true);
    isInsideHook = true;
    patienceInsideHook = keyboardHook.limit / 3;
    Execute(entry);
    isInsideHook = false;
    claims.SetLost(entry.press.key, GetTickCount64() - asked >= keyboardHook.limit);
}

static void ExecuteOrPost(const PressedEntry& entry, ULONGLONG asked) {
    if (FitsInsideHook(entry.text)) return ExecuteInsideHook(entry, asked);
    pressedEntry = entry;
    PressOf(entry.press.number).way = PressWay::kAfterHook;
    keyboardHook.trigger.busy =
        PostMessageW(keyboardHook.client.mainWindow, WM_COMMAND, CMD_RUN_ENTRY, 0) != FALSE;
}

static HWND WindowWithKeyboard(HWND foreground) {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    const bool known =
        GetGUIThreadInfo(GetWindowThreadProcessId(foreground, nullptr), &info) && info.hwndFocus;
    return known ? info.hwndFocus : foreground;
}

// Posted: the key waits for the hook, and the rename for the window's other business.
static void AskForRename(const KBDLLHOOKSTRUCT& event) {
    const bool pressed = event.vkCode == VK_F2 && (event.flags & LLKHF_UP) == 0;
    const auto wantsRename = keyboardHook.client.wantsRename;
    if (pressed && wantsRename && wantsRename()) PostCommand(CMD_RENAME_ENTRY);
}

static bool IsUsersPress(const KBDLLHOOKSTRUCT& event) {
    return (event.flags & LLKHF_UP) == 0 && event.dwExtraInfo != kSyntheticInputTag &&
           !IsControlOfAltGr(event);
}

static bool IsUsersControlRelease(const KBDLLHOOKSTRUCT& event) {
    const bool isControl = event.vkCode == VK_RCONTROL || event.vkCode == VK_CONTROL;
    return isControl && (event.flags & LLKHF_UP) != 0 && event.dwExtraInfo != kSyntheticInputTag;
}

bool IsControlHeldOnPurpose() {
    if (GetAsyncKeyState(VK_RCONTROL) < 0 && !keyboardHook.rightControlIsHotkeys) return true;
    return GetAsyncKeyState(VK_LCONTROL) < 0;
}

void AwaitReleases() {
    constexpr ULONGLONG kLongest = 1000;
    constexpr DWORD kMoment = 200;  // between the releases of a key and of its modifiers
    const ULONGLONG start = GetTickCount64();
    const auto isQuiet = [] {
        return !keyboardHook.trigger.claims.Any() && GetTickCount() - keyboardHook.lastEventAt > kMoment;
    };
    while (!isQuiet() && GetTickCount64() - start < kLongest) Pause(10);
}

// How long the event waited for this thread, which counts for the time limit too. A time that cannot be,
// as some drivers tell one, counts as none.
static DWORD WaitedFor(const KBDLLHOOKSTRUCT& event) {
    constexpr DWORD kLongest = 10000;
    const DWORD waited = GetTickCount() - event.time;
    return waited < kLongest ? waited : 0;
}

static PressNumber RecordPress(const KeyDecision& decision, DWORD key, HWND foreground) {
    const PressWay way = decision.action == KeyAction::TriggerMenu    ? PressWay::kMenu
                         : decision.action == KeyAction::TriggerEntry ? PressWay::kInsideHook
                                                                      : PressWay::kNone;
    const PressNumber number = BeginPress(decision.modifier, key, foreground, way);
    EndPress(number, decision.refusal);
    return number;
}

static void AskForMenu(const HotkeyPress& press) {
    if (keyboardHook.menuRequest) EndPress(keyboardHook.menuRequest->number, PressEnd::kBusy);
    keyboardHook.menuRequest = press;
    PostCommand(CMD_SHOW_PASTE_MENU);
}

static void CarryOutTrigger(const KeyDecision& decision, DWORD key, ULONGLONG now, ULONGLONG asked) {
    const HWND foreground = GetForegroundWindow();
    const PressedEntry entry = {decision.text ? *decision.text : std::wstring(),
                                {key, decision.modifier, GetFocus(), foreground,
                                 WindowWithKeyboard(foreground), RecordPress(decision, key, foreground)}};
    keyboardHook.trigger.lastTrigger = now;
    if (decision.modifier == kModifierRightCtrl) keyboardHook.rightControlIsHotkeys = true;
    keyboardHook.trigger.pendingRelease = static_cast<int>(decision.modifier);
    SendTagged({static_cast<BYTE>(key), KEYEVENTF_KEYUP});
    HeldKeys held;
    ReleaseHeldModifiers(held);
    if (decision.action == KeyAction::TriggerEntry) ExecuteOrPost(entry, asked);
    if (decision.action == KeyAction::TriggerMenu) AskForMenu(entry.press);
}

static void ReleasePendingKeys() {
    const int modifier = std::exchange(keyboardHook.trigger.pendingRelease, -1);
    for (const KeyStroke stroke : PendingReleaseStrokes(modifier)) SendTagged(stroke);
}

static unsigned HeldMouseButtons() {
    constexpr unsigned kMouseBits = 256 | 512 | 1024;
    return ReadStateWord() & kMouseBits;
}

// The window may have lost the keyboard, or its keys to a menu, without having been told yet.
static bool HasTheKeys(HWND window) {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    constexpr DWORD kOwnKeys = GUI_INMENUMODE | GUI_SYSTEMMENUMODE | GUI_POPUPMENUMODE | GUI_INMOVESIZE;
    return GetGUIThreadInfo(GetCurrentThreadId(), &info) && info.hwndFocus == window &&
           !(info.flags & kOwnKeys) && IsWindowVisible(window) &&
           GetForegroundWindow() == GetAncestor(window, GA_ROOT);
}

// Whether the window that asks for a hotkey takes the event.
static bool IsCaptured(const KBDLLHOOKSTRUCT& event) {
    KeyCapture& capture = keyboardHook.capture;
    if (!capture.window) return false;
    // A release is told to it wherever the keyboard is: it knows what is held by the events alone.
    if (!(event.flags & LLKHF_UP) && !HasTheKeys(capture.window)) {
        LeaveToOthers(event, capture.state);
        return false;
    }
    const unsigned mouse = HeldMouseButtons();
    const CaptureStep step = DecideCapture(event, mouse != 0, capture.state);
    if (step.action != CaptureAction::kNothing) {
        PostMessageW(capture.window, WM_KEYS_PRESSED,
                     MAKEWPARAM(static_cast<WORD>(step.action), event.vkCode),
                     static_cast<LPARAM>(capture.state.held | mouse));
    }
    return step.taken;
}

static LRESULT CALLBACK KeyboardHookProcedure(int code, WPARAM message, LPARAM parameter) noexcept {
    if (code != HC_ACTION) return CallNextHookEx(nullptr, code, message, parameter);
    keyboardHook.lastEventAt = GetTickCount();
    const KBDLLHOOKSTRUCT event = *reinterpret_cast<const KBDLLHOOKSTRUCT*>(parameter);
    if (IsHeldBack(event)) return 1;
    if (IsUsersControlRelease(event)) keyboardHook.rightControlIsHotkeys = false;
    if (event.dwExtraInfo != kSyntheticInputTag) AskForRename(event);
    if (IsCaptured(event)) return 1;
    // Installed for the capture alone.
    if (keyboardHook.off) return CallNextHookEx(nullptr, code, message, parameter);
    const ULONGLONG now = GetTickCount64();
    const KeyDecision decision =
        DecideKey(event, keyboardHook.tables, keyboardHook.disabled, keyboardHook.trigger,
                  {ReadStateWord, IsKeyDown, IsPausedInFront}, now);
    if (decision.action <= KeyAction::PassAfterRelease && IsUsersPress(event)) HideNotice();
    if (decision.refusal != PressEnd::kNotYet && decision.action < KeyAction::TriggerNothing)
        RecordPress(decision, event.vkCode, GetForegroundWindow());
    switch (decision.action) {
        case KeyAction::PassOn: return CallNextHookEx(nullptr, code, message, parameter);
        case KeyAction::PassAfterRelease: ReleasePendingKeys(); return 0;
        case KeyAction::SwallowAfterRelease: ReleasePendingKeys(); break;
        case KeyAction::Swallow: break;
        default: CarryOutTrigger(decision, event.vkCode, now, now - WaitedFor(event));
    }
    return 1;
}

void ReportHookFailure(DWORD error) {
    wchar_t* text = nullptr;
    FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, error, 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    MessageBoxW(keyboardHook.client.mainWindow, text ? text : L"", L"Error hooking keyboard",
                MB_OK | MB_ICONERROR);
    LocalFree(text);
}

DWORD HookTimeLimit(std::optional<DWORD> registryValue) {
    constexpr DWORD kWhereUnset = 300;
    constexpr DWORD kNeverMore = 1000;
    return std::min(registryValue.value_or(kWhereUnset), kNeverMore);
}

static std::optional<DWORD> ReadHookTimeout() {
    DWORD value = 0;
    DWORD size = sizeof value;
    const LSTATUS answer = RegGetValueW(HKEY_CURRENT_USER, L"Control Panel\\Desktop",
                                        L"LowLevelHooksTimeout", RRF_RT_REG_DWORD, nullptr, &value, &size);
    return answer == ERROR_SUCCESS ? std::optional(value) : std::nullopt;
}

static bool SetHook() {
    keyboardHook.lastEventAt = GetTickCount();
    keyboardHook.handle.Reset(
        SetWindowsHookExW(WH_KEYBOARD_LL, KeyboardHookProcedure, GetModuleHandleW(nullptr), 0));
    return static_cast<bool>(keyboardHook.handle);
}

bool InstallKeyboardHook() {
    RemoveKeyboardHook();
    keyboardHook.limit = HookTimeLimit(ReadHookTimeout());
    ++keyboardHook.installCount;
    if (SetHook()) return true;
    ReportHookFailure(GetLastError());
    return false;
}

void RemoveKeyboardHook() {
    keyboardHook.handle.Reset();
}

void InstallKeyboardHookUnlessOff() {
    if (!keyboardHook.off) InstallKeyboardHook();
}

void ToggleKeyboardHook() {
    keyboardHook.off = !keyboardHook.off;
    keyboardHook.trigger.claims.Clear();  // keys come up without the hook seeing it
    // A field that asks for a hotkey goes on getting the keys.
    if (!keyboardHook.off) {
        InstallKeyboardHook();
    } else if (!keyboardHook.capture.window) {
        RemoveKeyboardHook();
    }
}

static CaptureState KeysDownNow() {
    CaptureState state;
    for (DWORD key = 1; key < kKeyCount; ++key) {
        if (!IsKeyDown(key)) continue;
        state.before.set(key);
        state.held |= ModifierKeyBit(key);
    }
    return state;
}

void BeginCapture(HWND window) {
    ReleasePendingKeys();
    keyboardHook.capture = {window, KeysDownNow()};
    if (!keyboardHook.handle) SetHook();
}

void EndCapture(HWND window) {
    if (!window || keyboardHook.capture.window != window) return;
    const KeyCapture ended = std::exchange(keyboardHook.capture, {});
    const ULONGLONG now = GetTickCount64();
    for (DWORD key = 0; key < kKeyCount; ++key) {
        if (ended.state.taken[key]) keyboardHook.trigger.claims.Claim(key, now);
    }
    if (keyboardHook.off) RemoveKeyboardHook();
}

void ForgetHeldKeys() {
    keyboardHook.trigger.claims.Clear();
    ForgetCapturedKeys();
}

void ForgetCapturedKeys() {
    KeyCapture& capture = keyboardHook.capture;
    if (!capture.window) return;
    capture.state = KeysDownNow();
    PostMessageW(capture.window, WM_KEYS_PRESSED,
                 MAKEWPARAM(static_cast<WORD>(CaptureAction::kReleased), 0),
                 static_cast<LPARAM>(capture.state.held));
}

}  // namespace verbatix
