#include "ui/state/notice.h"

#include <map>
#include <utility>

namespace verbatix {

struct StandingNotice {
    std::wstring text;
    NoticeHelp help;
};

static std::map<Notice, StandingNotice> notices;

void PutNotice(Notice notice, std::wstring text, NoticeHelp help) {
    notices[notice] = {std::move(text), help};
}

bool TakeNoticeDown(Notice notice) {
    return notices.erase(notice) != 0;
}

bool IsNoticeUp(Notice notice) {
    return notices.count(notice) != 0;
}

std::wstring ShownNotice() {
    return notices.empty() ? std::wstring() : notices.begin()->second.text;
}

NoticeHelp ShownHelp() {
    return notices.empty() ? NoticeHelp{} : notices.begin()->second.help;
}

}  // namespace verbatix
