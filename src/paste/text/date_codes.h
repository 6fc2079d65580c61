// Date and time codes in an entry's text: pieces between percent signs that print a part of the working
// date, move it, or change the letter case of what follows. Nothing fails: what is no code stays as typed,
// and a date or locale that cannot be formatted prints nothing.
#pragma once

#include <windows.h>

#include <span>
#include <string>
#include <string_view>

namespace verbatix {

// Whether a text can hold a code or placeholder at all.
bool HasTwoPercentSigns(std::wstring_view text);

// Whether the pass may come to a code that asks the user for a date or a time of day.
bool MayAskForDate(std::wstring_view text);

// What one pass works with.
struct DateTimePass {
    // Local time, read once, so that all codes of a text agree even when midnight falls between them. The
    // working date begins here and "%d+N%" counts from here.
    SYSTEMTIME now = {};
    // Which groups of codes are expanded; the variables that move the date run in any case.
    bool useDate = true;
    bool useTime = true;
    // Ask the user for a date or a time of day, given the working date, which stays when they return false.
    // Null: the code is taken out and the date stays.
    bool (*chooseDate)(SYSTEMTIME& date) = nullptr;
    bool (*chooseTime)(SYSTEMTIME& time) = nullptr;
    // What stands in the text where the user is asked: nothing in a paste, a word on it in a preview.
    std::wstring dateQuestion = {};
    std::wstring timeQuestion = {};
};

// The pass over a text, in place and from left to right. A text that holds "%no_time_fun%" anywhere but at
// its very beginning only loses that token.
void ExpandDateTimeCodes(std::wstring& text, const DateTimePass& pass);

// What `piece` prints for that date; the piece itself when it is no code of a group in use.
std::wstring FormatDateCode(std::wstring_view piece, const SYSTEMTIME& workingDate, bool useTime,
                            bool useDate);

// Every code without its percent signs, for showing them to the user: the printing codes, the variables,
// and the beginnings of the variables that end in a number ("d+").
std::span<const wchar_t* const> DateFormatCodes();
std::span<const wchar_t* const> DateVariables();
std::span<const wchar_t* const> NumberedDateVariables();

}  // namespace verbatix
