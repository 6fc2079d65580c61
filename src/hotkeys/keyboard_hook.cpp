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

static void ExecuteOrPost(const PressedEntry& entry) {
    if (FitsInsideHook(entry.text)) {
        isInsideHook = true;
        Execute(entry);
        isInsideHook = false;
        return;
    }
    pressedEntry = entry;
    CurrentPress().way = PressWay::kAfterHook;
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
    return (event.flags & LLKHF_UP) == 0 && event.dwExtraInfo != kSyntheticInputTag;
}

static bool IsUsersControlRelease(const KBDLLHOOKSTRUCT& event) {
    const bool isControl = event.vkCode == VK_RCONTROL || event.vkCode == VK_CONTROL;
    return isControl && (event.flags & LLKHF_UP) != 0 && event.dwExtraInfo != kSyntheticInputTag;
}

bool IsControlHeldOnPurpose() {
    if (GetAsyncKeyState(VK_RCONTROL) < 0 && !keyboardHook.rightControlIsHotkeys) return true;
    return GetAsyncKeyState(VK_LCONTROL) < 0;
}

static void CarryOutTrigger(const KeyDecision& decision, DWORD key, ULONGLONG now) {
    const HWND foreground = GetForegroundWindow();
    const PressedEntry entry = {
        decision.text ? *decision.text : std::wstring(),
        {key, decision.modifier, GetFocus(), foreground, WindowWithKeyboard(foreground)}};
    BeginPress(decision.modifier, key, foreground,
               decision.action == KeyAction::TriggerMenu ? PressWay::kMenu : PressWay::kInsideHook);
    keyboardHook.trigger.lastTrigger = now;
    if (decision.modifier == kModifierRightCtrl) keyboardHook.rightControlIsHotkeys = true;
    keyboardHook.trigger.pendingRelease = static_cast<int>(decision.modifier);
    SendTagged({static_cast<BYTE>(key), KEYEVENTF_KEYUP});
    HeldKeys held;
    ReleaseHeldModifiers(held);
    if (decision.action == KeyAction::TriggerEntry) {
        ExecuteOrPost(entry);
    } else if (decision.action == KeyAction::TriggerMenu) {
        keyboardHook.menuRequest = entry.press;
        PostCommand(CMD_SHOW_PASTE_MENU);
    } else {
        EndPress(PressEnd::kBusy);
    }
}

static void ReleasePendingKeys() {
    const int modifier = std::exchange(keyboardHook.trigger.pendingRelease, -1);
    for (const KeyStroke stroke : PendingReleaseStrokes(modifier)) SendTagged(stroke);
}

static LRESULT CALLBACK KeyboardHookProcedure(int code, WPARAM message, LPARAM parameter) noexcept {
    if (code != HC_ACTION) return CallNextHookEx(nullptr, code, message, parameter);
    keyboardHook.lastEventAt = GetTickCount();
    const KBDLLHOOKSTRUCT event = *reinterpret_cast<const KBDLLHOOKSTRUCT*>(parameter);
    if (IsHeldBack(event)) return 1;
    if (IsUsersControlRelease(event)) keyboardHook.rightControlIsHotkeys = false;
    if (event.dwExtraInfo != kSyntheticInputTag) AskForRename(event);
    const ULONGLONG now = GetTickCount64();
    const KeyDecision decision =
        DecideKey(event, keyboardHook.tables, keyboardHook.disabled, keyboardHook.trigger,
                  {ReadStateWord, IsKeyDown, IsPausedInFront}, now);
    if (decision.action <= KeyAction::PassAfterRelease && IsUsersPress(event)) HideNotice();
    switch (decision.action) {
        case KeyAction::PassOn: return CallNextHookEx(nullptr, code, message, parameter);
        case KeyAction::PassAfterRelease: ReleasePendingKeys(); return 0;
        case KeyAction::SwallowAfterRelease: ReleasePendingKeys(); break;
        case KeyAction::Swallow: break;
        default: CarryOutTrigger(decision, event.vkCode, now);
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

bool InstallKeyboardHook() {
    RemoveKeyboardHook();
    keyboardHook.limit = HookTimeLimit(ReadHookTimeout());
    ++keyboardHook.installCount;
    keyboardHook.lastEventAt = GetTickCount();
    keyboardHook.handle.Reset(
        SetWindowsHookExW(WH_KEYBOARD_LL, KeyboardHookProcedure, GetModuleHandleW(nullptr), 0));
    if (keyboardHook.handle) return true;
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
    if (keyboardHook.off) {
        RemoveKeyboardHook();
    } else {
        InstallKeyboardHook();
    }
}

}  // namespace verbatix
