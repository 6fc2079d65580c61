#include "store/stored_texts.h"

#include <set>

#include "store/entry_syntax.h"
#include "store/profile_section.h"

namespace verbatix {

// Sizes of the values that are read, terminator included.
static constexpr std::size_t kValueSize = 4096;
static constexpr std::size_t kLabelSize = kLabelLimit + 4;  // it may stand in quotes
static constexpr std::size_t kOrderSize = 16;

StoredTexts ReadEntryTexts(const std::wstring& path, unsigned limit, std::size_t most) {
    ProfileSection values = ReadSection(path, kTextSection);
    ProfileSection labels = ReadSection(path, kLabelSection);
    ProfileSection orders = ReadSection(path, kOrderSection);
    std::set<unsigned> numbers;
    for (const std::wstring& key : SectionKeys(values)) {
        const std::optional<unsigned> number = EntryNumberOfKey(key);
        if (number && *number < limit) numbers.insert(*number);
    }
    StoredTexts stored;
    if (!numbers.empty()) stored.end = *numbers.rbegin() + 1;
    stored.isCut = numbers.size() > most;
    for (const unsigned number : numbers) {
        if (stored.entries.size() == most) break;
        const std::wstring key = EntryKey(number);
        stored.entries.push_back(
            {number,
             {SectionText(values, key, kValueSize), SectionText(labels, key, kLabelSize),
              SectionText(orders, key, kOrderSize)}});
    }
    return stored;
}

}  // namespace verbatix
