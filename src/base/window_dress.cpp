#include "base/window_dress.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>

#include "base/common_controls.h"
#include "base/dark_menu_bar.h"
#include "base/dark_paint.h"
#include "base/theme.h"

namespace verbatix {

namespace {

constexpr UINT_PTR kDressSubclass = 90;
constexpr wchar_t kDressed[] = L"VerbatixDressed";  // was dark once

bool IsOfClass(HWND window, const wchar_t* wanted) {
    wchar_t name[32] = {};
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    return lstrcmpiW(name, wanted) == 0;
}

COLORREF Choose(COLORREF dark, int light) {
    return IsDark() ? dark : GetSysColor(light);
}

void DressOne(HWND window);

// ---- What is told its colours

void ColorList(HWND list) {
    const COLORREF back = Choose(kDark.field, COLOR_WINDOW);
    ListView_SetBkColor(list, back);
    ListView_SetTextBkColor(list, back);
    ListView_SetTextColor(list, Choose(kDark.text, COLOR_WINDOWTEXT));
    // A window beside the list, for rows that are cut off.
    DressOne(ListView_GetToolTips(list));
}

void ColorTree(HWND tree) {
    TreeView_SetBkColor(tree, Choose(kDark.field, COLOR_WINDOW));
    TreeView_SetTextColor(tree, Choose(kDark.text, COLOR_WINDOWTEXT));
    TreeView_SetLineColor(tree, IsDark() ? kDark.faint : CLR_DEFAULT);
    DressOne(TreeView_GetToolTips(tree));
}

void ColorTip(HWND tip) {
    SendMessageW(tip, TTM_SETTIPBKCOLOR, Choose(kDark.field, COLOR_INFOBK), 0);
    SendMessageW(tip, TTM_SETTIPTEXTCOLOR, Choose(kDark.text, COLOR_INFOTEXT), 0);
}

void ColorCalendar(HWND calendar) {
    MonthCal_SetColor(calendar, MCSC_BACKGROUND, Choose(kDark.back, COLOR_WINDOW));
    MonthCal_SetColor(calendar, MCSC_MONTHBK, Choose(kDark.field, COLOR_WINDOW));
    MonthCal_SetColor(calendar, MCSC_TEXT, Choose(kDark.text, COLOR_WINDOWTEXT));
    // That of the days' names and the chosen day, too.
    MonthCal_SetColor(calendar, MCSC_TITLEBK, Choose(kDark.accent, COLOR_ACTIVECAPTION));
    MonthCal_SetColor(calendar, MCSC_TITLETEXT, Choose(kDark.back, COLOR_CAPTIONTEXT));
    MonthCal_SetColor(calendar, MCSC_TRAILINGTEXT, Choose(kDark.faint, COLOR_GRAYTEXT));
}

// The list that drops down is a window of its own, with a scroll bar.
void ColorDropDown(HWND combo) {
    COMBOBOXINFO parts = {};
    parts.cbSize = sizeof parts;
    if (GetComboBoxInfo(combo, &parts)) {
        SetTheme(parts.hwndList, IsDark() ? L"DarkMode_Explorer" : nullptr);
    }
}

// Scroll bars and the edge of a field have their dark parts under different names.
void ColorEdit(HWND edit) {
    const bool isMultiLine = (GetWindowLongPtrW(edit, GWL_STYLE) & ES_MULTILINE) != 0;
    if (isMultiLine && IsDark()) SetTheme(edit, L"DarkMode_Explorer");
}

void ColorDialog(HWND dialog) {
    DarkenTitleBar(dialog, IsDark());
}

// ---- The rule

using Painter = void (*)(HWND control, HDC canvas, const RECT& place);

struct Rule {
    const wchar_t* windowClass;
    const wchar_t* darkTheme;  // of Windows; null: it has none
    void (*color)(HWND);
    Painter paint;
    bool paintsAlways;  // also where Windows' controls have dark themes
};

constexpr Rule kRules[] = {
    {WC_BUTTONW, L"DarkMode_Explorer", nullptr, PaintButton, false},
    {WC_COMBOBOXW, L"DarkMode_CFD", ColorDropDown, PaintCombo, false},
    {WC_EDITW, L"DarkMode_CFD", ColorEdit, nullptr, false},
    {WC_LISTBOXW, L"DarkMode_Explorer", nullptr, nullptr, false},
    {WC_LISTVIEWW, L"DarkMode_Explorer", ColorList, nullptr, false},
    {WC_TREEVIEWW, L"DarkMode_Explorer", ColorTree, nullptr, false},
    {WC_HEADERW, L"DarkMode_ItemsView", nullptr, PaintHeader, true},
    {STATUSCLASSNAMEW, L"DarkMode_Explorer", nullptr, PaintStatusBar, true},
    {TOOLTIPS_CLASSW, L"DarkMode_Explorer", ColorTip, nullptr, false},
    // It takes colours only without a theme.
    {MONTHCAL_CLASSW, L"", ColorCalendar, nullptr, false},
    {L"#32770", nullptr, ColorDialog, nullptr, false},
};

const Rule* RuleFor(HWND window) {
    const auto* const found = std::find_if(std::begin(kRules), std::end(kRules), [=](const Rule& rule) {
        return IsOfClass(window, rule.windowClass);
    });
    return found == std::end(kRules) ? nullptr : found;
}

// A button of another kind, a link say, is drawn by whoever made it.
Painter PainterOf(HWND control, const Rule& rule) {
    if (ControlsHaveDarkTheme() && !rule.paintsAlways) return nullptr;
    if (rule.paint != PaintButton) return rule.paint;
    const LONG_PTR kind = GetWindowLongPtrW(control, GWL_STYLE) & BS_TYPEMASK;
    return kind == BS_PUSHBUTTON || kind == BS_DEFPUSHBUTTON ? PaintButton : nullptr;
}

// ---- While it is dark

// A control may draw these changes at once, in its own colours.
bool ChangesTheLook(UINT message) {
    constexpr UINT kChanges[] = {
        WM_SETTEXT,      WM_ENABLE,     WM_SETFOCUS, WM_KILLFOCUS, WM_LBUTTONDOWN,
        WM_LBUTTONUP,    WM_MOUSELEAVE, WM_KEYDOWN,  WM_KEYUP,     WM_UPDATEUISTATE,
        WM_COMMAND,      WM_SIZE,       BM_SETSTATE, BM_SETSTYLE,  CB_SETCURSEL,
        CB_SHOWDROPDOWN, SB_SETTEXTW,   SB_SIMPLE,   SB_SETPARTS,  WM_CAPTURECHANGED,
    };
    return std::find(std::begin(kChanges), std::end(kChanges), message) != std::end(kChanges);
}

void Paint(HWND control, Painter painter) {
    PAINTSTRUCT paint = {};
    const HDC canvas = BeginPaint(control, &paint);
    RECT place = {};
    GetClientRect(control, &place);
    painter(control, canvas, place);
    EndPaint(control, &paint);
}

LRESULT CALLBACK ControlProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                  DWORD_PTR data) noexcept {
    if (message == WM_NCDESTROY) {
        RemovePropW(control, kDressed);
        RemoveSubclass(control, ControlProcedure, id);
    }
    if (!IsDark()) return PassToSubclassed(control, message, wParam, lParam);
    const Painter painter = PainterOf(control, *reinterpret_cast<const Rule*>(data));
    if (painter && message == WM_PAINT) return Paint(control, painter), 0;
    if (painter && message == WM_ERASEBKGND) return 1;
    // The field in which a name is edited in place comes later, and is the list's or tree's own child.
    if (message == WM_PARENTNOTIFY && LOWORD(wParam) == WM_CREATE) DressOne(reinterpret_cast<HWND>(lParam));
    if (message == WM_CTLCOLOREDIT) {
        return reinterpret_cast<LRESULT>(
            DarkControlColors(reinterpret_cast<HDC>(wParam), message, reinterpret_cast<HWND>(lParam)));
    }
    const LRESULT answer = PassToSubclassed(control, message, wParam, lParam);
    if (painter && ChangesTheLook(message)) InvalidateRect(control, nullptr, FALSE);
    if (message == WM_NCPAINT) PaintEdge(control);
    return answer;
}

// Where no theme draws the chosen row, it has Windows' light colours once the control has lost the
// keyboard. A list takes ours only for a row that it does not believe to be chosen.
template <typename Draw>
LRESULT ColorChosenRow(Draw& draw, bool isChosen) {
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
    if (draw.nmcd.dwDrawStage == CDDS_ITEMPREPAINT && isChosen && GetFocus() != draw.nmcd.hdr.hwndFrom) {
        draw.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED);
        draw.clrText = kDark.text;
        draw.clrTextBk = kDark.lit;
    }
    return CDRF_DODEFAULT;
}

