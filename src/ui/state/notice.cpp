#include "ui/state/notice.h"

#include <map>
#include <utility>

namespace verbatix {

struct StandingNotice {
    std::wstring text;
    void (*onClick)() = nullptr;
};

static std::map<Notice, StandingNotice> notices;

void PutNotice(Notice notice, std::wstring text, void (*onClick)()) {
    notices[notice] = {std::move(text), onClick};
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

void OnNoticeClick() {
    if (notices.empty()) return;
    // The click may take the notice away.
    if (const auto onClick = notices.begin()->second.onClick) onClick();
}

}  // namespace verbatix
