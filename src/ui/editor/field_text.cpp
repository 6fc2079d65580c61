#include "ui/editor/field_text.h"

#include <algorithm>

#include "ui/state/main_window.h"

namespace verbatix {

std::size_t EndOfChange(std::wstring_view before, std::wstring_view now) {
    const auto fromStart = std::mismatch(before.begin(), before.end(), now.begin(), now.end());
    const auto start = static_cast<std::size_t>(fromStart.second - now.begin());
    // What is alike at the end counts only behind that: in "aa" and "aaa" everything is alike twice.
    const std::wstring_view restBefore = before.substr(start);
    const std::wstring_view rest = now.substr(start);
    const auto fromEnd = std::mismatch(restBefore.rbegin(), restBefore.rend(), rest.rbegin(), rest.rend());
    return now.size() - static_cast<std::size_t>(fromEnd.second - rest.rbegin());
}

void ChangeFieldText(HWND field, const std::wstring& text) {
    const std::wstring before = FieldText(GetDlgCtrlID(field));
    if (before == text) return;
    SetWindowTextW(field, text.c_str());
    const std::size_t caret = EndOfChange(before, text);
    SendMessageW(field, EM_SETSEL, caret, static_cast<LPARAM>(caret));
    SendMessageW(field, EM_SCROLLCARET, 0, 0);
}

}  // namespace verbatix
