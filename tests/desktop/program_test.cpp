// The running program and its surroundings: its language, its start and its end, words from a file.
#include "desktop/program_window.h"

namespace verbatix::test {
namespace {

class ProgramTest : public ProgramWindow {
  protected:
    std::wstring RunValue() const {
        wchar_t value[1000] = {};
        DWORD size = sizeof value;
        RegGetValueW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Run", L"Verbatix",
                     RRF_RT_REG_SZ, nullptr, value, &size);
        return value;
    }
    // A second run of the program, wherever it came from.
    static HWND OtherDialog(DWORD notThis) {
        return FindTopWindow(L"#32770", [=](HWND box) {
            return ProcessOf(box) != notThis && GetDlgItem(box, IDC_LIST) && GetMenu(box);
        });
    }
    std::wstring ExeFile() const { return run_.Place().File(L"Verbatix.exe"); }
};

TEST_F(ProgramTest, TheLanguageChangesAtOnceAndTheRegistryStartsIt) {
    WriteBytes(run_.Place().File(L"translate_x.txt"), "[language 77 Own & more]\n1040=Mine\n");
    Start({{L"Ctrl+Q", L"one"}});
    const struct {
        WPARAM number;
        const wchar_t* button;
        const wchar_t* modifier;
    } rows[] = {{0, L"&Neu", L"Strg"}, {77, L"Mine", L"Ctrl"}, {1, L"&New", L"Ctrl"}};
    for (const auto& row : rows) {
        Menu(CMD_LANGUAGE_FIRST + row.number);
        EXPECT_TRUE(Becomes(CMD_NEW_ENTRY, row.button)) << row.number;
        EXPECT_TRUE(Becomes(IDC_MODIFIER, row.modifier));
        EXPECT_TRUE(FileGets(L"lng=" + std::to_wstring(row.number) + L"\r\n"));
    }
    const std::wstring command = L"\"" + ExeFile() + L"\" -bg \"-ini:" + run_.SettingsFile() + L"\"";
    for (const std::wstring& value : {command, std::wstring()}) {
        Menu(CMD_START_WITH_WINDOWS);
        EXPECT_TRUE(WaitFor([&] { return RunValue() == value; })) << ::testing::PrintToString(RunValue());
    }
}

TEST_F(ProgramTest, RestartsWithWhatWasTyped) {
    for (const WPARAM command : {12804, 12800}) {  // as it is, and as administrator
        Start({{L"Ctrl+Q", L"old"}});
        ASSERT_TRUE(Becomes(IDC_TEXT, L"old"));
        Type(IDC_TEXT, L"new ");
        Menu(command);
        const DWORD first = run_.Program().Id();
        EXPECT_EQ(run_.Program().WaitForExit(), 1U);
        ASSERT_TRUE(WaitFor([&] { return OtherDialog(first) != nullptr; }, 15000));
        dialog_ = OtherDialog(first);
        EXPECT_TRUE(Becomes(IDC_TEXT, L"new old"));
        EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(dialog_); }));
        const UniqueKernelObject second(OpenProcess(SYNCHRONIZE, FALSE, ProcessOf(dialog_)));
        PostMessageW(dialog_, WM_COMMAND, CMD_EXIT, 0);
        ASSERT_TRUE(WaitFor([&] { return WaitForSingleObject(second.Get(), 0) == WAIT_OBJECT_0; }));
    }
}

TEST_F(ProgramTest, ARestartThatFailsLeavesTheProgramRunning) {
    Start({});
    ASSERT_TRUE(MoveFileW(ExeFile().c_str(), run_.Place().File(L"away.exe").c_str()));
    Menu(12804);
    EXPECT_EQ(Answer(IDOK), L"Verbatix could not be started again and goes on running.");
    Menu(12800);
    EXPECT_TRUE(Answer(IDOK).starts_with(L"Verbatix did not start with administrator rights"));
    ProgramRun second;
    second.StartPlain(L"");
    EXPECT_EQ(second.Program().WaitForExit(), 0xAFFEU) << "it is the one copy again";
    EXPECT_EQ(run_.Exit(), 1);
}

