// A whole section of a settings file in one pass, because every single profile call reads the whole file: a
// list of 1,000 entries would take seconds. The results are those of the single calls; wherever that is not
// certain, a key is read by a call of its own.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace verbatix {

// What one pass found. Names are folded to lower case (A to Z only, all names of the file format are
// ASCII).
struct ProfileSection {
    std::wstring path;
    std::wstring name;
    // Values as they stand in the file, quotes included, without blanks around them; nothing where the key
    // must be read by itself.
    std::map<std::wstring, std::optional<std::wstring>, std::less<>> values;
    // All names that the system knows in the section; asked for when a key is missed for the first time.
    std::optional<std::set<std::wstring, std::less<>>> names;
};

// Reads section `name` of the file. A file or section that is not there is an empty section.
ProfileSection ReadSection(const std::wstring& path, std::wstring_view name);

// What ReadProfileTextFrom would give for the key.
std::wstring SectionText(ProfileSection& section, std::wstring_view key, std::size_t size,
                         std::wstring_view old = {});

// What ReadProfileNumber would give for the key.
int SectionNumber(ProfileSection& section, std::wstring_view key, int old, int lowest = -1,
                  int highest = -1);

// The folded names of all keys in the section.
std::set<std::wstring, std::less<>> SectionKeys(ProfileSection& section);

}  // namespace verbatix
