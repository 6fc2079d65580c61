// Which codes somebody means who types a word. Pure.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ui/editor/code_catalogue.h"

namespace verbatix {

// The places in `items` of those in which, for each word of the query, a word begins with it: of the code,
// of its sentence or of its keywords, in capitals or small letters. Those whose code itself begins like the
// query come first, as it is written before all.
std::vector<std::size_t> FindCodes(std::span<const CodeItem> items, std::wstring_view query);

// Where the code begins that is being typed up to `caret`: at its percent sign, when what follows that
// could become a code. Nothing, that is `caret`, behind a number: "100%" is no beginning of a code.
std::size_t CodeStart(std::wstring_view text, std::size_t caret);

}  // namespace verbatix
