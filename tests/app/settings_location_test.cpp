#include "app/settings_location.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <thread>

#include "app/command_line.h"
#include "base/handle.h"
#include "base/text.h"
#include "store/settings_path.h"
#include "support/folder.h"
#include "support/process.h"
#include "support/wait.h"

namespace verbatix {
namespace {

using test::Folder;

TEST(AsksForPortableUse, LooksAtTheFileNameOnly) {
    const struct {
        const wchar_t* path;
        bool asked;
    } rows[] = {
        {L"C:\\x\\tool_p.exe", true},
        {L"C:\\x\\Tool_Portable.exe", true},
        {L"C:\\x\\VERBATIX_PORT.EXE", true},
        {L"C:\\x\\_pad.exe", false},
        {L"C:\\x_p\\Verbatix.exe", false},
        {L"C:\\x\\Verbatix.exe", false},
        {L"a_p.exe", true},
        {L"_p.exe", false},
        {L"", false},
        {L"C:\\", false},
    };
    for (const auto& row : rows) EXPECT_EQ(AsksForPortableUse(row.path), row.asked) << row.path;
}

// A world in which the paths beginning with one of `writable` can be written; tells what was done.
struct Disk {
    std::wstring writable;  // separated by "|"
    std::wstring done;
    bool plain = true;

