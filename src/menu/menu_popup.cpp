#include "menu/menu_popup.h"

#include <optional>
#include <type_traits>
#include <utility>

#include "base/handle.h"
#include "base/language.h"
#include "base/product.h"
#include "hotkeys/caret_place.h"
#include "hotkeys/foreground.h"
#include "hotkeys/hotkey_simulation.h"
#include "hotkeys/notice.h"
#include "hotkeys/pause.h"
#include "hotkeys/press_log.h"
#include "menu/menu_handle.h"
#include "menu/menu_input.h"
#include "menu/menu_tooltip.h"

namespace verbatix {

namespace {

enum class Phase { Closed, Open, CarryingOut };

struct PasteMenu {
    Phase phase = Phase::Closed;
    bool ending = false;  // CloseHotkeyMenu was called
    HotkeyPress request;
    std::optional<HotkeyPress> next;  // another hotkey, pressed while the menu was open
    std::vector<MenuRow> rows;
    MenuInputState input;
    bool showTooltips = false;
    HWND owner = nullptr;
    MenuTooltip tooltip;
};

PasteMenu pasteMenu;

}  // namespace

// ---- The tooltip

static const MenuRow* RowOf(UINT item) {
    const std::size_t row = item - std::size_t{kFirstRowItem};
    return item >= kFirstRowItem && row < pasteMenu.rows.size() ? &pasteMenu.rows[row] : nullptr;
}

static std::optional<RECT> ItemRectangle(HMENU menu, UINT item) {
    RECT rectangle = {};
    const int count = GetMenuItemCount(menu);
    for (int position = 0; position < count; ++position) {
        if (GetMenuItemID(menu, position) != item) continue;
        if (!GetMenuItemRect(nullptr, menu, static_cast<UINT>(position), &rectangle)) break;
        return rectangle;
    }
    return std::nullopt;
}

// The menu's window is found below its item; the item itself stands in where that fails.
static RECT MenuRectangle(const RECT& item) {
    RECT rectangle = item;
    const HWND window = WindowFromPoint({(item.left + item.right) / 2, (item.top + item.bottom) / 2});
    if (window && GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId()) {
        GetWindowRect(window, &rectangle);
    }
    return rectangle;
}

static void OnMenuSelect(HWND window, UINT item, UINT flags, HMENU menu) {
    const MenuRow* row = (flags & (MF_POPUP | MF_DISABLED | MF_SEPARATOR)) == 0 ? RowOf(item) : nullptr;
    const auto rectangle = row && pasteMenu.showTooltips ? ItemRectangle(menu, item) : std::nullopt;
    if (!rectangle) {
        HideMenuTooltip(pasteMenu.tooltip);
        return;
    }
    ShowMenuTooltip(pasteMenu.tooltip, window, MenuTooltipText(row->text), *rectangle,
                    MenuRectangle(*rectangle));
}

// ---- The menu's owner

static LRESULT CALLBACK OwnerProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    switch (message) {
        case WM_MENUSELECT:
            OnMenuSelect(window, LOWORD(wParam), HIWORD(wParam), reinterpret_cast<HMENU>(lParam));
            return 0;
        case WM_ACTIVATE:
            // A menu without the keyboard would stay open for good.
            if (LOWORD(wParam) == WA_INACTIVE && pasteMenu.phase == Phase::Open) EndMenu();
            return DefWindowProcW(window, message, wParam, lParam);
        case WM_ENTERIDLE:
            // Lost before the menu was up. On its way to another window it is nobody's.
            if (const HWND front = GetForegroundWindow(); front && front != window) EndMenu();
            return 0;
        default: return DefWindowProcW(window, message, wParam, lParam);
    }
}

static HWND Owner() {
    if (IsWindow(pasteMenu.owner)) return pasteMenu.owner;
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = OwnerProcedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = L"VerbatixMenuOwner";
    RegisterClassW(&windowClass);
    pasteMenu.owner =
        CreateWindowExW(WS_EX_TOPMOST | WS_EX_TOOLWINDOW, windowClass.lpszClassName, kProductName, WS_POPUP,
                        0, 0, 1, 1, nullptr, nullptr, windowClass.hInstance, nullptr);
    return pasteMenu.owner;
}

// Changes of the foreground take their time.
static bool ComesToFront(HWND window) {
    constexpr int kTries = 30;
    constexpr DWORD kPause = 10;
    for (int tried = 0; tried < kTries && IsWindow(window); ++tried) {
        if (GetForegroundWindow() == window) return true;
        Pause(kPause);
    }
    return false;
}

