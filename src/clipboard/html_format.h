// The data of the clipboard format "HTML Format": a header of ASCII lines "key:value" that tells where in
// the data, counted in bytes, the document and the fragment lie, and then the document in UTF-8. Pure
// functions over values. Data to be read may come from anybody and is trusted in nothing.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace verbatix {

// The data, without terminator, that offers `fragment` (UTF-8, taken as it is) to other programs. Empty
// when the offsets would not fit their eight digits.
std::string BuildHtmlData(std::string_view fragment);

// The text between the first `key` and the next `endDelimiter`, which is searched from the second
// character of the key on; empty when one of the two is missing or lies inside the other.
std::wstring_view ValueAfterKey(std::wstring_view source, std::wstring_view key,
                                std::wstring_view endDelimiter);

// The fragment that the header in `raw` names, as bytes of `data`. `raw` is the text of `data`. Nothing
// when the header names none: no such keys, values of one digit, offsets that are negative, in the wrong
// order, or not below the data's length.
std::optional<std::string_view> FindHtmlFragment(std::string_view data, std::wstring_view raw);

}  // namespace verbatix
