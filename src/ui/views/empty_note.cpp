#include "ui/views/empty_note.h"

#include <commctrl.h>

#include <string>

#include "base/common_controls.h"
#include "base/language.h"
#include "base/text.h"
#include "ids.h"
#include "store/list_file.h"
#include "ui/state/main_window.h"
#include "ui/views/list_modes.h"

namespace verbatix {

namespace {

std::wstring NoteText() {
    if (!mainWindow.rows.empty() || IsListUnread()) return {};
    if (mainWindow.entryCount == 0) return LanguageText(text::kNoEntriesYet);
    const std::wstring filter = FieldText(IDC_FILTER);
    if (filter.empty()) return ModeEmptyNote();
    return FillIn(LanguageText(text::kNothingMatches), {filter});
}

// The part of the view where rows would be.
RECT RowPlace(HWND view) {
    RECT place = {};
    GetClientRect(view, &place);
    RECT header = {};
    if (view == mainWindow.list) GetWindowRect(ListView_GetHeader(view), &header);
    place.top += header.bottom - header.top;
    return place;
}

// Not by LVN_GETEMPTYMARKUP: that is for lists alone, and not every system asks for it.
void DrawNote(HWND view) {
    const std::wstring text = NoteText();
    if (text.empty()) return;
    const bool isTree = view == mainWindow.tree;
    const auto back =
        static_cast<COLORREF>(SendMessageW(view, isTree ? TVM_GETBKCOLOR : LVM_GETBKCOLOR, 0, 0));
    const auto ink =
        static_cast<COLORREF>(SendMessageW(view, isTree ? TVM_GETTEXTCOLOR : LVM_GETTEXTCOLOR, 0, 0));
    RECT place = RowPlace(view);
    InflateRect(&place, -static_cast<int>(place.right / 10), -static_cast<int>(place.bottom / 10));
    const HDC dc = GetDC(view);
    const HGDIOBJ before = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(view, WM_GETFONT, 0, 0)));
    SetTextColor(dc, ink == CLR_NONE ? GetSysColor(COLOR_WINDOWTEXT) : ink);
    SetBkColor(dc, back == CLR_NONE ? GetSysColor(COLOR_WINDOW) : back);
    DrawTextW(dc, text.c_str(), -1, &place, DT_CENTER | DT_WORDBREAK | DT_NOPREFIX | DT_END_ELLIPSIS);
    SelectObject(dc, before);
    ReleaseDC(view, dc);
}

LRESULT CALLBACK WithNote(HWND view, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                          DWORD_PTR) noexcept {
    if (message == WM_NCDESTROY) RemoveSubclass(view, WithNote, id);
    const LRESULT answer = PassToSubclassed(view, message, wParam, lParam);
    if (message == WM_PAINT) DrawNote(view);
    // In the middle of another width.
    if (message == WM_SIZE && mainWindow.rows.empty()) InvalidateRect(view, nullptr, TRUE);
    return answer;
}

}  // namespace

void SetUpEmptyNote(HWND view) {
    constexpr UINT_PTR kId = 2;
    AddSubclass(view, WithNote, kId);
}

}  // namespace verbatix
