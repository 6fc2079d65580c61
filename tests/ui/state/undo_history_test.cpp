// Steps that are taken back and done again: lists in, lists out.
#include "ui/state/undo_history.h"

#include <gtest/gtest.h>

#include <functional>

#include "base/text.h"
#include "store/entry_moves.h"

namespace verbatix::test {
namespace {

void SetText(EntryList& list, int position, std::wstring_view text) {
    ListEntry record = list.at(position).current;
    CopyText(record.text, text, kTextLimit);
    UpdateEntry(list, position, record);
}

void Blank(EntryList& list, int position) {
    CopyText(list.at(position).current.text, L"");
    CopyText(list.at(position).current.label, L"");
}

std::wstring Show(const EntryList& list) {
    std::wstring all;
    for (const auto& [position, slot] : list) {
        const ListEntry& entry = slot.current;
        all += Format(L"%ls:%ls:%u.%u.%d ", entry.label, entry.text, entry.keyCode, entry.modifier,
                      entry.order);
    }
    return all;
}

class UndoTest : public ::testing::Test {
  protected:
    UndoTest() {
        for (const wchar_t* text : {L"a", L"b", L"c", L"d"}) AddEntry(list_, text, L"", 'Q', 4, -1, 7);
        ForgetSteps(history_, list_);
    }
    bool Note(Action action, std::uint64_t now = 0) {
        return NoteStep(history_, list_, std::move(action), now);
    }
    void Type(std::wstring_view text, std::uint64_t now, int position = 0, Act act = Act::kText) {
        SetText(list_, position, text);
        Note({act, L"", {position}, {position}, true}, now);
    }
    std::size_t Steps() const { return history_.steps.size(); }

