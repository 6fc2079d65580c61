// The text of an INI file, read and changed in memory as the system's profile functions read and change the
// file. Pure. Lines that are not changed stay as they are, whatever they hold: comments, blank lines, keys
// that come twice, lines that fit nothing.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace verbatix {

// A name in the one form by which names are compared: A to Z as a to z.
std::wstring FoldKey(std::wstring_view name);

// One line of such a text, which ends in CR, LF or both. A name ends at a NUL, because readers do.
struct IniLine {
    enum Kind { kBlank, kSection, kKey } kind = kBlank;
    std::wstring_view name;   // of the section or key, without blanks around it
    std::wstring_view value;  // as it stands, quotes included, without blanks around it
    bool hasValue = false;    // a line without "=" is a key without value
    std::size_t start = 0;    // of the line in the text
    std::size_t end = 0;      // behind its last character that is no blank
    std::size_t next = 0;     // start of the line that follows
};

// The line that starts at `start`, which must lie within the text.
IniLine ReadIniLine(std::wstring_view text, std::size_t start);

// A value for a key in a section. None of the three may hold a line break or a NUL.
struct IniValue {
    std::wstring section;
    std::wstring key;
    std::wstring value;
};

using IniValues = std::vector<IniValue>;

// The text with the values in it, written in their order. Of sections or keys that come twice the first one
// is meant; a key that is not there is put behind the last line of its section, a section at the end.
std::wstring SetIniValues(std::wstring_view text, const IniValues& values);

// Every value that a reader of the text can get, in the order of the lines.
IniValues AllIniValues(std::wstring_view text);

// Whether systems may differ in how they read the text: odd headers or line ends, control characters, a
// section that comes twice. What SetIniValues makes of it has to be looked at with the system's eyes.
bool IsDoubtfulIni(std::wstring_view text);

}  // namespace verbatix
