// The codes that print: one row each.
#include <windows.h>

#include <array>
#include <clocale>
#include <ctime>
#include <cwchar>

#include "base/text.h"
#include "paste/text/date_codes.h"
#include "paste/text/date_operations.h"

namespace verbatix {
namespace {

constexpr int kBufferLength = 500;
constexpr std::size_t kLongestCode = 10;

std::wstring LocaleName(LCTYPE first, int index) {
    wchar_t name[kBufferLength] = L"";
    if (!GetLocaleInfoW(LOCALE_USER_DEFAULT, first + static_cast<LCTYPE>(index), name, kBufferLength)) {
        return {};
    }
    return name;
}

std::wstring MonthName(const SYSTEMTIME& date) {
    return LocaleName(LOCALE_SMONTHNAME1, date.wMonth - 1);
}

std::wstring ShortMonthName(const SYSTEMTIME& date) {
    return LocaleName(LOCALE_SABBREVMONTHNAME1, date.wMonth - 1);
}

// The locale counts its days from Monday.
std::wstring DayName(const SYSTEMTIME& date) {
    return LocaleName(LOCALE_SDAYNAME1, (date.wDayOfWeek + 6) % 7);
}

std::wstring ShortDayName(const SYSTEMTIME& date) {
    return LocaleName(LOCALE_SABBREVDAYNAME1, (date.wDayOfWeek + 6) % 7);
}

std::wstring Number(int value) {
    return Format(L"%d", value);
}

std::wstring TwoDigits(int value) {
    return Format(L"%02d", value);
}

int IsoWeek(const SYSTEMTIME& date) {
    return IsoWeekNumber(date.wDay, date.wMonth, date.wYear);
}

// `date` by the C runtime's format. Empty for a date outside the runtime's calendar, which may begin in
// 1970 and end in 3000 while the working date can be far from there.
std::wstring RuntimeFormat(const wchar_t* format, const SYSTEMTIME& date) {
    std::tm fields = {};
    fields.tm_year = date.wYear - 1900;
    fields.tm_mon = date.wMonth - 1;
    fields.tm_mday = date.wDay;
    fields.tm_hour = date.wHour;
    fields.tm_min = date.wMinute;
    fields.tm_sec = date.wSecond;
    fields.tm_isdst = -1;
    const std::time_t time = std::mktime(&fields);
    const std::tm* local = time == -1 ? nullptr : std::localtime(&time);
    if (!local) return {};
    wchar_t buffer[kBufferLength] = L"";
    const std::size_t length = std::wcsftime(buffer, kBufferLength, format, local);
    return std::wstring(buffer, length);
}

// The runtime stays with its own locale, English, where it has none for the user's language.
bool HasRuntimeLocale() {
    const char* const name = std::setlocale(LC_TIME, nullptr);
    return name && std::string_view(name) != "C";
}

std::wstring TimeOfDay(const SYSTEMTIME& date) {
    if (HasRuntimeLocale()) return RuntimeFormat(L"%X", date);
    wchar_t text[kBufferLength] = L"";
    GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &date, nullptr, text, kBufferLength);
    return text;
}

std::wstring LongDate(const SYSTEMTIME& date) {
    if (HasRuntimeLocale()) return RuntimeFormat(L"%#x", date);
    wchar_t text[kBufferLength] = L"";
    GetDateFormatW(LOCALE_USER_DEFAULT, DATE_LONGDATE, &date, nullptr, text, kBufferLength);
    return text;
}

enum class Group { kDate, kTime };

struct FormatRow {
    const wchar_t* code;
    Group group;
    std::wstring (*print)(const SYSTEMTIME& date);
};

constexpr FormatRow kFormats[] = {
    {L"MMMM", Group::kDate, MonthName},
    {L"MMM", Group::kDate, ShortMonthName},
    {L"MMMM_UC", Group::kDate, [](const SYSTEMTIME& date) { return UpperCase(MonthName(date)); }},
    {L"MMM_UC", Group::kDate, [](const SYSTEMTIME& date) { return UpperCase(ShortMonthName(date)); }},
    {L"MM", Group::kDate, [](const SYSTEMTIME& date) { return TwoDigits(date.wMonth); }},
    {L"M", Group::kDate, [](const SYSTEMTIME& date) { return Number(date.wMonth); }},
    {L"DDDD", Group::kDate, DayName},
    {L"DDD", Group::kDate, ShortDayName},
    {L"DDDD_UC", Group::kDate, [](const SYSTEMTIME& date) { return UpperCase(DayName(date)); }},
    {L"DDD_UC", Group::kDate, [](const SYSTEMTIME& date) { return UpperCase(ShortDayName(date)); }},
    {L"DD", Group::kDate, [](const SYSTEMTIME& date) { return TwoDigits(date.wDay); }},
    {L"D", Group::kDate, [](const SYSTEMTIME& date) { return Number(date.wDay); }},
    {L"YYYY", Group::kDate, [](const SYSTEMTIME& date) { return TwoDigits(date.wYear); }},
    // Without a leading zero, so that 2005 gives 5: users' texts count on it.
    {L"YY", Group::kDate, [](const SYSTEMTIME& date) { return Number(date.wYear % 100); }},
    // A code of the date group although it prints a time.
    {L"LTF", Group::kDate, TimeOfDay},
    {L"LDF", Group::kDate, LongDate},
    {L"LTF_UC", Group::kDate, [](const SYSTEMTIME& date) { return UpperCase(TimeOfDay(date)); }},
    {L"LDF_UC", Group::kDate, [](const SYSTEMTIME& date) { return UpperCase(LongDate(date)); }},
    // In capitals like LDF_UC, whatever its name says; "%lc%%LDF%" gives small letters.
    {L"LDF_LC", Group::kDate, [](const SYSTEMTIME& date) { return UpperCase(LongDate(date)); }},
    {L"CW", Group::kDate, [](const SYSTEMTIME& date) { return Number(IsoWeek(date)); }},
    {L"CWL", Group::kDate, [](const SYSTEMTIME& date) { return TwoDigits(IsoWeek(date)); }},
    {L"hh", Group::kTime, [](const SYSTEMTIME& date) { return TwoDigits(date.wHour); }},
    {L"mm", Group::kTime, [](const SYSTEMTIME& date) { return TwoDigits(date.wMinute); }},
    {L"ss", Group::kTime, [](const SYSTEMTIME& date) { return TwoDigits(date.wSecond); }},
    {L"h1", Group::kTime, [](const SYSTEMTIME& date) { return Number(date.wHour); }},
    {L"m1", Group::kTime, [](const SYSTEMTIME& date) { return Number(date.wMinute); }},
    {L"s1", Group::kTime, [](const SYSTEMTIME& date) { return Number(date.wSecond); }},
};

}  // namespace

std::wstring FormatDateCode(std::wstring_view piece, const SYSTEMTIME& workingDate, bool useTime,
                            bool useDate) {
    if (piece.size() <= kLongestCode) {
        for (const FormatRow& row : kFormats) {
            const bool inUse = row.group == Group::kDate ? useDate : useTime;
            if (inUse && piece == row.code) return row.print(workingDate);
        }
    }
    return std::wstring(piece);
}

std::span<const wchar_t* const> DateFormatCodes() {
    static constexpr auto kCodes = [] {
        std::array<const wchar_t*, std::size(kFormats)> codes = {};
        for (std::size_t i = 0; i < codes.size(); ++i) codes[i] = kFormats[i].code;
        return codes;
    }();
    return kCodes;
}

}  // namespace verbatix
