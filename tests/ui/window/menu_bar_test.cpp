#include "ui/window/menu_bar.h"

#include <gtest/gtest.h>

#include <map>

#include "base/language.h"
#include "ids.h"
#include "store/settings.h"
#include "ui/shell/autostart.h"
#include "ui/state/keep_entries.h"
#include "ui/state/main_window.h"
#include "ui/state/program_client.h"

namespace verbatix {
namespace {

bool IsChecked(HMENU bar, UINT id) {
    const UINT state = GetMenuState(bar, id, MF_BYCOMMAND);
    EXPECT_NE(state, static_cast<UINT>(-1)) << id << " is missing";
    return (state & MF_CHECKED) != 0;
}

TEST(MenuBar, ShowsWhatIsOn) {
    settings = {};
    programClient.languageNames = []() -> const std::map<int, std::wstring>& {
        static const std::map<int, std::wstring> names = {{0, L"Deutsch"}, {1, L"English"}, {77, L"A & B"}};
        return names;
    };
    programClient.activeLanguage = [] { return 77; };
    ASSERT_TRUE(SetStartWithWindows(false));
    const HMENU bar = CreateMenuBar();
    EXPECT_FALSE(IsChecked(bar, CMD_START_WITH_WINDOWS));
    EXPECT_TRUE(IsChecked(bar, CMD_SUGGEST_WORDS));
    EXPECT_TRUE(IsChecked(bar, CMD_LANGUAGE_FIRST + 77));
    EXPECT_FALSE(IsChecked(bar, CMD_LANGUAGE_FIRST + 1));
    EXPECT_TRUE(IsChecked(bar, 2001));
    wchar_t name[20] = {};
    GetMenuStringW(bar, CMD_LANGUAGE_FIRST + 77, name, 20, MF_BYCOMMAND);
    EXPECT_STREQ(name, L"&A && B");
    const auto isGrey = [bar](UINT id) { return (GetMenuState(bar, id, MF_BYCOMMAND) & MF_GRAYED) != 0; };
    for (const int tree : {0, 1}) {
        settings.showTree = tree;
        RefreshMenuChecks(bar);
        EXPECT_EQ(isGrey(CMD_EXPAND_ALL), tree == 0);
        EXPECT_EQ(isGrey(CMD_SORT_FIRST + 2), tree == 1);
        EXPECT_TRUE(isGrey(CMD_SORT_FIRST + 5)) << "the column is not shown";
        EXPECT_TRUE(isGrey(CMD_EXPORT_SELECTION)) << "nothing is selected";
    }
    SetLanguageTexts({}, {{1431, L"Undo {1}"}, {1434, L"Ctrl+Z"}, {1446, L"delete of {1}"}});
    AddEntry(mainWindow.entries, L"text", L"", 0, 0, -1, 0);
    NoteAction({Act::kDelete, L"'A & B'"});
    RefreshMenuChecks(bar);
    wchar_t undo[60] = {};
    GetMenuStringW(bar, CMD_UNDO, undo, 60, MF_BYCOMMAND);
    EXPECT_STREQ(undo, L"Undo delete of 'A && B'\tCtrl+Z");
    EXPECT_FALSE(isGrey(CMD_UNDO));
    EXPECT_TRUE(isGrey(CMD_REDO));
    mainWindow.entries.clear();
    ForgetActions();
    // By the registry alone, whoever has changed it.
    ASSERT_TRUE(SetStartWithWindows(true));
    settings.useAutocomplete = 0;
    RefreshMenuChecks(bar);
    EXPECT_TRUE(IsChecked(bar, CMD_START_WITH_WINDOWS));
    EXPECT_FALSE(IsChecked(bar, CMD_SUGGEST_WORDS));
    // The Task Manager has a switch of its own.
    constexpr const wchar_t* kApproval =
        L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\StartupApproved\\Run";
    for (const BYTE state : std::initializer_list<BYTE>{2, 3, 6, 7}) {
        const BYTE value[12] = {state};
        RegSetKeyValueW(HKEY_CURRENT_USER, kApproval, L"Verbatix", REG_BINARY, value, sizeof value);
        RefreshMenuChecks(bar);
        EXPECT_EQ(IsChecked(bar, CMD_START_WITH_WINDOWS), state % 2 == 0) << int{state};
        EXPECT_TRUE(SetStartWithWindows(true));
        EXPECT_TRUE(StartsWithWindows()) << int{state};
    }
    RegDeleteKeyValueW(HKEY_CURRENT_USER, kApproval, L"Verbatix");
    EXPECT_TRUE(SetStartWithWindows(false));
    DestroyMenu(bar);
    programClient = {};
    settings = {};
}

}  // namespace
}  // namespace verbatix
