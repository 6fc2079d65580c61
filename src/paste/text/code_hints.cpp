#include "paste/text/code_hints.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>
#include <vector>

#include "base/text.h"

namespace verbatix {

namespace {

constexpr std::size_t kLongestCode = 40;

bool IsLetter(wchar_t c) {
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z');
}

bool IsDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

bool CouldBeCode(std::wstring_view inside) {
    return !inside.empty() && inside.size() <= kLongestCode && IsLetter(inside.front()) &&
           std::ranges::all_of(inside, [](wchar_t c) {
               return IsLetter(c) || IsDigit(c) || c == L'_' || c == L'+' || c == L':' || c == L'-';
           });
}

// A code cut before its number, "%d+12%" into "d+" and "12". The number is empty where it is none, and part
// of the name in "h1".
struct CodeParts {
    std::wstring_view name;
    std::wstring_view number;
};

CodeParts PartsOf(std::wstring_view inside) {
    std::size_t end = inside.size();
    while (end > 0 && IsDigit(inside[end - 1])) --end;
    if (end > 0 && end < inside.size() && inside[end - 1] == L'-') --end;
    const bool isNumbered = end > 0 && (inside[end - 1] == L'+' || inside[end - 1] == L':');
    return isNumbered ? CodeParts{inside.substr(0, end), inside.substr(end)} : CodeParts{inside, {}};
}

// Names longer than this are not compared.
constexpr std::size_t kLongestName = 60;

// Insertions, deletions, changes and neighbours in the wrong order that lead from one to the other; neither
// is longer than kLongestName.
std::size_t EditDistance(std::wstring_view a, std::wstring_view b) {
    using Row = std::array<std::size_t, kLongestName + 1>;
    Row rows[3] = {};
    Row* beforeLast = &rows[0];
    Row* last = &rows[1];
    Row* row = &rows[2];
    for (std::size_t j = 0; j <= b.size(); ++j) (*row)[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::swap(beforeLast, last);
        std::swap(last, row);
        (*row)[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t change = (*last)[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            (*row)[j] = std::min({(*last)[j] + 1, (*row)[j - 1] + 1, change});
            const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
            if (swapped) (*row)[j] = std::min((*row)[j], (*beforeLast)[j - 2] + 1);
        }
    }
    return (*row)[b.size()];
}

// The longer a name, the more of it may be wrong.
std::size_t MistakesIn(std::size_t length) {
    constexpr std::pair<std::size_t, std::size_t> kSteps[] = {{12, 3}, {6, 2}, {3, 1}};
    for (const auto& [from, mistakes] : kSteps) {
        if (length >= from) return mistakes;
    }
    return 0;
}

std::wstring BetweenPercentSigns(std::wstring_view name, std::wstring_view number) {
    return std::wstring(L"%").append(name).append(number).append(L"%");
}

// What was meant by `inside`; empty where that is a code, or is like none.
std::wstring MeantBy(std::wstring_view inside, std::span<const std::wstring> names) {
    const CodeParts written = PartsOf(inside);
    const auto known = std::ranges::find(names, written.name);
    const std::wstring* const found = known != names.end() ? &*known : ClosestName(written.name, names);
    if (!found) return {};
    // "%d+02%" is no code: only numbers as they are counted are.
    std::wstring number;
    if (!written.number.empty()) {
        number = std::to_wstring(ToInt(written.number));
    } else if (found->ends_with(L'+') || found->ends_with(L':')) {
        number = L'1';
    }
    const std::wstring meant = BetweenPercentSigns(*found, number);
    return meant == BetweenPercentSigns(inside, {}) ? std::wstring() : meant;
}

// Calls `visit` with every pair of percent signs, and what is between, that could be a code; those of a
// pair are not looked at again.
template <typename Visit>
void ForEachPair(std::wstring_view text, Visit visit) {
    std::size_t open = text.find(L'%');
    while (open != std::wstring_view::npos) {
        const std::size_t close = text.find(L'%', open + 1);
        if (close == std::wstring_view::npos) return;
        const std::wstring_view inside = text.substr(open + 1, close - open - 1);
        const bool isPair = CouldBeCode(inside);
        if (isPair && visit(open, inside)) return;
        open = isPair ? text.find(L'%', close + 1) : close;
    }
}

}  // namespace

const std::wstring* ClosestName(std::wstring_view written, std::span<const std::wstring> names) {
    if (written.size() > kLongestName) return nullptr;
    const std::wstring folded = LowerCase(written);
    const std::size_t most = MistakesIn(written.size());
    const std::wstring* closest = nullptr;
    std::pair<std::size_t, std::size_t> best = {most, kLongestName + 1};
    for (const std::wstring& name : names) {
        const auto [shorter, longer] = std::minmax({name.size(), written.size()});
        if (longer - shorter > most || name.size() > kLongestName) continue;
        const std::size_t mistakes = EditDistance(folded, LowerCase(name));
        if (mistakes > best.first) continue;
        const std::pair<std::size_t, std::size_t> distance = {mistakes, EditDistance(written, name)};
        if (distance >= best) continue;
        best = distance;
        closest = &name;
    }
    return closest;
}

std::vector<CodeHint> FindMistypedCodes(std::wstring_view text, std::span<const std::wstring> codes,
                                        bool (*isVariable)(const std::wstring& name)) {
    std::vector<std::wstring> names;
    for (const std::wstring& code : codes) {
        if (code.size() <= 2) continue;
        names.emplace_back(PartsOf(std::wstring_view(code).substr(1, code.size() - 2)).name);
    }
    std::vector<CodeHint> hints;
    // A text is looked at with every letter typed, and the same codes often stand in it many times.
    std::map<std::wstring_view, std::wstring> known;
    ForEachPair(text, [&](std::size_t at, std::wstring_view inside) {
        const auto [meant, isNew] = known.try_emplace(inside);
        if (isNew && !isVariable(std::wstring(inside))) meant->second = MeantBy(inside, names);
        if (!meant->second.empty()) hints.push_back({at, inside.size() + 2, meant->second});
        return false;
    });
    return hints;
}

bool EndsCode(std::wstring_view text, std::size_t at) {
    bool ends = false;
    ForEachPair(text.substr(0, at + 1), [&](std::size_t open, std::wstring_view inside) {
        ends = open + inside.size() + 1 == at;
        return ends;
    });
    return ends;
}

}  // namespace verbatix
