// Codes that are none: what stands between percent signs like a code and is spelled almost like one. Such a
// text is pasted as it is typed, which is seldom what was meant. Pure.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace verbatix {

struct CodeHint {
    std::size_t start = 0;  // of the code in the text, its percent signs included
    std::size_t length = 0;
    std::wstring meant;
    bool operator==(const CodeHint&) const = default;
};

// The codes in `text`, in their order, that are none of `codes` (with their percent signs; one that ends in
// a number stands for every number) but close to one of them. What `isVariable` knows is a reference to the
// environment. Plain percent signs, as in "100 % of 5 %" or "a%20b%20c", are not mistaken for codes.
std::vector<CodeHint> FindMistypedCodes(std::wstring_view text, std::span<const std::wstring> codes,
                                        bool (*isVariable)(const std::wstring& name));

// The one of `names` that is spelled almost like `written`; null when none is close enough. Capitals and
// small letters count little. Names of one or two letters differ in nothing else.
const std::wstring* ClosestName(std::wstring_view written, std::span<const std::wstring> names);

// Whether the percent sign at `at` ends a code that began before it, as far as the text in front tells.
bool EndsCode(std::wstring_view text, std::size_t at);

}  // namespace verbatix