LRESULT OnCustomDraw(NMHDR& header, LRESULT otherwise) {
    if (ControlsHaveDarkTheme()) return otherwise;
    if (IsOfClass(header.hwndFrom, WC_TREEVIEWW)) {
        auto& draw = reinterpret_cast<NMTVCUSTOMDRAW&>(header);
        return ColorChosenRow(draw, (draw.nmcd.uItemState & CDIS_SELECTED) != 0);
    }
    if (!IsOfClass(header.hwndFrom, WC_LISTVIEWW)) return otherwise;
    auto& draw = reinterpret_cast<NMLVCUSTOMDRAW&>(header);
    const auto row = static_cast<int>(draw.nmcd.dwItemSpec);
    return ColorChosenRow(draw, ListView_GetItemState(header.hwndFrom, row, LVIS_SELECTED) != 0);
}

// Notifications of the controls, and the parts of the window that are not controls.
LRESULT CALLBACK DialogProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                 DWORD_PTR) noexcept {
    if (message == WM_NCDESTROY) {
        RemovePropW(dialog, kDressed);
        RemoveSubclass(dialog, DialogProcedure, id);
    }
    if (!IsDark()) return PassToSubclassed(dialog, message, wParam, lParam);
    switch (message) {
        case WM_CTLCOLORDLG:
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORBTN:
        case WM_CTLCOLORLISTBOX:
            return reinterpret_cast<LRESULT>(
                DarkControlColors(reinterpret_cast<HDC>(wParam), message, reinterpret_cast<HWND>(lParam)));
        case WM_UAHDRAWMENU: return DrawMenuBarBack(dialog, lParam), 0;
        case WM_UAHDRAWMENUITEM: return DrawMenuBarItem(lParam), 0;
        default: break;
    }
    const LRESULT answer = PassToSubclassed(dialog, message, wParam, lParam);
    switch (message) {
        case WM_NCPAINT:
        case WM_NCACTIVATE:
            if ((GetWindowLongPtrW(dialog, GWL_STYLE) & WS_CAPTION) != WS_CAPTION) PaintEdge(dialog);
            [[fallthrough]];
        case WM_MENUSELECT:
        case WM_INITMENUPOPUP:
        case WM_EXITMENULOOP: RepairMenuBar(dialog); break;
        case WM_NOTIFY:
            if (reinterpret_cast<NMHDR*>(lParam)->code != NM_CUSTOMDRAW) break;
            return OnCustomDraw(*reinterpret_cast<NMHDR*>(lParam), answer);
        default: break;
    }
    return answer;
}

