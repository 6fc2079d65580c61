#include "base/text.h"

#include <windows.h>

#include <algorithm>
#include <cassert>
#include <climits>
#include <cstdarg>
#include <cwchar>
#include <cwctype>

namespace verbatix {

std::size_t ReplaceAll(std::wstring& text, std::wstring_view from, std::wstring_view to) {
    if (from.empty()) return 0;
    std::size_t found = text.find(from);
    if (found == std::wstring::npos) return 0;
    // Built anew rather than edited in place: a place-by-place replace is quadratic in a long selection.
    std::wstring result;
    result.reserve(text.size());
    std::size_t start = 0;
    std::size_t count = 0;
    for (; found != std::wstring::npos; found = text.find(from, start)) {
        result.append(text, start, found - start).append(to);
        start = found + from.size();
        ++count;
    }
    result.append(text, start);
    text = std::move(result);
    return count;
}

template <typename Predicate>
static std::wstring_view Trim(std::wstring_view text, Predicate isTrimmed) {
    while (!text.empty() && isTrimmed(text.front())) text.remove_prefix(1);
    while (!text.empty() && isTrimmed(text.back())) text.remove_suffix(1);
    return text;
}

std::wstring_view TrimBlanks(std::wstring_view text) {
    return Trim(text, [](wchar_t c) { return c == L' ' || c == L'\t'; });
}

std::wstring_view TrimSpace(std::wstring_view text) {
    return Trim(text, [](wchar_t c) { return iswspace(c) != 0; });
}

std::vector<std::wstring_view> Split(std::wstring_view text, wchar_t separator) {
    std::vector<std::wstring_view> pieces;
    for (std::size_t start = 0;;) {
        const std::size_t end = text.find(separator, start);
        pieces.push_back(text.substr(start, end - start));
        if (end == std::wstring_view::npos) return pieces;
        start = end + 1;
    }
}

bool EqualsIgnoreCase(std::wstring_view a, std::wstring_view b) {
    if (a.size() != b.size()) return false;
    return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()),
                                TRUE) == CSTR_EQUAL;
}

std::wstring LowerCase(std::wstring_view text) {
    std::wstring result(text);
    CharLowerBuffW(result.data(), static_cast<DWORD>(result.size()));
    return result;
}

std::wstring UpperCase(std::wstring_view text) {
    std::wstring result(text);
    CharUpperBuffW(result.data(), static_cast<DWORD>(result.size()));
    return result;
}

int ToInt(std::wstring_view text) {
    while (!text.empty() && iswspace(text.front())) text.remove_prefix(1);
    bool negative = false;
    if (!text.empty() && (text.front() == L'-' || text.front() == L'+')) {
        negative = text.front() == L'-';
        text.remove_prefix(1);
    }
    long long value = 0;
    for (const wchar_t c : text) {
        if (c < L'0' || c > L'9') break;
        value = std::min(value * 10 + (c - L'0'), -static_cast<long long>(INT_MIN));
    }
    return static_cast<int>(std::clamp<long long>(negative ? -value : value, INT_MIN, INT_MAX));
}

std::wstring Format(const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list counted;
    va_copy(counted, arguments);
    const int length = _vscwprintf(format, counted);
    va_end(counted);
    std::wstring result;
    if (length > 0) {
        result.resize(static_cast<std::size_t>(length) + 1);
        _vsnwprintf(result.data(), result.size(), format, arguments);
        result.resize(static_cast<std::size_t>(length));
    }
    va_end(arguments);
    return result;
}

std::wstring FillIn(std::wstring text, std::initializer_list<std::wstring_view> values) {
    int number = 0;
    for (const std::wstring_view value : values) ReplaceAll(text, Format(L"{%d}", ++number), value);
    return text;
}

void CopyText(wchar_t* destination, std::size_t capacity, std::size_t limit, std::wstring_view text) {
    assert(limit > 0 && limit <= capacity);
    const std::size_t length = std::min(text.size(), limit - 1);
    std::copy_n(text.data(), length, destination);
    std::fill(destination + length, destination + capacity, L'\0');
}

std::wstring FromBytes(std::string_view bytes, unsigned codePage) {
    const int size = static_cast<int>(bytes.size());
    std::wstring text(static_cast<std::size_t>(
                          std::max(0, MultiByteToWideChar(codePage, 0, bytes.data(), size, nullptr, 0))),
                      L'\0');
    if (!text.empty()) {
        MultiByteToWideChar(codePage, 0, bytes.data(), size, text.data(), static_cast<int>(text.size()));
    }
    return text;
}

std::string ToBytes(std::wstring_view text, unsigned codePage) {
    const int size = static_cast<int>(text.size());
    std::string bytes(
        static_cast<std::size_t>(
            std::max(0, WideCharToMultiByte(codePage, 0, text.data(), size, nullptr, 0, nullptr, nullptr))),
        '\0');
    if (!bytes.empty()) {
        WideCharToMultiByte(codePage, 0, text.data(), size, bytes.data(), static_cast<int>(bytes.size()),
                            nullptr, nullptr);
    }
    return bytes;
}

bool FitsAnsiCodePage(std::wstring_view text) {
    // Compared by round trip: the "default character used" answer does not exist for UTF-8 as code page,
    // and best-fit mapping (an "ł" that becomes "l") would pass as fitting.
    return FromBytes(ToBytes(text, CP_ACP), CP_ACP) == text;
}

}  // namespace verbatix
