// A section of a settings file as it stands in the file's text. Pure. Only for telling whether a section
// can be rewritten as a whole without disturbing anything; values are read by the profile functions.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace verbatix {

// Key and value of every line of section `name`, none when there is no such section. Nothing when the text
// holds something that writing the section as a whole could disturb: the section twice or under an unusual
// header, in it a comment, an empty line, a line without "=", blanks around key or value or the same key
// twice; anywhere line ends other than CR LF, or zeros.
std::optional<std::vector<std::pair<std::wstring, std::wstring>>> PlainSectionLines(std::wstring_view text,
                                                                                    std::wstring_view name);

}  // namespace verbatix
