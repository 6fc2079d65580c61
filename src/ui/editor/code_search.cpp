#include "ui/editor/code_search.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "paste/text/code_hints.h"

namespace verbatix {

namespace {

bool IsWordLetter(wchar_t c) {
    return IsCharAlphaNumericW(c) != FALSE;
}

bool HasWordWith(std::wstring_view text, std::wstring_view beginning) {
    for (std::size_t at = text.find(beginning); at != std::wstring_view::npos;
         at = text.find(beginning, at + 1)) {
        if (at == 0 || !IsWordLetter(text[at - 1])) return true;
    }
    return false;
}

bool IsMeantBy(const CodeItem& item, std::wstring_view foldedQuery) {
    const std::wstring words = LowerCase(item.token + L' ' + item.meaning + L' ' + item.keywords);
    for (const std::wstring_view word : Split(foldedQuery, L' ')) {
        if (!word.empty() && !HasWordWith(words, word)) return false;
    }
    return true;
}

// 0 is the best.
int RankOf(const CodeItem& item, std::wstring_view query, std::wstring_view foldedQuery) {
    std::wstring_view name = item.token;
    if (name.starts_with(L'%')) name.remove_prefix(1);
    if (name.ends_with(L'%') && name.substr(0, name.size() - 1) == query) return 0;
    if (name.starts_with(query)) return 1;
    return LowerCase(name).starts_with(foldedQuery) ? 2 : 3;
}

}  // namespace

std::vector<std::size_t> FindCodes(std::span<const CodeItem> items, std::wstring_view query) {
    query = TrimBlanks(query);
    if (query.starts_with(L'%')) query.remove_prefix(1);
    const std::wstring folded = LowerCase(query);
    std::vector<std::pair<int, std::size_t>> found;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (IsMeantBy(items[i], folded)) found.emplace_back(RankOf(items[i], query, folded), i);
    }
    std::ranges::sort(found);
    std::vector<std::size_t> places;
    for (const auto& [rank, place] : found) places.push_back(place);
    return places;
}

std::size_t CodeStart(std::wstring_view text, std::size_t caret) {
    std::size_t at = std::min(caret, text.size());
    while (at > 0 && text[at - 1] != L'%') {
        const wchar_t c = text[--at];
        const bool belongs = IsWordLetter(c) || c == L'_' || c == L'+' || c == L':' || c == L'-';
        if (!belongs) return caret;
    }
    if (at == 0) return caret;
    const std::size_t sign = at - 1;
    const bool isNumber = sign > 0 && text[sign - 1] >= L'0' && text[sign - 1] <= L'9';
    const bool isCode = at == caret || IsCharAlphaW(text[at]);
    return isNumber || !isCode || EndsCode(text, sign) ? caret : sign;
}

}  // namespace verbatix
