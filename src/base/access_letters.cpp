#include "base/access_letters.h"

#include <algorithm>
#include <string_view>

#include "base/text.h"

namespace verbatix {

namespace {

constexpr std::size_t kNone = std::wstring::npos;

std::size_t CaptionEnd(const std::wstring& row) {
    return std::min(row.find(L'\t'), row.size());
}

wchar_t Capital(wchar_t letter) {
    return UpperCase(std::wstring_view(&letter, 1)).front();
}

// Where the "&" stands that marks a letter.
std::size_t MarkIn(const std::wstring& row) {
    const std::size_t end = CaptionEnd(row);
    for (std::size_t at = 0; at + 1 < end; ++at) {
        if (row[at] != L'&') continue;
        if (row[at + 1] != L'&') return at;
        ++at;
    }
    return kNone;
}

bool IsFree(wchar_t letter, const std::wstring& taken) {
    return IsCharAlphaNumericW(letter) && taken.find(Capital(letter)) == kNone;
}

// The place of a free letter: one that begins a word, else any.
std::size_t FreeLetterIn(const std::wstring& row, const std::wstring& taken) {
    const std::size_t end = CaptionEnd(row);
    for (const bool beginsWord : {true, false}) {
        for (std::size_t at = 0; at < end; ++at) {
            if (beginsWord && at > 0 && row[at - 1] != L' ') continue;
            if (IsFree(row[at], taken)) return at;
        }
    }
    return kNone;
}

}  // namespace

wchar_t AccessLetter(const std::wstring& row) {
    const std::size_t mark = MarkIn(row);
    return mark == kNone ? L'\0' : Capital(row[mark + 1]);
}

void GiveAccessLetters(std::vector<std::wstring>& rows) {
    std::wstring taken;
    std::vector<std::wstring*> without;
    for (std::wstring& row : rows) {
        const wchar_t letter = AccessLetter(row);
        if (letter && taken.find(letter) == kNone) {
            taken += letter;
            continue;
        }
        if (letter) row.erase(MarkIn(row), 1);
        without.push_back(&row);
    }
    for (std::wstring* const row : without) {
        const std::size_t place = FreeLetterIn(*row, taken);
        if (place == kNone) continue;
        taken += Capital((*row)[place]);
        row->insert(place, 1, L'&');
    }
}

static std::wstring RowText(HMENU menu, UINT row) {
    std::wstring text(static_cast<std::size_t>(GetMenuStringW(menu, row, nullptr, 0, MF_BYPOSITION)) + 1,
                      L'\0');
    const int length = GetMenuStringW(menu, row, text.data(), static_cast<int>(text.size()), MF_BYPOSITION);
    text.resize(static_cast<std::size_t>(std::max(length, 0)));
    return text;
}

void GiveAccessLetters(HMENU menu) {
    std::vector<std::wstring> before;
    const int count = GetMenuItemCount(menu);
    for (int row = 0; row < count; ++row) {
        if (const HMENU submenu = GetSubMenu(menu, row)) GiveAccessLetters(submenu);
        before.push_back(RowText(menu, static_cast<UINT>(row)));
    }
    std::vector<std::wstring> rows = before;
    GiveAccessLetters(rows);
    for (std::size_t row = 0; row < rows.size(); ++row) {
        if (rows[row] == before[row]) continue;
        MENUITEMINFOW info = {};
        info.cbSize = sizeof info;
        info.fMask = MIIM_STRING;
        info.dwTypeData = rows[row].data();
        SetMenuItemInfoW(menu, static_cast<UINT>(row), TRUE, &info);
    }
}

}  // namespace verbatix
