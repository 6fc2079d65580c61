#include "store/list_damage.h"

#include <gtest/gtest.h>

#include "base/language.h"
#include "store/ini_files.h"
#include "store/list_restore.h"
#include "store/profile.h"
#include "store/settings.h"
#include "store/settings_commit.h"

namespace verbatix::test {
namespace {

std::wstring FullText(int entries) {
    std::wstring text = Format(L"[Program]\r\ntopmost=1\r\nlistcmd_count=%d\r\n", entries);
    for (const wchar_t* section : {L"list_text", L"list_order", L"list_label"}) {
        text += Format(L"[%ls]\r\n", section);
        const bool isText = section[5] == L't';
        for (int i = 0; i < entries; ++i)
            text += Format(isText ? L"text_%03d=Ctrl+A=entry %d<E<N<D|\r\n" : L"text_%03d=%d\r\n", i, i);
    }
    return text;
}

// A start as the program makes it: the write test comes before the list is read.
EntryList Start() {
    WriteProgramText(L"TestIni", L"1");
    nextEntryNumber = 0;
    EntryList list;
    LoadList(list, Client());
    return list;
}

TEST(ListDamage, IsToldByWhatIsMissing) {
    const std::wstring full = FullText(20);
    EXPECT_FALSE(LooksDamaged(ShapeOfList(full)));
    EXPECT_FALSE(LooksDamaged(ShapeOfList(full + L"\r\n; end\r\n")));
    EXPECT_FALSE(LooksDamaged(ShapeOfList(L"[Program]\r\n"))) << "no list yet";
    // Wherever it was cut: not a whole line, not a whole section, not all entries.
    const std::size_t listStart = full.find(L"[list_text]");
    for (std::size_t size = listStart; size < full.size(); ++size) {
        const ListShape shape = ShapeOfList(full.substr(0, size));
        // Only the last line feed may be missing without a loss.
        ASSERT_TRUE(LooksDamaged(shape) || size == full.size() - 1) << size;
        ASSERT_TRUE(HoldsMore(ShapeOfList(full), shape) || size + 12 > full.size()) << size;
    }
    EXPECT_FALSE(HoldsMore(ShapeOfList(full), ShapeOfList(full)));
}

TEST(ListDamage, IsAskedAboutAndMended) {
    SetLanguageTexts(
        {{1360, L"Found {1}."}, {1361, L"Kept in {1}."}, {1362, L"Yes {1} {2}."}, {1363, L"No {1} {2}."}},
        {});
    SetFirstRunList(L"[list_text]\ntext_000=Ctrl+B=first run\n");
    const std::string full = Utf16File(FullText(20));
    const std::string older = Utf16File(FullText(15));
    const struct {
        const char* what;
        std::string found;
        int answer;
        std::size_t before, after;  // entries
    } rows[] = {
        {"empty", "", IDYES, 0, 20},
        {"only the mark", "\xff\xfe", IDYES, 0, 20},
        {"only blank lines", Utf16File(L"\r\n\r\n"), IDYES, 0, 20},
        {"torn", full.substr(0, 401), IDYES, 5, 20},
        {"torn, the backup chosen", full.substr(0, 401), IDNO, 5, 15},
        {"torn, nothing chosen", full.substr(0, 401), IDCANCEL, 5, 5},
        {"gone", "-", IDYES, 0, 20},
        {"labels gone", full.substr(0, full.size() - 300), IDYES, 20, 20},
    };
    for (const auto& row : rows) {
        const SettingsFolder folder;
        settings = {};
        const std::wstring backup = folder.File(L"Backup\\2026-03-07_04-05-06_Verbatix.ini");
        CreateDirectoryW(folder.File(L"Backup").c_str(), nullptr);
        WriteBytes(backup, older);
        WriteBytes(settingsPath + L".bak", full);
        if (row.found != "-") WriteBytes(settingsPath, row.found);
        EntryList list = Start();
        EXPECT_EQ(list.size(), row.before) << row.what;
        EXPECT_EQ(asked.message, L"");
        EXPECT_EQ(AskAboutDamage(list, Client(row.answer)), row.answer != IDCANCEL) << row.what;
        const bool isBackupBetter = row.before < 15;
        EXPECT_EQ(asked.flags & MB_TYPEMASK, static_cast<UINT>(isBackupBetter ? MB_YESNOCANCEL : MB_YESNO))
            << row.what;
        const auto tells = [](const std::wstring& text) {
            return asked.message.find(text) != std::wstring::npos;
        };
        EXPECT_TRUE(tells(Format(L"Found %d.", static_cast<int>(row.before)))) << asked.message;
        EXPECT_TRUE(tells(L"Yes 20 " + settingsPath + L".bak.")) << asked.message;
        EXPECT_EQ(tells(L"No 15 " + backup), isBackupBetter) << asked.message;
        EXPECT_EQ(list.size(), row.after) << row.what;
        EXPECT_EQ(Start().size(), row.after) << row.what;
        EXPECT_EQ(settings.topmost, row.answer == IDCANCEL ? 0 : 1) << "options come back too";
        EXPECT_FALSE(AskAboutDamage(list, Client())) << "asked once";
        EXPECT_EQ(ReadBytes(settingsPath + L".bak"), full) << "not written over by the damage";
        // What was found is kept, where there was anything.
        bool isKept = false;
        for (const std::wstring& name : FilesIn(folder.File(L"Backup")))
            isKept |= ReadBytes(folder.File(L"Backup\\" + name)) == row.found;
        EXPECT_EQ(isKept, row.found.size() > 1) << row.what;
    }
    SetFirstRunList({});
    SetLanguageTexts({}, {});
    settings = {};
}

}  // namespace
}  // namespace verbatix::test
