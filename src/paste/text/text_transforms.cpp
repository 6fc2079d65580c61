#include "paste/text/text_transforms.h"

#include <windows.h>

#include <cstdlib>

namespace verbatix {

// The system is asked, not the C runtime: that knows no letters but those of ASCII where it has no locale
// for the user's language.
static bool IsLetter(wchar_t c) {
    return IsCharAlphaW(c) != FALSE;
}

// A number in the place of a text is a character to the system, and so is what comes back.
static wchar_t Converted(wchar_t c, decltype(&CharUpperW) convert) {
    const auto asText = reinterpret_cast<LPWSTR>(static_cast<ULONG_PTR>(c));
    return static_cast<wchar_t>(reinterpret_cast<ULONG_PTR>(convert(asText)));
}

// A call for each ASCII letter of a long selection would take its time.
static wchar_t Upper(wchar_t c) {
    if (c < 0x80) return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - 0x20) : c;
    return Converted(c, CharUpperW);
}

static wchar_t Lower(wchar_t c) {
    if (c < 0x80) return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 0x20) : c;
    return Converted(c, CharLowerW);
}

void CapitalizeFirstWord(std::wstring& text) {
    for (wchar_t& c : text) {
        if (IsLetter(c)) {
            c = Upper(c);
            return;
        }
    }
}

void CapitalizeAllWords(std::wstring& text) {
    bool atStart = true;
    for (wchar_t& c : text) {
        if (!IsLetter(c)) {
            atStart = true;
        } else if (atStart) {
            c = Upper(c);
            atStart = false;
        }
    }
}

void MixCase(std::wstring& text) {
    for (wchar_t& c : text) {
        c = std::rand() % 2 != 0 ? Upper(c) : Lower(c);
    }
}

std::wstring EscapeHtmlNumeric(std::wstring_view text) {
    static constexpr wchar_t kDigits[] = L"0123456789abcdef";
    std::wstring escaped;
    escaped.reserve(text.size() + text.size() / 4);
    for (const wchar_t c : text) {
        if (c < 0xff) {
            escaped += c;
        } else {
            // By hand, not by printf: a long selection in another script is all references.
            const wchar_t reference[] = {L'&',
                                         L'#',
                                         L'x',
                                         kDigits[c >> 12],
                                         kDigits[c >> 8 & 15],
                                         kDigits[c >> 4 & 15],
                                         kDigits[c & 15],
                                         L';'};
            escaped.append(reference, std::size(reference));
        }
    }
    return escaped;
}

static const wchar_t* UrlCode(wchar_t c) {
    switch (c) {
        // Deliberately the code of the dollar sign: texts and servers that users set up rely on it.
        case L'%': return L"%24";
        case L'&': return L"%26";
        case L'"': return L"%22";
        case L' ': return L"%20";
        case L'\'': return L"%27";
        case L'?': return L"%3F";
        case L'\t': return L"%09";
        case L'=': return L"%3D";
        case L'\n': return L"%0A";
        case L'\r': return L"%0D";
        case L'\\': return L"%5C";
        case L'#': return L"%23";
        default: return nullptr;
    }
}

std::wstring UrlEncode(std::wstring_view text) {
    // One walk gives what twelve replacements would, the percent sign's first: codes are never encoded.
    std::wstring encoded;
    encoded.reserve(text.size() + text.size() / 4);
    for (const wchar_t c : text) {
        if (const wchar_t* code = UrlCode(c)) {
            encoded += code;
        } else {
            encoded += c;
        }
    }
    return encoded;
}

}  // namespace verbatix
