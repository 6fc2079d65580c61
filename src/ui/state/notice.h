// What the user has to know for longer than a moment, across the status bar until it is over. Of several
// the most urgent one is shown. UI thread only.
#pragma once

#include <string>

namespace verbatix {

// The most urgent first.
enum class Notice { kListUnread, kNotSaved, kOtherList, kMisreadLines, kListMode };

// What helps: a click on the notice, or the button behind it, of that name.
struct NoticeHelp {
    int name = 0;  // language text; 0: nothing helps
    void (*run)() = nullptr;
};

void PutNotice(Notice notice, std::wstring text, NoticeHelp help = {});
// False when it was not up.
bool TakeNoticeDown(Notice notice);
bool IsNoticeUp(Notice notice);

// The text to show now; empty when there is nothing to say.
std::wstring ShownNotice();
NoticeHelp ShownHelp();

}  // namespace verbatix
