// Small operations on UTF-16 text that every room uses. Nothing here fails except where it says so.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace verbatix {

// Replaces every occurrence of `from` by `to`: exact, case-sensitive, left to right, not overlapping.
// An empty `from` occurs nowhere. Returns the number of replacements.
std::size_t ReplaceAll(std::wstring& text, std::wstring_view from, std::wstring_view to);

// `text` without the blanks and tabs at both ends.
std::wstring_view TrimBlanks(std::wstring_view text);

// `text` without the characters that iswspace() names at both ends.
std::wstring_view TrimSpace(std::wstring_view text);

// The pieces between separators, empty ones included; a text without separator is one piece.
std::vector<std::wstring_view> Split(std::wstring_view text, wchar_t separator);

// Compares as file names are compared: by upper-case form, without regard to the user's language.
bool EqualsIgnoreCase(std::wstring_view a, std::wstring_view b);

// Case forms of the system (CharLowerW, CharUpperW), unit by unit.
std::wstring LowerCase(std::wstring_view text);
std::wstring UpperCase(std::wstring_view text);

// Reads a decimal number as the C runtime's wide string-to-integer conversion does: leading white space,
// a sign, digits; whatever follows is ignored, no digits give 0, values beyond 32 bits become the limit.
int ToInt(std::wstring_view text);

// printf into a string. Wide string arguments are written %ls.
std::wstring Format(const wchar_t* format, ...);

// Puts values in the places {1}, {2}, ... of a text for the user. Such texts come from files that users can
// replace, so none of them is ever a format for printf.
std::wstring FillIn(std::wstring text, std::initializer_list<std::wstring_view> values);

// Copies at most `limit` - 1 units into `destination` and fills all that is left of it with zeros, so that
// two records with equal texts are equal byte for byte. `limit` counts the terminator; it may be smaller
// than the array, never larger.
void CopyText(wchar_t* destination, std::size_t capacity, std::size_t limit, std::wstring_view text);

template <std::size_t capacity>
void CopyText(wchar_t (&destination)[capacity], std::wstring_view text, std::size_t limit = capacity) {
    CopyText(destination, capacity, limit, text);
}

// Conversion by a Windows code page (CP_ACP, CP_UTF8). Bytes or characters that have no counterpart become
// the code page's replacement character. Empty in, empty out; the input is at most INT_MAX long.
std::wstring FromBytes(std::string_view bytes, unsigned codePage);
std::string ToBytes(std::wstring_view text, unsigned codePage);

// Whether the ANSI code page of this system can hold every character of `text`.
bool FitsAnsiCodePage(std::wstring_view text);

}  // namespace verbatix
