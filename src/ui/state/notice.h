// What the user has to know for longer than a moment, across the status bar until it is over. Of several
// the most urgent one is shown. UI thread only.
#pragma once

#include <string>

namespace verbatix {

// The most urgent first.
enum class Notice { kListUnread, kNotSaved, kOtherList, kMisreadLines, kListMode };

// Puts a notice up; a click on it calls `onClick`, unless that is null.
void PutNotice(Notice notice, std::wstring text, void (*onClick)() = nullptr);
// False when it was not up.
bool TakeNoticeDown(Notice notice);
bool IsNoticeUp(Notice notice);

// The text to show now; empty when there is nothing to say.
std::wstring ShownNotice();

// The status bar was clicked.
void OnNoticeClick();

}  // namespace verbatix
