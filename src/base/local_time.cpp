#include "base/local_time.h"

#include <array>
#include <optional>

namespace verbatix {

static std::optional<SYSTEMTIME> LocalTimeOf(std::int64_t seconds) {
    // The system counts tenths of a microsecond since 1601.
    constexpr std::int64_t kSecondsTo1970 = 11'644'473'600;
    constexpr std::int64_t kLast = 253'000'000'000;
    if (seconds < -kSecondsTo1970 || seconds > kLast) return std::nullopt;
    const auto count = static_cast<std::uint64_t>(seconds + kSecondsTo1970) * 10'000'000U;
    const FILETIME file = {static_cast<DWORD>(count), static_cast<DWORD>(count >> 32)};
    SYSTEMTIME universal = {};
    SYSTEMTIME local = {};
    const bool isKnown = FileTimeToSystemTime(&file, &universal) &&
                         SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local);
    return isKnown ? std::optional(local) : std::nullopt;
}

static std::wstring TimeText(const SYSTEMTIME& time) {
    std::array<wchar_t, 80> text = {};
    GetTimeFormatW(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &time, nullptr, text.data(),
                   static_cast<int>(text.size()));
    return text.data();
}

std::wstring ShortTime(std::int64_t seconds) {
    const std::optional<SYSTEMTIME> time = LocalTimeOf(seconds);
    return time ? TimeText(*time) : std::wstring();
}

std::wstring ShortDateAndTime(std::int64_t seconds) {
    const std::optional<SYSTEMTIME> time = LocalTimeOf(seconds);
    std::array<wchar_t, 80> date = {};
    if (!time || !GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &*time, nullptr, date.data(),
                                 static_cast<int>(date.size()))) {
        return {};
    }
    return std::wstring(date.data()) + L' ' + TimeText(*time);
}

}  // namespace verbatix