    SettingsProbe Probe() {
        return {[this](const std::wstring& path, int secondsBack) {
                    done += Format(L"test %ls %d\n", path.c_str(), secondsBack);
                    for (const std::wstring_view prefix : Split(writable, L'|')) {
                        if (!prefix.empty() && path.starts_with(prefix)) return true;
                    }
                    return false;
                },
                [this](const std::wstring&) { return plain; },
                [this](const std::wstring& path) { done += L"create " + path + L"\n"; }};
    }
};

std::wstring Shown(const SettingsChoice& choice) {
    std::wstring text = choice.path + (choice.portableRequested ? L" requested" : L"") +
                        (choice.portableActive ? L" active" : L"");
    for (const StartMessage& message : choice.messages) {
        text +=
            (message.kind == StartMessage::kWriteError ? L" | write " : L" | extension ") + message.path;
    }
    return text;
}

constexpr wchar_t kAppFile[] = L"D:\\Roaming\\Verbatix\\Verbatix.ini";

TEST(DecideSettingsPath, ChoosesTheFileOfThisRun) {
    const std::wstring app = kAppFile;
    const struct {
        const wchar_t* module;
        const wchar_t* ini;
        const wchar_t* writable;
        std::wstring choice;
    } rows[] = {
        {L"C:\\Tools\\Verbatix.exe", L"", L"C:|D:", app},
        {L"C:\\Tools\\Verbatix.exe", L"", L"", app + L" | write " + app},
        {L"C:\\Tools\\V_p.exe", L"", L"C:", L"C:\\Tools\\Verbatix.ini requested active"},
        {L"C:\\V_p.exe", L"", L"C:", L"C:\\Verbatix.ini requested active"},
        {L"C:\\Tools\\V_p.exe", L"", L"D:", app + L" requested | write C:\\Tools\\Verbatix.ini"},
        {L"C:\\Tools\\V_p.exe", L"", L"",
         app + L" requested | write C:\\Tools\\Verbatix.ini | write " + app},
        // In the temporary folder, written in another case, nothing stays beside the program.
        {L"C:\\USERS\\temp\\x\\V_p.exe", L"", L"C:|D:", app + L" requested"},
        {L"C:\\Users\\Temp\\V_p.exe", L"", L"C:|D:", app + L" requested"},
        {L"C:\\Users\\Temporary\\V_p.exe", L"", L"C:",
         L"C:\\Users\\Temporary\\Verbatix.ini requested active"},
        {L"\\\\server\\share\\V_p.exe", L"", L"\\\\", L"\\\\server\\share\\Verbatix.ini requested active"},
        // A named file is taken as it stands when the program folder can be written.
        {L"C:\\Tools\\Verbatix.exe", L"E:\\my\\list.INI", L"C:", L"E:\\my\\list.INI"},
        {L"C:\\Tools\\V_p.exe", L"x.ini", L"C:", L"x.ini requested"},
        {L"C:\\Users\\Temp\\V.exe", L"x.ini", L"C:", L"x.ini"},
        {L"C:\\Tools\\V_p.exe", L"x.ini", L"D:", app + L" requested | write C:\\Tools\\Verbatix.ini"},
        {L"C:\\Tools\\Verbatix.exe", L"E:\\x.txt", L"D:", app + L" | extension E:\\x.txt"},
        {L"C:\\Tools\\Verbatix.exe", L"E:\\noextension", L"D:", app + L" | extension E:\\noextension"},
        {L"C:\\Tools\\Verbatix.exe", L"E:\\x.ini\\sub", L"D:", app + L" | extension E:\\x.ini\\sub"},
        {L"C:\\Tools\\V_p.exe", L"E:\\x.txt", L"C:",
         L"C:\\Tools\\Verbatix.ini requested active | extension E:\\x.txt"},
        {L"C:\\Tools\\Verbatix.exe", L"ini", L"C:|D:", app},  // three characters name nothing
        {L"", L"", L"D:", app},
    };
    for (const auto& row : rows) {
        Disk disk;
        disk.writable = row.writable;
        SettingsFacts facts;
        facts.modulePath = row.module;
        facts.temporaryFolder = L"C:\\Users\\Temp\\";
        facts.appDataFolder = L"D:\\Roaming";
        facts.iniPathOverride.assign(row.ini);
        EXPECT_EQ(Shown(DecideSettingsPath(facts, disk.Probe())), row.choice)
            << row.module << L" " << row.ini;
    }
}

TEST(DecideSettingsPath, TouchesOnlyWhatItNeeds) {
    const auto done = [](const wchar_t* module, const wchar_t* ini) {
        Disk disk{L"C:|D:", L""};
        DecideSettingsPath({module, L"T:\\", L"D:\\Roaming", ini}, disk.Probe());
        return disk.done;
    };
    EXPECT_EQ(done(L"C:\\t\\V_p.exe", L""), L"test C:\\t\\Verbatix.ini 0\ntest C:\\t\\Verbatix.ini 22\n");
    EXPECT_EQ(done(L"C:\\t\\V.exe", L""),
              L"create D:\\Roaming\\Verbatix\ntest D:\\Roaming\\Verbatix\\Verbatix.ini 22\n");
    EXPECT_EQ(done(L"C:\\t\\V.exe", L"E:\\x.ini"), L"test C:\\t\\Verbatix.ini 0\n");
}

TEST(DecideSettingsPath, WantsAPlainFileForPortableUse) {
    Disk disk{L"C:|D:", L"", false};
    EXPECT_EQ(Shown(DecideSettingsPath({L"C:\\t\\V_p.exe", L"T:\\", L"D:\\Roaming", L""}, disk.Probe())),
              std::wstring(kAppFile) + L" requested | write C:\\t\\Verbatix.ini");
}

TEST(DecideSettingsPath, TakesPathsOfAnyLengthAndMissingFacts) {
    Disk disk{L"C:", L""};
    const std::wstring deep = L"C:\\" + std::wstring(30000, L'd');
    EXPECT_EQ(DecideSettingsPath({deep + L"\\V_p.exe", L"", deep, L""}, disk.Probe()).path,
              deep + L"\\Verbatix.ini");
    EXPECT_EQ(Shown(DecideSettingsPath({L"\\\\s\\V_p.exe", L"", L"", L""}, disk.Probe())),
              L"\\Verbatix\\Verbatix.ini requested | write \\\\s\\Verbatix.ini | write "
              L"\\Verbatix\\Verbatix.ini");
}

TEST(WriteTest, LeavesAFreshStampInAUnicodeFile) {
    const Folder folder;
    const std::wstring path = folder.File(L"new.ini");
    const auto stamp = [&] { return GetPrivateProfileIntW(L"Program", L"TestIni", -1, path.c_str()); };
    ASSERT_TRUE(WriteTest(path, 0));
    const UINT first = stamp();
    ASSERT_TRUE(WriteTest(path, 22));
    EXPECT_LT(stamp(), first);
    EXPECT_EQ(test::ReadBytes(path).substr(0, 4), std::string("\xff\xfe[\0", 4));

    // What an existing file holds, marked or not, stays.
    const std::wstring old = folder.File(L"old.ini");
    ASSERT_TRUE(test::WriteBytes(old, "[Other]\r\na=1\r\n"));
    EXPECT_TRUE(WriteTest(old, 0));
    EXPECT_EQ(GetPrivateProfileIntW(L"Other", L"a", 0, old.c_str()), 1U);
    EXPECT_EQ(test::ReadBytes(old)[0], '[');
}

TEST(WriteTest, MakesAMarkedFileReadableFirst) {
    const Folder folder;
    const std::wstring path = folder.File(L"notepad.ini");
    ASSERT_TRUE(test::WriteBytes(path, "\xef\xbb\xbf[Program]\r\nlistcmd_count=1\r\n"));
    ASSERT_TRUE(WriteTest(path, 0));
    EXPECT_TRUE(test::ReadBytes(path).starts_with(test::Utf16File(L"[Program]\r\nlistcmd_count=1\r\n")));
}

TEST(WriteTest, FailsWhereNothingCanBeWritten) {
    const Folder folder;
    // Held open for reading only: even an administrator, whom no attribute stops, cannot write then.
    const std::wstring held = folder.File(L"held.ini");
    ASSERT_TRUE(test::WriteBytes(held, "[Program]\r\nTestIni=1\r\n"));
    const UniqueFile reader(
        CreateFileW(held.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(reader);
    EXPECT_FALSE(WriteTest(held, 0));
    EXPECT_FALSE(WriteTest(folder.Path(), 0));
    EXPECT_FALSE(WriteTest(folder.File(L"missing\\x.ini"), 0));
    EXPECT_FALSE(WriteTest(folder.File(std::wstring(40000, L'n') + L".ini"), 0));
}

// Reads and closes the message box with that title while the calling thread stands in it.
class BoxReader {
  public:
    explicit BoxReader(const wchar_t* title)
        : thread_([this, title] {
              test::WaitFor([&] {
                  const HWND box = FindWindowW(L"#32770", title);
                  const HWND label = box ? GetDlgItem(box, 0xFFFF) : nullptr;
                  if (!label) return false;
                  text_ = test::WindowText(label);
                  PostMessageW(box, WM_CLOSE, 0, 0);
                  return true;
              });
          }) {}
    std::wstring Text() {
        thread_.join();
        return text_;
    }

  private:
    std::wstring text_;
    std::thread thread_;
};

std::vector<std::wstring> openedPages;

TEST(ReportWriteError, SpeaksOnceAndOpensThePage) {
    openWebPage = [](const std::wstring& address) { openedPages.push_back(address); };
    BoxReader box(L"Write Error");
    ReportWriteError(L"C:\\locked\\Verbatix.ini");
    EXPECT_EQ(box.Text(), L"C:\\locked\\Verbatix.ini");
    EXPECT_TRUE(writeErrorShown);
    ReportWriteError(L"C:\\other.ini");  // would stand until the test times out
    ASSERT_EQ(openedPages.size(), 1U);
    EXPECT_EQ(openedPages[0].substr(openedPages[0].find(L'?')), L"?seite=faq-Verbatix&faq=29");
}

TEST(WriteErrorPage, HasAnAddressBeforeAnyLanguageIsLoaded) {
    EXPECT_EQ(WriteErrorPage(true), L"https://verbatix.example/?seite=faq-Verbatix&faq=29");
    EXPECT_EQ(WriteErrorPage(false), L"https://verbatix.example/en/?seite=faq-Verbatix&faq=29");
}

TEST(ChooseSettingsPath, FindsTheApplicationDataFile) {
    wchar_t appData[MAX_PATH];
    ASSERT_NE(GetEnvironmentVariableW(L"APPDATA", appData, MAX_PATH), 0U);
    startOptions.iniPathOverride = L"";
    EXPECT_EQ(ChooseSettingsPath(), 1);
    EXPECT_EQ(LowerCase(settingsPath), LowerCase(appData + std::wstring(L"\\Verbatix\\Verbatix.ini")));
    EXPECT_GT(GetPrivateProfileIntW(L"Program", L"TestIni", 0, settingsPath.c_str()), 1000000U);
    EXPECT_FALSE(portableActive);
    EXPECT_FALSE(writeErrorShown);
}

TEST(ChooseSettingsPath, RefusesANameWithoutIniAndGoesOn) {
    startOptions.iniPathOverride = L"C:\\list.txt";
    BoxReader box(L"Error");
    ChooseSettingsPath();
    EXPECT_EQ(box.Text(), L"The File Extension must be *.ini:\nC:\\list.txt");
    EXPECT_TRUE(LowerCase(settingsPath).ends_with(L"\\verbatix\\verbatix.ini"));
}

TEST(ChooseSettingsPath, MakesANamedFileReadable) {
    const Folder folder;
    const std::wstring named = folder.File(L"named.ini");
    ASSERT_TRUE(test::WriteBytes(named, "\xef\xbb\xbf[Program]\r\nlistcmd_count=1\r\n"));
    startOptions.iniPathOverride = named;
    ChooseSettingsPath();
    startOptions.iniPathOverride.clear();
    DeleteFileW(test::HelperPath(L"Verbatix.ini").c_str());  // written by the test beside the program
    EXPECT_EQ(settingsPath, named);
    EXPECT_EQ(test::ReadBytes(named), test::Utf16File(L"[Program]\r\nlistcmd_count=1\r\n"));
}

}  // namespace
}  // namespace verbatix
