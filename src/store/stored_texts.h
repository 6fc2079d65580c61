// The entries of a settings file as they stand there, before anything is made of them.
#pragma once

#include <string>
#include <vector>

#include "store/export_text.h"

namespace verbatix {

// The sections that hold a list.
inline constexpr const wchar_t* kTextSection = L"list_text";
inline constexpr const wchar_t* kLabelSection = L"list_label";
inline constexpr const wchar_t* kOrderSection = L"list_order";
// In section "Program": how many entries there are.
inline constexpr const wchar_t* kCountKey = L"listcmd_count";

struct NumberedTexts {
    unsigned number = 0;
    EntryTexts texts;
};

// By number, at most as many as were asked for; `end` lies behind the highest number, those that were left
// out included.
struct StoredTexts {
    std::vector<NumberedTexts> entries;
    unsigned end = 0;
    bool isCut = false;
};

// Reads with the profile functions what has a number below `limit`; `most` bounds the memory.
StoredTexts ReadEntryTexts(const std::wstring& path, unsigned limit, std::size_t most);

}  // namespace verbatix
