#include "paste/text/date_codes.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cwchar>

#include "base/text.h"

namespace verbatix {
namespace {

// Local time of that moment, with the day of the week as the system counts it.
SYSTEMTIME At(WORD year, WORD month, WORD day, WORD hour = 9, WORD minute = 5, WORD second = 7) {
    SYSTEMTIME time = {year, month, 0, day, hour, minute, second, 0};
    FILETIME counted;
    SystemTimeToFileTime(&time, &counted);
    FileTimeToSystemTime(&counted, &time);
    return time;
}

std::wstring Expand(std::wstring text, const SYSTEMTIME& now, bool useDate = true, bool useTime = true) {
    ExpandDateTimeCodes(text, {now, useDate, useTime});
    return text;
}

TEST(DateCodes, PrintAndMoveTheWorkingDate) {
    std::setlocale(LC_ALL, "");
    const SYSTEMTIME march = At(2026, 3, 5);
    const SYSTEMTIME may = At(2026, 5, 9);
    const std::tuple<SYSTEMTIME, const wchar_t*, const wchar_t*> rows[] = {
        {march, L"%DD%.%MM%.%YYYY% %D%.%M%.%YY%", L"05.03.2026 5.3.26"},
        {At(2005, 3, 5), L"%YY%", L"5"},  // deliberately without a leading zero
        {march, L"%hh%:%mm%:%ss% %h1%:%m1%:%s1%", L"09:05:07 9:5:7"},
        {At(2027, 1, 1), L"%CW% %CWL%", L"53 53"},
        {At(2025, 12, 29), L"%CW% %CWL%", L"1 01"},
        {march, L"%d+1%%DD%", L"06"},
        {march, L"%d+-5%%DD%.%MM%", L"28.02"},
        {march, L"%mfd%%d+1%%DD%", L"06"},  // d+ starts from today again
        {march, L"%d+2%%addd+7%%addd+-9%%DD%", L"05"},
        {may, L"%qfd%%DD%.%MM%", L"01.03"},  // deliberately March, not April
        {may, L"%qld%%DD%.%MM% %mld%%DD% %nmfd%%DD%.%MM%", L"30.06 30 01.07"},
        // Ends of months and quarters on a Saturday; only WD works on Saturdays.
        {At(2026, 8, 20), L"%mfwd%%DD%%d+0%%mfWD%%DD%", L"0301"},
        {At(2022, 2, 20), L"%qfwd%%DD%%d+0%%qfWD%%DD%", L"0301"},
        {At(2026, 10, 20), L"%mlwd%%DD%%d+0%%mlWD%%DD%", L"3031"},
        {At(2023, 7, 20), L"%qlwd%%DD%%d+0%%qlWD%%DD%", L"2930"},
        // A Thursday: the next one, the next other days, and numbers that are no day of the week.
        {march, L"%wd:4%%DD%%d+0%%wd:5%%DD%%d+0%%wd:0%%DD%%d+0%%wd:7%%DD%%wd:-1%%DD%", L"1206080505"},
        {At(2026, 3, 27), L"%lwdim:5%%DD%.%MM%", L"24.04"},
        {At(2026, 3, 30), L"%lwdiq:5%%DD%.%MM%.%YYYY%", L"26.06.2026"},
        {At(2028, 1, 31), L"%ldim%%DD%.%MM%", L"29.02"},
        {march, L"%d+2900000%%YYYY%%mld%%nmfd%%qld%%ldim%[%LDF%%LTF%%LDF_UC%]", L"9966[]"},
        {march, L"5%%YYYY", L"5%2026"},
        {march, L"5%D%YYYY", L"552026"},
        {march, L"50% of %DD%, 7%%a%DD%b%", L"50% of 05, 7%%a05b%"},
        {march, L"%%DD%%", L"%05%"},
        {march, L"_HJ_UTREAEWRE_FDFDF%DD%", L"05"},         // never reaches the output
        {march, L"%no_time_fun%%DD%", L"%no_time_fun%05"},  // honoured anywhere but at the beginning
        {march, L"%DD%%no_time_fun%%MM%%no_time_fun%", L"%DD%%MM%"},
    };
    for (const auto& [now, text, expanded] : rows) EXPECT_EQ(Expand(text, now), expanded) << text;
    // No codes, most of them because numbers must read as they would be written.
    for (const wchar_t* text : {L"%d+02%", L"%d+2x%", L"%d+%", L"%d++2%", L"%d+-0%", L"%D+1%", L"%wd:01%",
                                L"%lwdim:%", L"%addd+2147483648%", L"%d+123456789012345678901234567890%",
                                L"%dd%", L"%MMMM_LC%", L"%LDF_UCXXXXX%", L"%%%", L"%_:%7%%"}) {
        EXPECT_EQ(Expand(text, march), text);
    }
    // The groups are switched apart; the variables run with either.
    EXPECT_EQ(Expand(L"%hh%-%d+1%%DD%", march, true, false), L"%hh%-06");
    EXPECT_EQ(Expand(L"%d+1%%hh%-%DD%-%LTF%", march, false, true), L"09-%DD%-%LTF%");
}

std::wstring Locale(LCTYPE type) {
    wchar_t text[100] = L"";
    GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text, 100);
    return text;
}

TEST(DateCodes, NamesAndLongFormsAreTheUsers) {
    std::setlocale(LC_ALL, "");
    const SYSTEMTIME sunday = At(2026, 3, 1);
    EXPECT_EQ(Expand(L"%DDDD%|%d+1%%DDD%", sunday),
              Locale(LOCALE_SDAYNAME7) + L"|" + Locale(LOCALE_SABBREVDAYNAME1));
    for (WORD month = 1; month <= 12; ++month) {
        const auto number = static_cast<LCTYPE>(month - 1);
        EXPECT_EQ(Expand(L"%MMMM%|%MMM%", At(2026, month, 1)),
                  Locale(LOCALE_SMONTHNAME1 + number) + L"|" + Locale(LOCALE_SABBREVMONTHNAME1 + number));
    }
    const std::wstring names[] = {Locale(LOCALE_SMONTHNAME3), Locale(LOCALE_SABBREVMONTHNAME3),
                                  Locale(LOCALE_SDAYNAME7), Locale(LOCALE_SABBREVDAYNAME7)};
    const std::wstring all = names[0] + L"|" + names[1] + L"|" + names[2] + L"|" + names[3];
    EXPECT_EQ(Expand(L"%MMMM_UC%|%MMM_UC%|%DDDD_UC%|%DDD_UC%", sunday), UpperCase(all));
    // A case holds for all that follows, but not for plain text.
    EXPECT_EQ(Expand(L"aB%uc%%MMMM%-cD-%DDD%%lc%%MMMM%%DDD_UC%%dc%%MMMM%", sunday),
              L"aB" + UpperCase(names[0]) + L"-cD-" + UpperCase(names[3]) + LowerCase(names[0]) +
                  LowerCase(names[3]) + names[0]);
    std::tm fields = {9, 5, 16, 4, 6, 126, 6, 184, 0};
    wchar_t date[200] = L"";
    wchar_t time[200] = L"";
    std::wcsftime(date, 200, L"%#x", &fields);
    std::wcsftime(time, 200, L"%X", &fields);
    ASSERT_STRNE(date, L"");
    const SYSTEMTIME now = At(2026, 7, 4, 16, 5, 9);
    EXPECT_EQ(Expand(L"%LDF%|%LTF%", now), std::wstring(date) + L"|" + time);
    EXPECT_EQ(Expand(L"%LDF_UC%|%LDF_LC%|%LTF_UC%", now),
              UpperCase(std::wstring(date) + L"|" + date + L"|" + time));  // all three, deliberately
    // Where the runtime has no locale for the user's language it is the system that knows the forms.
    std::setlocale(LC_ALL, "C");
    GetDateFormatW(LOCALE_USER_DEFAULT, DATE_LONGDATE, &now, nullptr, date, 200);
    GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &now, nullptr, time, 200);
    EXPECT_EQ(Expand(L"%LDF%|%LTF%", now), std::wstring(date) + L"|" + time);
    std::setlocale(LC_ALL, "");
}

TEST(DateCodes, DialogsSetTheWorkingDate) {
    DateTimePass pass{At(2026, 3, 5)};
    pass.chooseDate = [](SYSTEMTIME& date) {
        date = At(2024, 2, 28, date.wHour, date.wMinute, date.wSecond);
        return true;
    };
    pass.chooseTime = [](SYSTEMTIME& time) {
        EXPECT_EQ(time.wYear, 2024);  // preset with the working date
        time.wHour = 23;
        return true;
    };
    std::wstring text = L"%C%%T%%DD%.%MM%.%YYYY% %hh%%addd+1% %DD%%d+0% %YYYY% %hh%";
    ExpandDateTimeCodes(text, pass);
    EXPECT_EQ(text, L"28.02.2024 23 29 2026 09");
}

}  // namespace
}  // namespace verbatix
