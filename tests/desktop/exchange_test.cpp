// Entries on their way out of the running program and into it.
#include "desktop/program_window.h"
#include "support/desktop.h"

namespace verbatix::test {
namespace {

class Exchange : public ProgramWindow {
  protected:
    Exchange() {
        WaitForClipboard();
        // Inherited by the program: the exchange file of this test is its own.
        SetEnvironmentVariableW(L"TMP", temporary_.Path().c_str());
    }
    void AnswerFileDialog(const std::wstring& path) const {
        HWND box = nullptr;
        HWND name = nullptr;
        ASSERT_TRUE(WaitFor(
            [&] {
                box = DialogOf(run_.Program().Id(), dialog_);
                for (const int id : {0x47c, 0x480}) {
                    if (!name && box) name = GetDlgItem(box, id);
                }
                return name != nullptr;
            },
            20000));
        SendMessageW(name, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
        PostMessageW(box, WM_COMMAND, IDOK, 0);
        ASSERT_TRUE(WaitFor([&] { return !IsWindow(box); }));
    }

    Folder temporary_;
};

constexpr const wchar_t* kExported =
    L"[list_text]\r\ntext_000=Ctrl+Q=one \r\ntext_001=Alt+W=two\r\n"
    L"[list_label]\r\ntext_000=First\r\ntext_001=\r\n[list_order]\r\ntext_000=0\r\ntext_001=1\r\n";

TEST_F(Exchange, AllGoesToTheClipboardAndIntoFilesAndComesBack) {
    Start({{L"Ctrl+Q", L"one ", L"First"}, {L"Alt+W", L"two"}});
    Menu(CMD_COPY_ALL_AS_TEXT);
    EXPECT_TRUE(ClipboardGets(kExported));
    const std::wstring file = temporary_.File(L"my list.txt");
    Menu(CMD_EXPORT_ALL);
    AnswerFileDialog(file);
    EXPECT_TRUE(WaitFor([&] { return ReadBytes(file) == Utf16File(kExported); }));
    Menu(1117);
    AnswerFileDialog(file);
    EXPECT_EQ(Answer(IDYES), L"Entries found: 2\n\nAdd them to your list?");
    EXPECT_TRUE(FileGets(L"listcmd_count=4"));
    EXPECT_TRUE(FileGets(L"text_002=Ctrl+Q=one <E<N<D|"));
    // The exchange file carries them to another run.
    const std::wstring exchange = temporary_.File(L"Verbatix_exchange.txt");
    Menu(1118);
    EXPECT_TRUE(Answer(IDOK).starts_with(L"There is no exchange file yet"));
    Menu(CMD_WRITE_EXCHANGE_FILE);
    ASSERT_TRUE(WaitFor([&] { return !ReadBytes(exchange).empty(); }));
    EXPECT_EQ(run_.Exit(), 1);
    Start({{L"Ctrl+W", L"other"}});
    for (const int answer : {IDNO, IDYES}) {
        EXPECT_TRUE(run_.IsThrough());
        EXPECT_FALSE(FileHolds(L"one <E"));
        Menu(1118);
        EXPECT_TRUE(Answer(answer).starts_with(L"Entries found: 4\n"));
    }
    EXPECT_TRUE(FileGets(L"text_001=Ctrl+Q=one <E<N<D|"));
    // A key that is being typed goes out, and is kept.
    SendMessageW(Control(IDC_KEY), CB_SETEDITSEL, 0, MAKELPARAM(0, -1));
    SendMessageW(Control(IDC_KEY), WM_CHAR, L'r', 0);
    Menu(CMD_COPY_ALL_AS_TEXT);
    EXPECT_TRUE(FileGets(L"+R="));
}

}  // namespace
}  // namespace verbatix::test
