#include "ui/shell/control_tips.h"

#include <commctrl.h>
#include <windowsx.h>

#include <string>
#include <utility>

#include "base/common_controls.h"
#include "base/language.h"
#include "base/screen_scale.h"
#include "base/text.h"
#include "base/window_dress.h"
#include "hotkeys/integrity.h"
#include "ids.h"
#include "ui/editor/editor.h"
#include "ui/entries/test_target.h"
#include "ui/state/hotkey_state.h"
#include "ui/state/main_window.h"
#include "ui/state/status_bar.h"

namespace verbatix {

namespace {

struct ButtonTip {
    int button;
    int text;
};

constexpr ButtonTip kButtonTips[] = {
    {CMD_NEW_ENTRY, text::kNewTip}, {CMD_COPY_ENTRY, text::kCopyTip}, {CMD_DELETE_ENTRY, text::kDeleteTip},
    {IDC_INSERT, text::kInsertTip}, {CMD_TEST_ENTRY, text::kTestTip},
};

struct ControlTips {
    HWND window = nullptr;
    std::wstring text;   // the control does not keep it
    int statusPart = 0;  // under the mouse
};

ControlTips tips;

std::wstring TestTip() {
    const std::wstring target = TestTargetName();
    if (target.empty()) return LanguageText(text::kNoWindowToTest);
    return FillIn(LanguageText(KeepsKeysFromUs(TestTarget()) ? text::kTestOutOfReach : text::kTestTip),
                  {target});
}

std::wstring StatusTip() {
    const std::wstring across = LineAcross();
    if (!across.empty()) return across;
    switch (tips.statusPart) {
        case 0: return {};
        case 1: return HotkeyStateText();
        default: return LanguageText(text::kFiguresTip);
    }
}

// What stands in a line or on a button that is too narrow for it; else nothing.
std::wstring TextIfCut(HWND control) {
    const std::wstring text = FieldText(GetDlgCtrlID(control));
    RECT room = {};
    GetClientRect(control, &room);
    const HDC canvas = GetDC(control);
    const HGDIOBJ before =
        SelectObject(canvas, reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)));
    RECT needed = {};
    DrawTextW(canvas, text.c_str(), -1, &needed, DT_SINGLELINE | DT_NOPREFIX | DT_CALCRECT);
    SelectObject(canvas, before);
    ReleaseDC(control, canvas);
    const bool isButton = GetDlgCtrlID(control) == IDC_MEND_CODE;
    const LONG edges = isButton ? 4 * GetSystemMetrics(SM_CXEDGE) : 0;
    return needed.right + edges > room.right ? text : std::wstring();
}

std::wstring VerdictTip(HWND line) {
    const std::wstring text = TextIfCut(line);
    return text + (text.empty() || editor.more.empty() ? L"" : L"\n") + editor.more;
}

std::wstring TipOf(HWND control) {
    if (control == mainWindow.statusBar) return StatusTip();
    const int id = GetDlgCtrlID(control);
    if (id == CMD_TEST_ENTRY) return TestTip();
    if (id == IDC_CLASH) return VerdictTip(control);
    if (id == IDC_MEND_CODE) return TextIfCut(control);
    for (const ButtonTip& tip : kButtonTips) {
        if (tip.button == id) return LanguageText(tip.text);
    }
    return {};
}

int StatusPartAt(LPARAM place) {
    const POINT mouse = {GET_X_LPARAM(place), GET_Y_LPARAM(place)};
    const LRESULT parts = SendMessageW(mainWindow.statusBar, SB_GETPARTS, 0, 0);
    for (int part = 0; part < static_cast<int>(parts); ++part) {
        RECT rectangle = {};
        SendMessageW(mainWindow.statusBar, SB_GETRECT, static_cast<WPARAM>(part),
                     reinterpret_cast<LPARAM>(&rectangle));
        if (PtInRect(&rectangle, mouse)) return part;
    }
    return 0;
}

// Each part has a tip of its own, and the control asks for the text only when a tip comes up.
LRESULT CALLBACK WithPartTips(HWND bar, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                              DWORD_PTR) noexcept {
    if (message == WM_MOUSEMOVE) {
        const int part = StatusPartAt(lParam);
        if (std::exchange(tips.statusPart, part) != part) SendMessageW(tips.window, TTM_POP, 0, 0);
    }
    if (message == WM_NCDESTROY) RemoveSubclass(bar, WithPartTips, id);
    return PassToSubclassed(bar, message, wParam, lParam);
}

void AddTip(HWND dialog, HWND control) {
    TTTOOLINFOW info = {};
    // The size without the reserved field is the one that common controls of every version accept.
    info.cbSize = TTTOOLINFOW_V2_SIZE;
    info.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    info.hwnd = dialog;
    info.uId = reinterpret_cast<UINT_PTR>(control);
    info.lpszText = LPSTR_TEXTCALLBACKW;
    SendMessageW(tips.window, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&info));
}

}  // namespace

void SetUpControlTips(HWND dialog) {
    constexpr int kMaximumWidth = 420;  // a limit is what makes the control break lines
    tips.window =
        CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, 0,
                        0, 0, 0, dialog, nullptr, GetModuleHandleW(nullptr), nullptr);
    DressWindow(tips.window);
    SendMessageW(tips.window, TTM_SETMAXTIPWIDTH, 0, Scaled(kMaximumWidth, DpiOf(dialog)));
    for (const ButtonTip& tip : kButtonTips) AddTip(dialog, GetDlgItem(dialog, tip.button));
    for (const int line : {IDC_CLASH, IDC_MEND_CODE}) AddTip(dialog, GetDlgItem(dialog, line));
    AddTip(dialog, mainWindow.statusBar);
    AddSubclass(mainWindow.statusBar, WithPartTips, 1);
}

void OnTipNotify(NMHDR& header) {
    if (header.hwndFrom != tips.window || header.code != TTN_GETDISPINFOW) return;
    tips.text = TipOf(reinterpret_cast<HWND>(header.idFrom));
    reinterpret_cast<NMTTDISPINFOW&>(header).lpszText = tips.text.data();
}

void NameTestTarget() {
    TellInStatusBar(TestTip());
}

}  // namespace verbatix