TEST_F(ProgramTest, ATextTooLongIsCutOffKeptOrDiscarded) {
    const std::wstring text(3999, L'x');
    Start({{L"Ctrl+Q", text}, {L"Ctrl+W", L"other"}});
    for (const auto& [button, kept] :
         {std::pair(IDC_DISCARD, text), {IDC_KEEP_IN_FILE, text}, {IDC_CUT_OFF, L"\\n" + text.substr(1)}}) {
        ASSERT_TRUE(Select(0, IDC_TEXT, text));
        Type(IDC_TEXT, L"\r");
        ASSERT_TRUE(Becomes(IDC_COUNTER, L"1 too many (4001/4000)"));
        POINT place = ListPlace(1);
        ScreenToClient(list_, &place);
        Click(list_, place.x, place.y);
        EXPECT_NE(Answer(button), L"");
        if (button == IDC_KEEP_IN_FILE) {
            const std::wstring told = Answer(IDOK);
            const std::wstring file = told.substr(told.rfind(L'\n') + 1);
            EXPECT_EQ(ReadBytes(file), Utf16File(L"\r\n" + text)) << ::testing::PrintToString(told);
        }
        EXPECT_TRUE(Becomes(IDC_TEXT, L"other")) << button;
        EXPECT_TRUE(FileGets(L"Ctrl+Q=" + kept + L"<E<N<D|")) << button;
    }
}

TEST_F(ProgramTest, ATextTooLongIsNeverLost) {
    const std::wstring text(3999, L'x');
    Start({{L"Ctrl+Q", text}, {L"Ctrl+W", L"other"}});
    ASSERT_TRUE(Select(0, IDC_TEXT, text));
    Type(IDC_TEXT, L"ab");
    EXPECT_TRUE(Becomes(IDC_COUNTER, L"1 too many (4001/4000)"));
    // No box while typing, and everything else is kept.
    Type(IDC_LABEL, L"kept");
    EXPECT_TRUE(FileGets(L"text_000=kept"));
    EXPECT_FALSE(FileHolds(L"Ctrl+Q=ab"));
    EXPECT_TRUE(IsWindowEnabled(dialog_)) << "a box";
    // Another row: one box, however many notifications the click has, and the selection comes back.
    EXPECT_FALSE(Select(1, IDC_TEXT, L"other", 300));
    EXPECT_TRUE(Answer(IDCANCEL).starts_with(
        L"This is too long for one entry. Characters that fit into it: 4000\n\nYours has 1 more."));
    Linger(200);
    EXPECT_TRUE(IsWindowEnabled(dialog_)) << "another box";
    EXPECT_EQ(Text(IDC_LABEL), L"kept");
    EXPECT_EQ(SendMessageW(Control(IDC_TEXT), EM_GETSEL, 0, 0), MAKELRESULT(4000, 4001));
    PostMessageW(dialog_, WM_COMMAND, CMD_EXIT, 0);
    EXPECT_TRUE(Answer(IDCANCEL).starts_with(L"This is too long"));
    EXPECT_FALSE(run_.Program().WaitForExit(300)) << "the user decides what to cut";
    // The session ends without asking; where it goes on after all, nothing is left behind.
    const std::wstring backups = run_.Place().File(L"Backup");
    EXPECT_TRUE(SendMessageW(dialog_, WM_QUERYENDSESSION, 0, 0));
    EXPECT_TRUE(FileHolds(L"_unsaved.txt"));
    SendMessageW(dialog_, WM_ENDSESSION, FALSE, 0);
    EXPECT_FALSE(FileHolds(L"_unsaved.txt"));
    ASSERT_TRUE(RemoveDirectoryW(backups.c_str())) << GetLastError() << NamesIn(backups);
    WriteBytes(backups, "in the way of the folder");
    EXPECT_TRUE(SendMessageW(dialog_, WM_QUERYENDSESSION, 0, 0));
    const UINT message = RegisterWindowMessageW(L"Verbatix");
    SendMessageW(run_.Frame(), message, message, static_cast<LPARAM>(message));
    EXPECT_EQ(run_.Program().WaitForExit(), 0U);
    ASSERT_TRUE(run_.Start());
    dialog_ = run_.MainDialog();
    const std::wstring told = Answer(IDOK);
    const std::wstring file = told.substr(told.rfind(L'\n') + 1);
    EXPECT_EQ(ReadBytes(file), Utf16File(L"ab" + text)) << ::testing::PrintToString(told);
    FindControls();
    ASSERT_TRUE(Select(0, IDC_TEXT, text));
    Type(IDC_TEXT, L"a");
    EXPECT_TRUE(FileGets(L"Ctrl+Q=a" + text + L"<E<N<D|")) << "the longest there is";
}

