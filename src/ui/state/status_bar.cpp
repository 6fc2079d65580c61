#include "ui/state/status_bar.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>

#include "base/language.h"
#include "base/text.h"
#include "ids.h"
#include "ui/state/hotkey_state.h"
#include "ui/state/main_window.h"
#include "ui/state/notice.h"

namespace verbatix {

namespace {

struct Offered {
    std::wstring text;  // empty: nothing is offered
    Offer offer = Offer::kUndo;
};

Offered standing;

// Not over a notice that the user's work is in danger.
bool IsOfferShown() {
    return !standing.text.empty() && !IsNoticeUp(Notice::kListUnread) && !IsNoticeUp(Notice::kNotSaved);
}

HWND OfferLink() {
    return GetDlgItem(mainWindow.statusBar, IDC_OFFER_LINK);
}

SIZE SizeOf(const std::wstring& text) {
    SIZE size = {};
    const HDC canvas = GetDC(mainWindow.statusBar);
    const HGDIOBJ before =
        SelectObject(canvas, reinterpret_cast<HFONT>(SendMessageW(mainWindow.statusBar, WM_GETFONT, 0, 0)));
    GetTextExtentPoint32W(canvas, text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(canvas, before);
    ReleaseDC(mainWindow.statusBar, canvas);
    return size;
}

void HideLink() {
    const HWND link = OfferLink();
    if (!link) return;
    // A hidden button with the focus would leave the keyboard nowhere.
    if (GetFocus() == link) SetFocus(ShownView());
    ShowWindow(link, SW_HIDE);
}

void ShowAcross(const std::wstring& text) {
    SendMessageW(mainWindow.statusBar, SB_SIMPLE, TRUE, 0);
    SendMessageW(mainWindow.statusBar, SB_SETTEXTW, SB_SIMPLEID, reinterpret_cast<LPARAM>(text.c_str()));
}

// `linkName` is the number of a text.
void ShowWithLink(const std::wstring& text, int linkName) {
    ShowAcross(text);
    const HWND link = OfferLink();
    if (!link) return;
    std::wstring name = LanguageText(linkName);
    ReplaceAll(name, L"&", L"");
    SetWindowTextW(link, name.c_str());
    RECT bar = {};
    GetClientRect(mainWindow.statusBar, &bar);
    const SIZE size = SizeOf(name);
    const int margin = static_cast<int>(size.cy) / 2;
    const int width = static_cast<int>(size.cx) + margin;
    // A long text is cut rather than the link.
    const int left = std::min(static_cast<int>(SizeOf(text).cx) + 2 * margin,
                              static_cast<int>(bar.right) - width - GetSystemMetrics(SM_CXVSCROLL));
    SetWindowPos(link, HWND_TOP, left, 1, width, static_cast<int>(bar.bottom) - 1,
                 SWP_SHOWWINDOW | SWP_NOACTIVATE);
    InvalidateRect(link, nullptr, TRUE);
}

}  // namespace

std::optional<Offer> StandingOffer() {
    return IsOfferShown() ? std::optional(standing.offer) : std::nullopt;
}

std::wstring LineAcross() {
    return IsOfferShown() ? standing.text : ShownNotice();
}

void OnStatusBarClick() {
    if (IsOfferShown()) return;
    // It may take the notice away.
    if (const auto help = ShownHelp().run) help();
}

void OfferInStatusBar(const std::wstring& text, Offer offer) {
    standing = {text, offer};
    // A tab would put what follows into the middle.
    ReplaceAll(standing.text, L"\t", L" ");
    UpdateStatusBar();
}

void WithdrawOffer() {
    if (standing.text.empty()) return;
    standing = {};
    UpdateStatusBar();
}

void PlaceOffer() {
    const HWND link = OfferLink();
    if (link && (GetWindowLongPtrW(link, GWL_STYLE) & WS_VISIBLE)) UpdateStatusBar();
}

void UpdateStatusBar() {
    // Such a notice comes back by itself; what has just been done is easily taken back only now.
    if (IsOfferShown())
        return ShowWithLink(standing.text, standing.offer == Offer::kUndo ? text::kUndo : text::kRedo);
    const std::wstring notice = ShownNotice();
    if (const int help = ShownHelp().name) return ShowWithLink(notice, help);
    if (!notice.empty()) return TellInStatusBar(notice);
    HideLink();
    SendMessageW(mainWindow.statusBar, SB_SIMPLE, FALSE, 0);
    const std::wstring total = std::to_wstring(mainWindow.entryCount);
    std::wstring count = FillIn(LanguageText(text::kEntryCount), {total});
    if (mainWindow.selectedCount > 1) {
        count = FillIn(LanguageText(text::kSelectedCount), {std::to_wstring(mainWindow.selectedCount)});
    } else if (IsFiltered()) {
        count = FillIn(LanguageText(text::kShownCount), {std::to_wstring(mainWindow.rows.size()), total});
    }
    SendMessageW(mainWindow.statusBar, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(count.c_str()));
    const std::wstring hook = HotkeyStateText();
    SendMessageW(mainWindow.statusBar, SB_SETTEXTW, 1, reinterpret_cast<LPARAM>(hook.c_str()));
}

void TellInStatusBar(const std::wstring& text) {
    HideLink();
    ShowAcross(text);
}

}  // namespace verbatix
