#include "hotkeys/keyboard_hook.h"

#include <utility>

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

static void SendRenameOnF2(DWORD key) {
    const HookClient& client = keyboardHook.client;
    if (key != VK_F2 || !client.mainWindow || !client.wantsRename) return;
    if (client.wantsRename()) SendMessageW(client.mainWindow, WM_COMMAND, CMD_RENAME_ENTRY, 0);
}

// `text` is a copy: executing may pump messages, and the list may change under it.
static void Execute(const std::wstring& text) {
    if (!keyboardHook.client.executeEntry) return;
    keyboardHook.trigger.busy = true;
    keyboardHook.client.executeEntry(text);
    keyboardHook.trigger.busy = false;
    keyboardHook.trigger.claims.OnBlindTime(GetTickCount64());
}

static HWND WindowWithKeyboard(HWND foreground) {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    const bool known =
        GetGUIThreadInfo(GetWindowThreadProcessId(foreground, nullptr), &info) && info.hwndFocus;
    return known ? info.hwndFocus : foreground;
}

static void CarryOutTrigger(const KeyDecision& decision, DWORD key, ULONGLONG now) {
    const HWND foreground = GetForegroundWindow();
    const MenuRequest request = {key, decision.modifier, GetFocus(), foreground,
                                 WindowWithKeyboard(foreground)};
    const std::wstring text = decision.text ? *decision.text : std::wstring();
    keyboardHook.target = request.target;
    keyboardHook.trigger.lastTrigger = now;
    keyboardHook.trigger.pendingRelease = static_cast<int>(decision.modifier);
    SendTagged({static_cast<BYTE>(key), KEYEVENTF_KEYUP});
    HeldKeys held;
    ReleaseHeldModifiers(held);
    if (decision.action == KeyAction::TriggerEntry) {
        Execute(text);
    } else if (decision.action == KeyAction::TriggerMenu) {
        keyboardHook.menuRequest = request;
        const HWND window = keyboardHook.client.mainWindow;
        if (window) PostMessageW(window, WM_COMMAND, CMD_SHOW_PASTE_MENU, 0);
    }
}

static void ReleasePendingKeys() {
    const int modifier = std::exchange(keyboardHook.trigger.pendingRelease, -1);
    for (const KeyStroke stroke : PendingReleaseStrokes(modifier)) SendTagged(stroke);
}

static LRESULT CALLBACK KeyboardHookProcedure(int code, WPARAM message, LPARAM parameter) noexcept {
    if (code != HC_ACTION) return CallNextHookEx(nullptr, code, message, parameter);
    const KBDLLHOOKSTRUCT event = *reinterpret_cast<const KBDLLHOOKSTRUCT*>(parameter);
    if (event.dwExtraInfo != kSyntheticInputTag) SendRenameOnF2(event.vkCode);
    const ULONGLONG now = GetTickCount64();
    const KeyDecision decision = DecideKey(event, keyboardHook.tables, keyboardHook.disabled,
                                           keyboardHook.trigger, {ReadStateWord, IsKeyDown}, now);
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

bool InstallKeyboardHook() {
    RemoveKeyboardHook();
    ++keyboardHook.installCount;
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
