// What is said of a hotkey, in English.
#include "ui/editor/hotkey_verdict.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "app/language_archive.h"
#include "hotkeys/hotkey_names.h"

namespace verbatix::test {
namespace {

TEST(HotkeyVerdict, SaysWhatTheHotkeyWouldTakeAway) {
    ASSERT_TRUE(LoadLanguageArchive(1));
    EntryList list;
    AddEntry(list, L"a", L"Ctrl & co", 'Q', kModifierCtrl, -1, 0);
    AddEntry(list, L"b", L"", 'C', kModifierCtrl, -1, 0);
    AddEntry(list, L"", L"", 'W', kModifierCtrl, -1, 0);
    AddEntry(list, L"d", L"", 'J', 77, -1, 0);  // a modifier that does not exist counts as 0
    struct Row {
        unsigned modifier;
        unsigned key;
        const wchar_t* text;
        std::wstring link = {};
        KeyFacts facts = {};
    };
    const Row rows[] = {
        {kModifierCtrl, 0, L""},
        {kModifierCtrl, 'K', L"Ctrl + K is free."},
        {kModifierCtrl, 'W', L"Ctrl + W is free."},
        {kModifierLeftWin, 'J', L"Shares a menu with d.", L"d"},
        {99, 'K', L"Left Win + K is free."},
        {kModifierCtrl, 'Q', L"Shares a menu with Ctrl & co.", L"Ctrl & co"},
        {kModifierCtrl, 'C', L"Shares a menu with b. Ctrl + C copies in nearly every program.", L"b"},
        {kModifierRightCtrl, 'V', L"Right Ctrl + V pastes in nearly every program."},
        {kModifierCtrlAlt, 'V', L"Ctrl + Alt + V is free."},
        {kModifierAlt, VK_TAB, L"Windows needs Alt + TAB: it switches between windows."},
        {kModifierAlt, VK_F4, L"Windows needs Alt + F4: it closes the window."},
        {kModifierCtrl, VK_ESCAPE, L"Windows needs Ctrl + ESC: it opens the Start menu."},
        {kModifierCtrlAlt, VK_DELETE, L"Windows needs Ctrl + Alt + Del: it shows the security screen."},
        {kModifierRightWin,
         'L',
         L"Windows needs Right Win + L: it locks the computer.",
         {},
         {{}, {}, true}},
        {kModifierLeftWin,
         'Y',
         L"Windows or another program already uses Left Win + Y.",
         {},
         {{}, {}, true}},
        {kModifierAltGr,
         'E',
         L"You could no longer type \u201c\u20ac\u201d with Alt Gr + E.",
         {},
         {L"E", L"\u20ac"}},
        {kModifierAltGr, VK_OEM_3, L"Alt Gr + \u00c0 (\u00d6) is free.", {}, {L"\u00d6"}},
        {kModifierLeftMouse, 'C', L"Left mouse button + C is free."},
        {kModifierCtrl,
         'Q',
         L"Ctrl + Q is switched off in the settings file and does nothing. Shares a menu with Ctrl & co.",
         L"Ctrl & co",
         {{}, {}, false, true}},
    };
    for (const Row& row : rows) {
        const HotkeyVerdict said = JudgeHotkey(list, 7, row.key, row.modifier, row.facts, true);
        EXPECT_EQ(said.text, row.text);
        EXPECT_EQ(said.text.substr(said.linkStart, said.linkLength), row.link) << row.key;
        EXPECT_EQ(said.other >= 0, !row.link.empty()) << row.key;
    }
    EXPECT_EQ(JudgeHotkey(list, 7, 'K', kModifierCtrl, {}, false).text, L"");
    EXPECT_EQ(JudgeHotkey(list, 0, 'Q', kModifierCtrl, {}, false).other, -1) << "its own";
}

TEST(HotkeyVerdict, SaysWhyWhatWasPressedIsNoHotkey) {
    ASSERT_TRUE(LoadLanguageArchive(1));
    struct Row {
        unsigned held;
        unsigned key;
        const wchar_t* label;
        const wchar_t* begins;
    };
    const Row rows[] = {
        {32, 'K', L"K", L""},
        {40, VK_F5, L"F5", L""},
        {256, VK_INSERT, L"Ins", L""},
        {0, 'Q', L"Q", L"Q alone would be swallowed"},
        {64, 'Q', L"Q", L"Shift + Q cannot be a hotkey"},
        {32 | 4 | 128, 'Q', L"Q", L"Ctrl + Alt + Shift + Q cannot be a hotkey"},
        {32 | 64, VK_ESCAPE, L"Esc", L"Windows needs Ctrl + Shift + ESC: it opens the Task Manager."},
        {32, VK_RETURN, L"Enter", L"\u201cEnter\u201d cannot be the key of a hotkey."},
        {32, VK_APPS, L"Menu", L"\u201cMenu\u201d cannot be the key of a hotkey."},
    };
    for (const Row& row : rows) {
        const std::wstring why = WhyNoHotkey(row.key, row.held, row.label);
        EXPECT_TRUE(why.starts_with(row.begins) && why.empty() == (*row.begins == 0))
            << testing::PrintToString(why);
    }
}

}  // namespace
}  // namespace verbatix::test
