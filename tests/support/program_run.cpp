#include "support/program_run.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "ids.h"
#include "support/keys.h"
#include "support/mouse.h"
#include "support/wait.h"

namespace verbatix::test {

static constexpr wchar_t kFrameClass[] = L"VerbatixAndCommand";

std::wstring SettingsText(const std::vector<StoredLine>& lines, std::wstring_view programLines) {
    std::wstring texts = L"[list_text]\r\n";
    std::wstring labels = L"[list_label]\r\n";
    std::wstring orders = L"[list_order]\r\n";
    int number = 0;
    for (const StoredLine& line : lines) {
        const std::wstring key = Format(L"text_%03d=", number);
        texts += key + line.hotkey + L"=" + line.text + L"<E<N<D|\r\n";
        labels += key + line.label + L"\r\n";
        orders += key + Format(L"%d\r\n", number);
        ++number;
    }
    // The first of two equal keys counts, so what the test says comes first.
    return L"[Program]\r\n" + std::wstring(programLines) +
           Format(L"listcmd_count=%d\r\nlng=1\r\nhide_info=1\r\ntray_info=1\r\n", number) + texts + labels +
           orders;
}

ProgramRun::ProgramRun(std::wstring_view programName) : programName_(programName) {
    ParkMouse();
    CopyFileW(HelperPath(L"..\\Verbatix.exe").c_str(), folder_.File(programName_).c_str(), FALSE);
}

bool ProgramRun::WriteSettings(std::wstring_view text) const {
    return WriteBytes(SettingsFile(), Utf16File(text));
}

void ProgramRun::StartPlain(std::wstring_view arguments) {
    process_ =
        std::make_unique<Process>(L"\"" + folder_.File(programName_) + L"\" " + std::wstring(arguments));
}

bool ProgramRun::Start(std::wstring_view arguments) {
    StartPlain(L"\"-ini:" + SettingsFile() + L"\" " + std::wstring(arguments));
    return *process_ && WaitFor([&] { return MainDialog() != nullptr; }, 15000);
}

int ProgramRun::Exit() {
    PostMessageW(MainDialog(), WM_COMMAND, CMD_EXIT, 0);
    const auto code = process_->WaitForExit();
    return code ? static_cast<int>(*code) : -1;
}

HWND ProgramRun::Frame() const {
    return process_->WaitForWindow(kFrameClass, 0);
}

HWND ProgramRun::MainDialog() const {
    // Message boxes are dialogs too; the main dialog is the one with the list, and its menu bar comes
    // after the hook.
    return FindTopWindow(L"#32770", [this](HWND window) {
        return ProcessOf(window) == process_->Id() && GetDlgItem(window, IDC_LIST) && GetMenu(window);
    });
}

std::string ProgramRun::Diagnostics() const {
    constexpr LPARAM kMenuBar = 0xAFFE0000;
    PostMessageW(MainDialog(), WM_COMMAND, CMD_DIAGNOSTICS, kMenuBar);
    std::string bytes;
    WaitFor([&] { return !(bytes = ReadBytes(folder_.File(L"Verbatix_diagnostics.txt"))).empty(); });
    std::erase_if(bytes, [](char byte) { return byte <= 0 && byte != '\n'; });  // English, in UTF-16
    return bytes;
}

bool ProgramRun::IsThrough() const {
    // Whether a field counts as changed is of no use to the program.
    const HWND field = GetDlgItem(MainDialog(), IDC_FILTER);
    DWORD_PTR isModified = 0;
    const auto asks = [&] {
        return SendMessageTimeoutW(field, EM_GETMODIFY, 0, 0, SMTO_NORMAL, 2000, &isModified) != 0;
    };
    if (!WaitFor(asks, 20000)) return false;
    const bool next = isModified == 0;
    PostMessageW(field, EM_SETMODIFY, next, 0);
    return WaitFor([&] { return asks() && (isModified != 0) == next; }, 20000);
}

bool ProgramRun::ChangeTrayIcon(DWORD message) const {
    NOTIFYICONDATAW data = {};
    data.cbSize = NOTIFYICONDATAW_V1_SIZE;
    data.hWnd = Frame();
    data.uID = IDI_VERBATIX;
    return Shell_NotifyIconW(message, &data) != FALSE;
}

static Process StartTarget(std::wstring_view title) {
    ParkMouse();
    return Process(L"\"" + HelperPath(L"target_window.exe") + L"\" " + std::wstring(title));
}

Target::Target(std::wstring_view title) : process_(StartTarget(title)) {
    window_ = process_.WaitForVisibleWindow(L"VerbatixTestTarget");
    EXPECT_TRUE(window_) << "exit code: " << process_.WaitForExit(0).value_or(STILL_ACTIVE);
    edit_ = GetDlgItem(window_, 1);
    EXPECT_TRUE(Activate() && SettlesInFront(window_));
}

void Target::SetText(std::wstring_view text) const {
    SendMessageW(edit_, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(std::wstring(text).c_str()));
    SendMessageW(edit_, EM_SETSEL, text.size(), static_cast<LPARAM>(text.size()));
}

int Target::QuietHeight() const {
    RECT edit;
    GetWindowRect(edit_, &edit);
    return edit.bottom + 4;
}

bool Target::Activate() const {
    return WaitFor([&] {
        if (GetForegroundWindow() == window_) return true;
        SetForegroundWindow(window_);
        return false;
    });
}

}  // namespace verbatix::test
