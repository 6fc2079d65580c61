// The settings file in trouble, and what the user sees of it.
#include "desktop/program_window.h"

namespace verbatix::test {
namespace {

using SettingsFileTest = ProgramWindow;

TEST_F(SettingsFileTest, HotkeysComeToLifeWhenALockEnds) {
    const std::wstring options = L"lng=0\r\n";
    ASSERT_TRUE(run_.WriteSettings(SettingsText({{L"Ctrl-Alt+Q", L"mine"}}, options)));
    UniqueFile lock = OpenShared(run_.SettingsFile(), 0);
    ASSERT_TRUE(run_.Start(L"-bg"));
    FindControls();
    EXPECT_EQ(Rows(), 0);
    EXPECT_FALSE(DialogOf(run_.Program().Id(), dialog_)) << "no box";
    lock.Reset();
    EXPECT_TRUE(WaitFor([&] { return Rows() == 1; }));
    EXPECT_TRUE(Becomes(CMD_NEW_ENTRY, L"&Neu")) << "the options too";
    const Target target;
    PlayStroke({VK_LCONTROL, VK_LMENU}, 'Q');
    EXPECT_TRUE(WaitFor([&] { return target.Text() == L"mine"; }));
    EXPECT_EQ(run_.Exit(), 1);
}

TEST_F(SettingsFileTest, ATornFileIsAskedAboutAndMended) {
    std::vector<StoredLine> lines;
    for (int i = 0; i < 30; ++i) lines.push_back({L"Ctrl+Q", L"entry " + std::to_wstring(i)});
    const std::wstring whole = SettingsText(lines);
    WriteBytes(run_.SettingsFile() + L".bak", Utf16File(whole));
    ASSERT_TRUE(run_.WriteSettings(whole.substr(0, whole.size() / 3)));
    ASSERT_TRUE(run_.Start(L"-bg"));
    FindControls();
    const std::wstring asked = Answer(IDYES);
    EXPECT_NE(asked.find(L"30 entries"), std::wstring::npos) << ::testing::PrintToString(asked);
    EXPECT_TRUE(WaitFor([&] { return Rows() == 30; }));
    EXPECT_EQ(run_.Exit(), 1);
    EXPECT_TRUE(FileHolds(L"text_029=Ctrl+Q=entry 29<E<N<D|"));
}

TEST_F(SettingsFileTest, AMistypedLineIsOneClickAway) {
    Start({{L"Crtl+B", L"slip"}, {L"Ctrl+Q", L"fine"}});
    EXPECT_EQ(Rows(), 1);
    SetFileAttributesW(run_.SettingsFile().c_str(), FILE_ATTRIBUTE_READONLY);
    ASSERT_TRUE(ComesToFront());
    Click(FindWindowExW(dialog_, nullptr, STATUSCLASSNAMEW, nullptr), 20, 8);
    EXPECT_TRUE(Answer(IDOK).starts_with(L"The settings file is write-protected."));
    HWND editor = nullptr;
    EXPECT_TRUE(WaitFor([&] { return (editor = FindWindowW(L"Notepad", nullptr)) != nullptr; }, 10000));
    PostMessageW(editor, WM_CLOSE, 0, 0);
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(editor); }));
    SetFileAttributesW(run_.SettingsFile().c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(run_.Exit(), 1);
    EXPECT_TRUE(FileHolds(L"text_000=Crtl+B=slip<E<N<D|") && FileHolds(L"text_001=Ctrl+Q=fine<E<N<D|"));
}

TEST_F(SettingsFileTest, AnotherListInItIsKeptAndOffered) {
    Start({{L"Ctrl+Q", L"mine"}});
    ASSERT_TRUE(
        run_.WriteSettings(SettingsText({{L"Ctrl+Q", L"theirs"}, {L"Ctrl+W", L"more"}}, L"topmost=0\r\n")));
    Menu(2);
    EXPECT_TRUE(FileGets(L"tray_if_close=0") && FileHolds(L"=mine<E<N<D|") && FileHolds(L"topmost=0"));
    ASSERT_TRUE(ComesToFront());
    Click(FindWindowExW(dialog_, nullptr, STATUSCLASSNAMEW, nullptr), 20, 8);
    EXPECT_TRUE(Answer(IDYES).starts_with(L"Another program had changed the list"));
    EXPECT_TRUE(WaitFor([&] { return Rows() == 2; }));
    EXPECT_TRUE(Becomes(IDC_TEXT, L"theirs"));
    EXPECT_EQ(run_.Exit(), 1);
    EXPECT_TRUE(FileHolds(L"=theirs<E<N<D|"));
}

}  // namespace
}  // namespace verbatix::test
