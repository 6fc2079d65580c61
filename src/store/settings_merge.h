// What becomes of a settings file that somebody else has changed meanwhile. Pure.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "store/ini_text.h"
#include "store/text_file.h"

namespace verbatix {

// A settings file as text.
struct SettingsText {
    std::wstring text;
    Encoding encoding = Encoding::kUtf16;
    bool isExact = true;  // the bytes can be made of the text again
};

SettingsText DecodeSettings(std::string_view bytes);

// The bytes of `text` in the encoding that the file had; as UTF-16 with mark where the profile functions
// could not read that one, or where it lacks a character. `isAnsi` is what it was made to be.
struct SettingsBytes {
    std::string bytes;
    bool isAnsi = false;
};
SettingsBytes EncodeSettings(std::wstring_view text, Encoding encoding);

// Whether the text holds a list, and the values that make it.
bool HasList(std::wstring_view text);
IniValues ListValues(std::wstring_view text);

// The text that the next commit builds on.
struct MergedText {
    std::wstring text;
    bool isListReplaced = false;  // the other list is in the file and not in `text`
};

// `known` is what the file held when it was last read or written, `found` what it holds now; nothing where
// it is gone or empty, or was never read. Options and lines of others are taken as they are found; the list
// stays the known one. What is gone or was begun anew gets everything back that was known.
MergedText MergeSettings(const std::optional<std::wstring>& known,
                         const std::optional<std::wstring>& found);

}  // namespace verbatix
