// Names of the two halves of a hotkey: a virtual-key code and a modifier code 0 to 9. The English names are
// a file format (list file, disabled keys), so they never follow the user's language; the display forms do.
// Nothing here fails: what is not recognised yields the code of its first character or leaves a default.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace verbatix {

// Modifier codes as they are stored; also the order of the editor's modifier drop-down.
enum ModifierCode : unsigned {
    kModifierLeftWin,
    kModifierRightWin,
    kModifierCtrlAlt,
    kModifierAltGr,
    kModifierCtrl,
    kModifierAlt,
    kModifierRightCtrl,
    kModifierLeftMouse,
    kModifierMiddleMouse,
    kModifierRightMouse,
    kModifierCount
};

// Name of a virtual-key code, of which only the low byte counts: "F5", "NUM_7", "Space", or the one
// character whose code it is. Code 0 (no key) has an empty name.
std::wstring FormatKeyName(unsigned key);

// The code that a key name at the start of `text` stands for; what follows the name is ignored, case
// matters. An unknown name gives the code of its first character, an empty text 0.
unsigned ParseKeyName(std::wstring_view text);

// Whether a hotkey may have that key, of which the low byte counts: its name gives it back wherever it is
// stored, and it is no modifier itself.
bool IsStorableKey(unsigned key);

// Appends the stored name of a modifier code; a code outside 1 to 9 is written "L-Win". Returns false for
// a code of 12 or more.
bool AppendModifierName(unsigned code, std::wstring& text);

// Length of the stored modifier name that `text` begins with, and its code; 0, with `code` untouched, when
// it begins with none.
std::size_t MatchModifierName(std::wstring_view text, unsigned& code);

// Sets `code` from the stored modifier name at the start of `text` and returns what follows it. Without a
// name the text comes back whole and `code` stays as it was; after "R-Win" the text comes back whole too.
std::wstring_view ParseModifierPrefix(std::wstring_view text, unsigned& code);

// Appends the name of a modifier code in the user's language; a code outside 1 to 9 shows as code 0.
void AppendModifierDisplayName(unsigned code, std::wstring& text);

// A hotkey as the user sees it: modifier in the user's language, " + ", key name.
std::wstring FormatHotkeyDisplay(unsigned key, unsigned modifier);

}  // namespace verbatix
