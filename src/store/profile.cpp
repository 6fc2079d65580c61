#include "store/profile.h"

#include <windows.h>

#include <algorithm>

#include "base/text.h"
#include "store/settings_file.h"
#include "store/settings_path.h"

namespace verbatix {

std::wstring ReadProfileTextFrom(const std::wstring& path, const wchar_t* section, const wchar_t* key,
                                 std::size_t size, std::wstring_view old) {
    if (!IsProfilePath(path) || size == 0) return std::wstring(old);
    std::wstring text(size, L'\0');
    const DWORD length = GetPrivateProfileStringW(section, key, std::wstring(old).c_str(), text.data(),
                                                  static_cast<DWORD>(size), path.c_str());
    text.resize(std::min<std::size_t>(length, size - 1));
    return text;
}

std::wstring ReadProfileText(const wchar_t* section, const wchar_t* key, std::size_t size,
                             std::wstring_view old) {
    return ReadProfileTextFrom(settingsPath, section, key, size, old);
}

int ReadProfileNumber(const wchar_t* section, const wchar_t* key, int old, int lowest, int highest) {
    const std::wstring text = ReadProfileText(section, key, kNumberTextSize, Format(L"%d", old));
    return BoundedNumber(text, lowest, highest);
}

std::wstring ReadProgramText(const wchar_t* key, std::size_t size, std::wstring_view old) {
    return ReadProfileText(kProgramSection, key, size, old);
}

int ReadProgramNumber(const wchar_t* key, int old, int lowest, int highest) {
    return ReadProfileNumber(kProgramSection, key, old, lowest, highest);
}

std::wstring ProfileLine(std::wstring_view value) {
    std::wstring line(value.substr(0, value.find(L'\0')));
    std::replace_if(
        line.begin(), line.end(), [](wchar_t c) { return c == L'\r' || c == L'\n'; }, L' ');
    return line;
}

int BoundedNumber(std::wstring_view text, int lowest, int highest) {
    const int value = ToInt(text);
    if (lowest == -1 || highest == -1) return value;
    return std::max(lowest, std::min(value, highest));
}

}  // namespace verbatix