// Without the foreground a menu gets no keys and does not close on a click elsewhere. Asked for plainly
// first: the Alt press that helps where Windows refuses arrives in our own queue, and ends a menu.
static bool TakeKeyboard(HWND owner) {
    SetFocus(owner);
    SetForegroundWindow(owner);
    if (GetForegroundWindow() != owner) {
        BringToFront(owner);
        if (!ComesToFront(owner)) return false;
    }
    SetActiveWindow(owner);
    SetFocus(owner);
    pasteMenu.input = {};
    pasteMenu.input.openedAt = GetTickCount();
    TakeAltStrokesOut();
    ForgetReleasedModifiers();
    return GetForegroundWindow() == owner;
}

static LRESULT CALLBACK InputFilter(int code, WPARAM wParam, LPARAM lParam) noexcept {
    if (code != MSGF_MENU) return CallNextHookEx(nullptr, code, wParam, lParam);
    const MSG message = *reinterpret_cast<const MSG*>(lParam);
    switch (DecideMenuInput(pasteMenu.input, message)) {
        case MenuInput::Pass: return CallNextHookEx(nullptr, code, wParam, lParam);
        case MenuInput::Close: EndMenu(); break;
        case MenuInput::Swallow: break;
    }
    return 1;
}

static UINT Track(HMENU menu, HWND owner, const CaretPlace& place) {
    const UniqueHandle<HHOOK, UnhookWindowsHookEx> filter(
        SetWindowsHookExW(WH_MSGFILTER, InputFilter, nullptr, GetCurrentThreadId()));
    const UINT side = GetSystemMetrics(SM_MENUDROPALIGNMENT) ? TPM_RIGHTALIGN : TPM_LEFTALIGN;
    TPMPARAMS parameters = {};
    parameters.cbSize = sizeof parameters;
    parameters.rcExclude = place.exclude;
    const int item = TrackPopupMenuEx(menu, TPM_RETURNCMD | TPM_VERTICAL | side, place.point.x,
                                      place.point.y, owner, &parameters);
    PostMessageW(owner, WM_NULL, 0, 0);  // else the next menu may close as soon as it opens
    HideMenuTooltip(pasteMenu.tooltip);
    return static_cast<UINT>(item);
}

// ---- After the menu

// The window in front. While one is on its way there, none is for a moment.
static HWND SettledForeground() {
    constexpr int kTries = 20;
    constexpr DWORD kPause = 5;
    HWND front = GetForegroundWindow();
    for (int tried = 0; !front && tried < kTries; ++tried) {
        Pause(kPause);
        front = GetForegroundWindow();
    }
    return front;
}

// Where the keyboard goes back to. A click that closed the menu has chosen another window.
static HWND NextForeground(HWND owner) {
    const HWND front = SettledForeground();
    if (front && front != owner) return nullptr;
    if (!pasteMenu.input.lastWasButtonDown) return pasteMenu.request.foreground;
    const HWND below = GetAncestor(WindowFromPoint(pasteMenu.input.buttonPoint), GA_ROOT);
    const bool activates = below && below != owner && below != GetDesktopWindow() &&
                           (GetWindowLongPtrW(below, GWL_EXSTYLE) & WS_EX_NOACTIVATE) == 0;
    return activates ? below : pasteMenu.request.foreground;
}

// While the owner still has the foreground it may hand it on; once hidden it could not.
static void ReturnKeyboard(HWND owner, HWND window) {
    if (IsWindow(window)) SetForegroundWindow(window);
    if (IsWindow(pasteMenu.request.focus)) SetFocus(pasteMenu.request.focus);
    ShowWindow(owner, SW_HIDE);
}

// Keys that are sent before the window is in front would go elsewhere. Where no window was at the press,
// none has to be now; where it does not come, the client finds that.
static void HelpToFront(HWND window) {
    if (!window || GetForegroundWindow() == window) return;
    BringToFront(window);
    ComesToFront(window);
}

// Whether the row's entry still stands where it stood, neither deleted nor moved.
static bool IsStillThere(const EntryList& list, const MenuRow& row) {
    const auto found = list.find(row.position);
    return found != list.end() && found->second.current.number == row.number &&
           !IsBlank(found->second.current);
}

template <typename... Arguments>
static void Call(void (*function)(Arguments...), std::type_identity_t<Arguments>... arguments) {
    if (function) function(arguments...);
}

static void CarryOutRow(const MenuRow& row, const EntryList& list, const MenuClient& client) {
    constexpr DWORD kAfterMenu = 100;  // for the program in front to get its focus back
    Pause(kAfterMenu);
    if (row.kind == kHeadingKind) return EndPress(PressEnd::kMenuClosed);
    CurrentPress().entry = static_cast<int>(row.number);
    if (!IsStillThere(list, row)) return EndPress(PressEnd::kEntryGone);
    if (GetAsyncKeyState(VK_LSHIFT) < 0) {
        EndPress(PressEnd::kEdited);
        Call(client.editEntry, row.position);
        return;
    }
    const ULONGLONG start = GetTickCount64();
    HelpToFront(pasteMenu.request.foreground);
    Call(client.noteUse, row.position);
    Call(row.piece ? client.deliverText : client.executeEntry, row.text, pasteMenu.request);
    CurrentPress().milliseconds = static_cast<DWORD>(GetTickCount64() - start);
    EndPress(PressEnd::kDone);
}