void DressOne(HWND window) {
    const Rule* const rule = RuleFor(window);
    const bool wasDressed = GetPropW(window, kDressed) != nullptr;
    if (!rule || (!IsDark() && !wasDressed)) return;
    if (!wasDressed) {
        SetPropW(window, kDressed, reinterpret_cast<HANDLE>(1));
        const bool isDialog = rule->color == ColorDialog;
        AddSubclass(window, isDialog ? DialogProcedure : ControlProcedure, kDressSubclass,
                    reinterpret_cast<DWORD_PTR>(rule));
    }
    if (rule->darkTheme) SetTheme(window, IsDark() ? rule->darkTheme : nullptr);
    if (rule->color) rule->color(window);
}

BOOL CALLBACK DressChild(HWND control, LPARAM) noexcept {
    DressOne(control);
    return TRUE;
}

BOOL CALLBACK DressTopWindow(HWND window, LPARAM) noexcept {
    const auto module = reinterpret_cast<HMODULE>(GetWindowLongPtrW(window, GWLP_HINSTANCE));
    if (module != GetModuleHandleW(nullptr)) return TRUE;
    DressWindow(window);
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_FRAME);
    return TRUE;
}

}  // namespace

void DressWindow(HWND window) {
    DressOne(window);
    EnumChildWindows(window, DressChild, 0);
}

void DressAllWindows() {
    EnumThreadWindows(GetCurrentThreadId(), DressTopWindow, 0);
}

}  // namespace verbatix
