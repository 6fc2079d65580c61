// What each code gives at this moment, for the list of codes.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "ui/editor/code_catalogue.h"

namespace verbatix {

// One example an item, from the preview; empty where the sentence says it all.
std::vector<std::wstring> CodeExamples(std::span<const CodeItem> items);

}  // namespace verbatix