TEST_F(ProgramTest, ALockedOrDeletedFileLosesNothing) {
    Start({{L"Ctrl+Q", L"old"}, {L"Ctrl+W", L"other"}}, L"m_disables_keys=Ctrl+I|\r\n");
    ASSERT_TRUE(Becomes(IDC_TEXT, L"old"));
    UniqueFile lock(CreateFileW(run_.SettingsFile().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(lock);
    Type(IDC_LABEL, L"mine");
    EXPECT_TRUE(Answer(IDOK).starts_with(L"The list could not be saved."));
    PostMessageW(dialog_, WM_COMMAND, CMD_NEW_ENTRY, 0);  // not told again: the window says so
    PostMessageW(dialog_, WM_COMMAND, CMD_EXIT, 0);
    EXPECT_TRUE(Answer(IDNO).starts_with(L"There are changes that could not be saved."));
    EXPECT_FALSE(run_.Program().WaitForExit(300));
    lock.Reset();
    PostMessageW(dialog_, WM_COMMAND, CMD_NEW_ENTRY, 0);
    EXPECT_TRUE(FileGets(L"listcmd_count=4"));
    EXPECT_TRUE(FileHolds(L"text_000=mine") && FileHolds(L"text_002=Ctrl-Alt+"));
    ASSERT_TRUE(DeleteFileW(run_.SettingsFile().c_str()));
    Menu(2);  // an option, which begins the file anew
    EXPECT_EQ(run_.Exit(), 1);
    EXPECT_TRUE(FileHolds(L"text_000=mine") && FileHolds(L"text_001=Ctrl+W=other<E<N<D|"));
    EXPECT_TRUE(FileHolds(L"listcmd_count=4") && FileHolds(L"m_disables_keys=Ctrl+I|"));
}

TEST_F(ProgramTest, SuggestsWordsWithoutGettingInTheWay) {
    WriteBytes(run_.Place().File(L"Verbatix_words.txt"), "Verbatix verbose\nverse");
    Start({{L"Ctrl+Q", L" end"}});
    ASSERT_TRUE(ComesToFront());
    ASSERT_TRUE(Becomes(IDC_TEXT, L" end"));
    SendMessageW(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(IDC_TEXT)), TRUE);
    SendMessageW(Control(IDC_TEXT), EM_SETSEL, 0, 0);
    const auto list = [&] { return run_.Program().WaitForVisibleWindow(L"ListBox"); };
    const auto closed = [&] {
        return WaitFor([&] { return !run_.Program().WaitForVisibleWindow(L"ListBox", nullptr, 0); });
    };
    Type(IDC_TEXT, L"ver");
    ASSERT_TRUE(list());
    EXPECT_EQ(SendMessageW(list(), LB_GETCOUNT, 0, 0), 3);
    PressKey(IDC_TEXT, VK_TAB);
    EXPECT_TRUE(Becomes(IDC_TEXT, L"Verbatix end"));
    SendMessageW(Control(IDC_TEXT), EM_UNDO, 0, 0);
    EXPECT_TRUE(Becomes(IDC_TEXT, L"ver end")) << "one step back";
    SendMessageW(Control(IDC_TEXT), EM_SETSEL, 3, 3);
    Type(IDC_TEXT, L"b");
    ASSERT_TRUE(list());
    PressKey(IDC_TEXT, VK_ESCAPE);
    EXPECT_TRUE(closed());
    Type(IDC_TEXT, L" VE");
    ASSERT_TRUE(list());
    PressKey(IDC_TEXT, VK_DOWN);
    PressKey(IDC_TEXT, VK_DOWN);
    PressKey(IDC_TEXT, VK_RETURN);
    EXPECT_TRUE(Becomes(IDC_TEXT, L"verb verbose end")) << ::testing::PrintToString(Text(IDC_TEXT));
    EXPECT_TRUE(closed());
}

}  // namespace
}  // namespace verbatix::test
