// The notice at the caret of another program's window.
#include "hotkeys/notice.h"

#include <gtest/gtest.h>

#include "support/message_thread.h"
#include "support/program_run.h"
#include "support/wait.h"

namespace verbatix::test {
namespace {

HWND ShownNotice() {
    const HWND window = FindWindowW(L"tooltips_class32", nullptr);
    return IsWindowVisible(window) ? window : nullptr;
}

TEST(NoticeCorner, StaysInsideTheWorkAreaAndOffTheCaretsLine) {
    const struct {
        RECT caret;
        POINT corner;
    } rows[] = {{{100, 100, 101, 120}, {100, 124}},
                {{900, 100, 901, 120}, {700, 124}},
                {{100, 660, 101, 680}, {100, 616}},
                {{-1200, 690, -1199, 900}, {-1000, 646}},
                {{100, 5, 101, 695}, {100, 0}}};
    for (const auto& [caret, corner] : rows) {
        const POINT found =
            NoticeCorner({{caret.left, caret.bottom}, caret}, {300, 40}, {-1000, 0, 1000, 700});
        EXPECT_TRUE(found.x == corner.x && found.y == corner.y) << found.x << "," << found.y;
    }
}

TEST(Notice, StandsAtTheCaretWithoutTakingTheKeyboardUntilItIsHidden) {
    const Target target;
    MessageThread thread;
    thread.Run([] { NoticeAtCaret(L"first"); });
    thread.Run([] { NoticeAtCaret(L"Nothing was pasted.\nSecond line"); });
    const HWND shown = ShownNotice();
    ASSERT_TRUE(shown);
    EXPECT_EQ(WindowText(shown), L"Nothing was pasted.\nSecond line");
    EXPECT_EQ(GetForegroundWindow(), target.Window());
    RECT notice = {};
    RECT window = {};
    RECT common = {};
    GetWindowRect(shown, &notice);
    GetWindowRect(target.Window(), &window);
    EXPECT_TRUE(IntersectRect(&common, &notice, &window)) << "not at the target's caret";
    thread.Run(HideNotice);
    EXPECT_FALSE(ShownNotice());
}

}  // namespace
}  // namespace verbatix::test
