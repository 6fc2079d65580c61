// The forms a selected text is brought into: case forms, HTML references, URL codes. Pure, in place or as a
// copy, by UTF-16 unit: a character outside the basic plane counts as two units, neither of which is a
// letter. Letters are those of the C runtime's locale. Nothing fails. UpperCase and LowerCase are base's.
#pragma once

#include <string>
#include <string_view>

namespace verbatix {

// Upper-cases the first letter of the text; a text without letters stays as it is.
void CapitalizeFirstWord(std::wstring& text);

// Upper-cases the first letter of every run of letters and leaves the others as they are, so that "x2y"
// becomes "X2Y" and "o'neil" becomes "O'Neil".
void CapitalizeAllWords(std::wstring& text);

// Gives each unit upper or lower case by the C runtime's rand().
void MixCase(std::wstring& text);

// Units from U+00FF up as "&#x00ff;", lower-case and at least four digits. What is special in HTML itself
// ("<", "&", quotes) stays: the text may be HTML already.
std::wstring EscapeHtmlNumeric(std::wstring_view text);

// Encodes the twelve characters that break a query string; all others, letters outside ASCII too, pass.
std::wstring UrlEncode(std::wstring_view text);

}  // namespace verbatix