// ---- From the request to the choice

// The item chosen among the rows, 0 for none.
static UINT Choose() {
    const HotkeyPress& request = pasteMenu.request;
    const CaretPlace place = FindCaretPlace(request.foreground);
    const HWND owner = Owner();
    SetWindowPos(owner, HWND_TOPMOST, place.point.x, place.point.y, 1, 1, SWP_SHOWWINDOW | SWP_NOACTIVATE);
    const bool winKeyIsTaken = request.modifier == 0 && IsWinHotkeyTaken(owner, request.key, false);
    const UniqueMenu menu = MakeMenuHandle(BuildMenuTree(pasteMenu.rows), place.point, winKeyIsTaken);
    if (!TakeKeyboard(owner)) {
        ShowWindow(owner, SW_HIDE);
        EndPress(PressEnd::kMenuRefused);
        NoticeAtCaret(LanguageText(text::kMenuNotInFront));
        return 0;
    }
    const UINT item = Track(menu.Get(), owner, place);
    // The main window takes the foreground over from the owner, which is hidden only then.
    if (item != kShowMainWindowItem) {
        ReturnKeyboard(owner, NextForeground(owner));
        SettledForeground();  // which is what a box gives the foreground back to
    }
    return pasteMenu.ending ? 0 : item;
}

static void RefuseMenu() {
    EndPress(PressEnd::kMenuTooLong);
    pasteMenu.phase = Phase::CarryingOut;
    ShowBoxInFront(nullptr, L"Max 900 per Menu", kProductName, MB_OK | MB_ICONWARNING);
    pasteMenu.phase = Phase::Closed;
}

static void ShowAndCarryOut(const EntryList& list, const MenuOptions& options, const MenuClient& client) {
    ContinuePress(pasteMenu.request.number);
    auto rows = CollectMenuRows(list, pasteMenu.request.key, pasteMenu.request.modifier);
    if (!rows) return RefuseMenu();
    pasteMenu.rows = std::move(*rows);
    OrderMenuRows(pasteMenu.rows, options);
    UINT item = 0;
    {
        // An entry pressed on the keyboard would be pasted into the menu, or into the execution of a
        // choice.
        const HookIsBusy busy;
        pasteMenu.phase = Phase::Open;
        item = Choose();
        pasteMenu.phase = Phase::CarryingOut;
        if (const MenuRow* row = RowOf(item)) {
            CarryOutRow(*row, list, client);
        } else {
            EndPress(PressEnd::kMenuClosed);
        }
        pasteMenu.rows.clear();
        pasteMenu.phase = Phase::Closed;
    }
    if (item == kShowMainWindowItem) Call(client.showMainWindow);
    if (item == kTakenWinKeyItem) Call(client.explainTakenWinKey);
    ShowWindow(pasteMenu.owner, SW_HIDE);
}

static bool IsSameHotkey(const HotkeyPress& a, const HotkeyPress& b) {
    return a.key == b.key && a.modifier == b.modifier;
}

static void RefuseNext() {
    if (pasteMenu.next) EndPress(pasteMenu.next->number, PressEnd::kBusy);
}

static void CloseFor(const HotkeyPress& request) {
    if (IsSameHotkey(request, pasteMenu.request)) {
        EndPress(request.number, PressEnd::kClosedMenu);
    } else {
        RefuseNext();
        pasteMenu.next = request;
    }
    EndMenu();
}

void ShowHotkeyMenu(const HotkeyPress& request, const EntryList& list, const MenuOptions& options,
                    bool showTooltips, const MenuClient& client) {
    if (pasteMenu.phase == Phase::Open) return CloseFor(request);
    // Asked for while a choice is carried out, or the hook executes an entry, whose box or dialog
    // dispatches messages.
    if (pasteMenu.phase == Phase::CarryingOut || keyboardHook.trigger.busy)
        return EndPress(request.number, PressEnd::kBusy);
    pasteMenu.ending = false;
    pasteMenu.showTooltips = showTooltips;
    pasteMenu.request = request;
    pasteMenu.next.reset();
    ShowAndCarryOut(list, options, client);
    while (pasteMenu.next && !pasteMenu.ending) {
        // The keyboard was the menu's own when the other hotkey was pressed; what it goes back to stays.
        pasteMenu.request.key = pasteMenu.next->key;
        pasteMenu.request.modifier = pasteMenu.next->modifier;
        pasteMenu.request.number = pasteMenu.next->number;
        pasteMenu.next.reset();
        ShowAndCarryOut(list, options, client);
    }
    RefuseNext();
}

void CloseHotkeyMenu() {
    if (pasteMenu.phase == Phase::Closed) return;
    pasteMenu.ending = true;
    EndMenu();
}

}  // namespace verbatix