    EntryList list_;
    UndoHistory history_;
};

TEST_F(UndoTest, EveryChangeComesBackAndGoesAgain) {
    const std::function<void(EntryList&)> changes[] = {
        [](EntryList& list) { SetText(list, 1, L"other"); },
        [](EntryList& list) { Blank(list, 2), Blank(list, 0); },
        [](EntryList& list) { MoveEntry(list, 0, 3); },
        [](EntryList& list) { list.at(1).current.modifier = 2; },
        [](EntryList& list) { list.at(1).current.keyCode = 0; },
        [](EntryList& list) { list.at(3).current.order = 0; },
        [](EntryList& list) { AddEntry(list, L"new", L"Group/new", 'W', 1, -1, 4); },
    };
    std::vector<std::wstring> states = {Show(list_)};
    for (const auto& change : changes) {
        change(list_);
        ASSERT_TRUE(Note({}));
        EXPECT_FALSE(Note({})) << "nothing has changed since";
        states.push_back(Show(list_));
    }
    // The place of the new entry stays, with nothing in it.
    states[states.size() - 2] += L"::0.0.4 ";
    for (std::size_t step = states.size() - 1; step > 0; --step) {
        ASSERT_TRUE(UndoStepIn(history_, list_));
        const std::wstring blank = step < states.size() - 1 ? L"::0.0.4 " : L"";
        EXPECT_EQ(Show(list_), states[step - 1] + blank) << step;
    }
    EXPECT_FALSE(UndoStepIn(history_, list_));
    for (std::size_t step = 1; step < states.size(); ++step) ASSERT_TRUE(RedoStepIn(history_, list_));
    EXPECT_EQ(Show(list_), states.back());
    EXPECT_FALSE(RedoStepIn(history_, list_));
}

TEST_F(UndoTest, TypingIsOneStepUntilAPauseOrAnotherKindOrPlace) {
    Type(L"x", 1000);
    Type(L"xy", 1200);
    Type(L"xyz", 1200 + kTypingPauseMilliseconds);
    EXPECT_EQ(Steps(), 1U);
    Type(L"xyz!", 1201 + 2 * kTypingPauseMilliseconds);
    EXPECT_EQ(Steps(), 2U);
    Type(L"other", 8000, 1);
    Type(L"renamed", 8000, 1, Act::kRename);
    EXPECT_EQ(Steps(), 4U);
    SealStep(history_);
    Type(L"again", 8000, 1, Act::kRename);
    EXPECT_EQ(Steps(), 5U);
    // Back to where the step began: there is nothing to take back.
    for (const unsigned key : {'W', 'Q'}) {
        list_.at(1).current.keyCode = key;
        Note({Act::kHotkey, L"", {1}, {1}, true}, 8000);
        EXPECT_EQ(Steps(), key == 'W' ? 6U : 5U);
    }
    for (int i = 0; i < 4; ++i) UndoStepIn(history_, list_);
    EXPECT_STREQ(list_.at(0).current.text, L"xyz");
    // Typing after that begins anew, and what was taken back is gone.
    Type(L"xyz2", 8000);
    EXPECT_EQ(Steps(), 2U);
    EXPECT_FALSE(NextRedo(history_));
}

// The whole text after every edit, at its second, and where each step leads back to.
TEST_F(UndoTest, TypingIsCutIntoStepsWorthTakingBack) {
    struct Edit {
        int second;
        const wchar_t* text;
    };
    struct Row {
        const char* what;
        std::vector<Edit> edits;
        std::vector<std::wstring> back;
    };
    const Row rows[] = {
        {"typed, then all deleted", {{0, L"ab"}, {1, L"abc"}, {2, L"?"}}, {L"abc", L"a"}},
        {"a letter taken back", {{0, L"ab"}, {1, L"abx"}, {2, L"ab"}, {3, L"abc"}}, {L"ab", L"abx", L"a"}},
        {"deleted by and by", {{0, L"abcd"}, {4, L"abc"}, {5, L"ab"}, {6, L"b"}}, {L"abcd", L"a"}},
        {"over a selection", {{0, L"abc"}, {4, L"ax"}, {5, L"axyz"}}, {L"abc", L"a"}},
        {"put in between",
         {{0, L"ab"}, {1, L"a 123456789 b"}, {2, L"a 123456789 bc"}},
         {L"a 123456789 b", L"ab", L"a"}},
        {"the same letters", {{0, L"aa"}, {1, L"aaa"}, {2, L"aaaa"}}, {L"a"}},
        {"20 characters",
         {{0, L"a1234567"},
          {1, L"a12345671234567"},
          {2, L"a12345671234567123456"},
          {3, L"a123456712345671234567"}},
         {L"a12345671234567123456", L"a"}},
        {"10 seconds",
         {{0, L"ab"}, {3, L"abc"}, {6, L"abcd"}, {9, L"abcde"}, {11, L"abcdef"}},
         {L"abcde", L"a"}},
    };
    for (const Row& row : rows) {
        SetText(list_, 0, L"a");
        ForgetSteps(history_, list_);
        for (const Edit& edit : row.edits) Type(edit.text, static_cast<std::uint64_t>(edit.second) * 1000);
        std::vector<std::wstring> back;
        while (UndoStepIn(history_, list_)) back.push_back(list_.at(0).current.text);
        EXPECT_EQ(back, row.back) << row.what;
    }
}

TEST_F(UndoTest, AListThatIsNotWhatTheStepLeftIsNotTouched) {
    SetText(list_, 1, L"step");
    Note({Act::kText});
    SetText(list_, 1, L"from elsewhere");
    EXPECT_FALSE(UndoStepIn(history_, list_));
    EXPECT_STREQ(list_.at(1).current.text, L"from elsewhere");
    EXPECT_FALSE(NextUndo(history_) || NextRedo(history_));
    SetText(list_, 3, L"step");
    Note({Act::kText});
    list_.erase(3);
    EXPECT_FALSE(UndoStepIn(history_, list_));
}

TEST_F(UndoTest, MemoryIsBoundAndAHundredStepsAreKept) {
    for (int i = 0; i < 300; ++i)
        AddEntry(list_, std::wstring(200, L'x') + std::to_wstring(i), L"", 0, 0, -1, 0);
    ForgetSteps(history_, list_);
    const std::wstring first = Show(list_);
    for (int i = 0; i < 100; ++i) {
        MoveEntry(list_, 0, 300);
        Note({Act::kMove});
    }
    for (int i = 0; i < 100; ++i) ASSERT_TRUE(UndoStepIn(history_, list_)) << i;
    EXPECT_EQ(Show(list_), first);
    std::size_t bytes = 0;
    for (int i = 0; i < 600; ++i) {
        for (int row = 0; row < 10; ++row) SetText(list_, row, std::wstring(4000, i % 2 ? L'a' : L'b'));
        Note({Act::kDelete});
    }
    for (const UndoStep& step : history_.steps) bytes += step.bytes;
    EXPECT_LE(bytes, kMostUndoBytes);
    EXPECT_GT(Steps(), 300U);
}

}  // namespace
}  // namespace verbatix::test
