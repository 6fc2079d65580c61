// Texts and numbers in sections of the settings file. They are read by the system's profile functions,
// every call of which opens the file anew; for many keys of a section see profile_section.h. A file that is
// missing, locked or no file at all reads as empty. Every write is a commit (see settings_commit.h).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace verbatix {

// Size, terminator included, of the text that holds a number.
inline constexpr std::size_t kNumberTextSize = 1024;

// The value of a key, cut at `size` - 1 characters. A missing key gives `old`: what the caller's variable
// holds is the default. The system strips blanks at both ends and one pair of quotes around the value.
std::wstring ReadProfileText(const wchar_t* section, const wchar_t* key, std::size_t size,
                             std::wstring_view old = {});
std::wstring ReadProfileTextFrom(const std::wstring& path, const wchar_t* section, const wchar_t* key,
                                 std::size_t size, std::wstring_view old = {});

// A number; text that is none reads as 0. The value is held between the bounds only when neither is -1.
int ReadProfileNumber(const wchar_t* section, const wchar_t* key, int old, int lowest = -1,
                      int highest = -1);

// The same in the section of the program's options.
inline constexpr const wchar_t* kProgramSection = L"Program";
std::wstring ReadProgramText(const wchar_t* key, std::size_t size, std::wstring_view old = {});
int ReadProgramNumber(const wchar_t* key, int old, int lowest = -1, int highest = -1);

// What is written for a value: it ends at the first NUL, and each line break character in it is a blank.
// Otherwise what follows the break would stand in the file as a line, even as a section, of its own.
std::wstring ProfileLine(std::wstring_view value);

// The number in a value, and between its bounds; shared with the readers of whole sections.
int BoundedNumber(std::wstring_view text, int lowest, int highest);

}  // namespace verbatix
