#include "store/list_file.h"
#include "store/list_exchange.h"

#include <gtest/gtest.h>

#include "base/language.h"
#include "store/entry_moves.h"
#include "store/entry_syntax.h"
#include "store/ini_files.h"
#include "store/profile.h"
#include "store/settings.h"
#include "store/settings_commit.h"

namespace verbatix::test {
namespace {

void WriteList(std::wstring_view count, std::wstring_view lines) {
    WriteBytes(settingsPath, Utf16File(L"[Program]\r\nlistcmd_count=" + std::wstring(count) +
                                       L"\r\n[list_text]\r\n" + std::wstring(lines)));
}

EntryList Loaded() {
    nextEntryNumber = 0;
    EntryList list;
    LoadList(list, Client());
    return list;
}

void ExpectSameEntries(const EntryList& list, const EntryList& again) {
    ASSERT_EQ(list.size(), again.size());
    for (const auto& [position, slot] : list) {
        EXPECT_STREQ(again.at(position).current.text, slot.current.text);
        EXPECT_STREQ(again.at(position).current.label, slot.current.label);
        EXPECT_FALSE(Differ(again.at(position).current, slot.current)) << position;
        EXPECT_FALSE(IsDirty(again.at(position))) << position;
    }
}

// Odd ones and the edges: the marker, nothing at all, as much as there is room for.
EntryList HostileList() {
    nextEntryNumber = 0;
    EntryList list;
    AddOddEntries(list);
    for (const wchar_t* text : {L"", L"<E<N<D|", L"a<E<N<D|b", L"x<E<N<D|<E<N<D|"})
        AddEntry(list, text, L" both ", 0, 0, -1, INT_MAX);
    AddEntry(list, std::wstring(4000, L'x'), std::wstring(255, L'"'), 0xba, 2, -1, INT_MIN);
    return list;
}

TEST(ListFile, HostileTextsComeBackByteForByte) {
    // A new file, an old one in the ANSI code page, and one that holds other things.
    for (const char* file :
         {"", "[Program]\r\nlistcmd_count=0\r\n[list_text]\r\n",
          "; a comment\r\n\r\n[list_text]\r\n; another\r\nforeign=1\r\n\r\n[list_label]\r\n"}) {
        const SettingsFolder folder;
        if (*file) WriteBytes(settingsPath, file);
        EntryList list = HostileList();
        SaveList(list, Client(), false, false);
        EXPECT_EQ(asked.message, L"");
        ExpectSameEntries(list, Loaded());
    }
}

TEST(ListFile, TheFileLooksAsItAlwaysDid) {
    const SettingsFolder folder;
    nextEntryNumber = 999;
    EntryList list;
    AddEntry(list, L"a=b ", L"Label", 67, 4, -1, 3);
    AddEntry(list, L"", L"", 116, 9, -1, -1);
    SaveList(list, Client(), false, false);
    EXPECT_EQ(ReadBytes(settingsPath),
              Utf16File(L"[list_text]\r\ntext_999=Ctrl+C=a=b <E<N<D|\r\ntext_1000=R-Mouse+F5=<E<N<D|\r\n"
                        L"[list_order]\r\ntext_999=3\r\ntext_1000=-1\r\n"
                        L"[list_label]\r\ntext_999=Label\r\ntext_1000=\r\n"
                        L"[Program]\r\nlistcmd_count=2\r\n"));
    EXPECT_EQ(asked.calls, L"views.");
}

TEST(SaveList, WritesOnlyWhatChanged) {
    const SettingsFolder folder;
    EntryList list = HostileList();
    SaveList(list, Client(), false, false);
    WriteProfileText(L"list_text", L"text_000", L"touched");
    CopyText(list.at(1).current.text, L"new text", kTextLimit);
    list.at(1).current.kind = list.at(2).current.kind = list.at(2).current.groupRef = 3;
    SaveList(list, Client(), true, true);
    EXPECT_EQ(asked.calls, L"new text?refresh.");
    EXPECT_EQ(ReadProfileText(L"list_text", L"text_000", 100), L"touched");
    EXPECT_TRUE(ReadProfileText(L"list_text", L"text_001", 100).ends_with(L"=new text<E<N<D|"));
}

TEST(LoadList, AFileWithoutACountGetsTheFirstRunList) {
    const SettingsFolder folder;
    EXPECT_TRUE(Loaded().empty()) << "there is none";
    EXPECT_EQ(ReadProgramNumber(L"listcmd_count", -1), 0);
    DeleteFileW(settingsPath.c_str());
    SetFirstRunList(
        L"[list_text]\ntext_001=Ctrl+B=second \x20ac\ntext_000=L-Win+A=first\ntext_002=nonsense\n"
        L"[list_label]\ntext_000=One\n[list_order]\ntext_001=9\n");
    EntryList list = Loaded();
    SetFirstRunList({});
    ASSERT_EQ(list.size(), 2u);
    EXPECT_STREQ(list.at(0).current.text, L"first");
    EXPECT_STREQ(list.at(0).current.label, L"One");
    EXPECT_STREQ(list.at(1).current.text, L"second \x20ac");
    EXPECT_EQ(list.at(1).current.order, 9);
    ExpectSameEntries(list, Loaded());
    SetFirstRunList(L"[list_text]\ntext_000=L-Win+A=first\n");
    settingsPath = folder.File(L"missing\\Verbatix.ini");
    EXPECT_TRUE(HasUnsaved(Loaded())) << "it could not be saved";
    SetFirstRunList({});
}

TEST(LoadList, BelievesNoCountBoundsItsMemoryAndCutsWhatIsTooLong) {
    const SettingsFolder folder;
    const std::pair<const wchar_t*, std::size_t> rows[] = {
        {L"300000000", 2}, {L"-5", 0}, {L"many", 0}, {L"1", 1}, {L"11", 2}};
    for (const auto& [count, entries] : rows) {
        WriteList(count, L"text_000=Ctrl+A=a\r\ntext_010=Ctrl+B=b\r\n");
        EXPECT_EQ(Loaded().size(), entries) << count;
    }
    std::wstring lines;
    for (unsigned number = 0; number < 30; ++number) lines += EntryKey(number) + L"=Alt+A=x\r\n";
    WriteList(L"2000000", lines);
    mostEntries = 20;
    EntryList list = Loaded();
    EXPECT_EQ(list.size(), 20u);
    AddEntry(list, L"new", L"", 65, 4, -1, 0);
    SaveList(list, Client(), false, false);
    mostEntries = 40000;
    list = Loaded();
    ASSERT_EQ(list.size(), 31u) << "nothing is lost";
    EXPECT_STREQ(list.at(29).current.text, L"x");
    EXPECT_STREQ(list.at(30).current.text, L"new");

    WriteList(L"2", L"text_000=Ctrl+A=" + std::wstring(1000000, L'x') +
                        L"\r\ntext_001=Ctrl+B=b\r\n[list_label]\r\ntext_000=" + std::wstring(300, L'l') +
                        L"\r\n[list_order]\r\ntext_000=12345678901234567890\r\n");
    list = Loaded();
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(std::wcslen(list.at(0).current.text), 4095u - 7);
    EXPECT_EQ(std::wcslen(list.at(0).current.label), 255u);
    EXPECT_EQ(list.at(0).current.order, INT_MAX);
}

TEST(LoadList, WhatItDoesNotUnderstandKeepsItsKeyAndItsPlace) {
    const SettingsFolder folder;
    WriteList(L"6",
              L"text_000=Ctrl+A=a\r\ntext_001=Crtl+B=mine<E<N<D|\r\ntext_002=Ctrl+C=c\r\n"
              L"text_003=\r\ntext_005=Ctrl+D=d\r\n[list_label]\r\ntext_001=kept\r\n");
    EntryList list = Loaded();
    EXPECT_EQ(MisreadLines(), 1);
    ASSERT_EQ(list.size(), 3u);
    MoveEntry(list, 0, 2);
    AddEntry(list, L"new", L"", 65, 4, -1, 0);
    list.at(3).current.order = 9;
    for (const bool changedOnly : {true, false}) {
        SaveList(list, Client(), false, changedOnly);
        EXPECT_EQ(ReadProfileText(L"list_text", L"text_001", 100), L"Crtl+B=mine<E<N<D|");
        EXPECT_EQ(ReadProfileText(L"list_label", L"text_001", 100), L"kept");
        const EntryList again = Loaded();
        ASSERT_EQ(again.size(), 4u);
        for (const auto& [position, slot] : list) {
            EXPECT_STREQ(again.at(position).current.text, slot.current.text);
            EXPECT_EQ(again.at(position).current.number, slot.current.number);
        }
    }
    // The slip of the hand is mended.
    WriteProfileText(L"list_text", L"text_001", L"Ctrl+B=mine<E<N<D|");
    list = Loaded();
    EXPECT_EQ(MisreadLines(), 0);
    ASSERT_EQ(list.size(), 5u);
    EXPECT_STREQ(list.at(1).current.text, L"mine");
}

TEST(LoadList, AFileThatCannotBeReadIsNotWrittenOverAndReadLater) {
    const SettingsFolder folder;
    SetFirstRunList(L"[list_text]\ntext_000=Ctrl+B=first run\n");
    WriteList(L"1", L"text_000=Ctrl+A=mine\r\n");
    const std::string original = ReadBytes(settingsPath);
    UniqueFile lock = OpenShared(settingsPath, 0);
    EntryList list = Loaded();
    EXPECT_TRUE(list.empty());
    EXPECT_TRUE(IsListUnread());
    EXPECT_EQ(asked.message, L"") << "the window tells of it";
    AddEntry(list, L"new", L"", 65, 4, -1, 0);
    SaveList(list, Client(), true, false);
    EXPECT_NE(asked.message, L"");
    EXPECT_FALSE(LoadUnreadList(list, Client()));
    lock.Reset();
    SaveList(list, Client(), true, false);
    EXPECT_EQ(ReadBytes(settingsPath), original) << "it has not been read yet";
    EXPECT_TRUE(LoadUnreadList(list, Client()));
    EXPECT_FALSE(IsListUnread());
    SetFirstRunList({});
    ASSERT_EQ(list.size(), 2u);
    EXPECT_STREQ(list.at(0).current.text, L"mine");
    ExpectSameEntries(list, Loaded());
}

TEST(ImportListFile, AppendsOnYesAndSavesAll) {
    SetLanguageTexts({{128, L"Add them?"}, {129, L"Entries"}, {1301, L"{1} left out"}}, {});
    for (const int answer : {IDNO, IDCANCEL, IDYES}) {
        const SettingsFolder folder;
        const std::wstring other = folder.File(L"other.ini");
        WriteBytes(settingsPath, "");
        WriteBytes(other,
                   Utf16File(L"[list_text]\r\ntext_1023=Ctrl+C=last<E<N<D|\r\ntext_1024=Ctrl+D=beyond\r\n"
                             L"text_005=Ctrl+A=first  <E<N<D|\r\ntext_006=no entry\r\ntext_007=xx\r\n"
                             L"[list_label]\r\ntext_005=Label\r\n[list_order]\r\ntext_005=-3\r\n"));
        EntryList list;
        AddEntry(list, L"mine", L"", 65, 0, -1, 0);
        ImportListFile(list, Client(answer), other);
        const std::wstring beyond = answer == IDYES ? L"1 left out|Verbatix|48" : L"";
        EXPECT_EQ(asked.message, L"Entries: 3\n\nAdd them?|Verbatix|3" + beyond);
        EXPECT_EQ(settingsPath, folder.File(L"Verbatix.ini"));
        if (answer != IDYES) {
            EXPECT_EQ(list.size(), 1u);
            continue;
        }
        EXPECT_TRUE(asked.calls.ends_with(L"refresh.")) << asked.calls;
        EXPECT_EQ(FilesIn(folder.File(L"Backup")).size(), 1u) << "how it was before";
        ASSERT_EQ(list.size(), 3u);
        EXPECT_STREQ(list.at(1).current.text, L"first  ");
        EXPECT_STREQ(list.at(2).current.text, L"last");
        ExpectSameEntries(list, Loaded());
    }
    SetLanguageTexts({}, {});
}

TEST(ImportListFile, TakesWhatEditorsSave) {
    const std::wstring text = L"[list_text]\r\ntext_000=Ctrl+A=\xe4\xf6";
    const std::string utf8 = ToBytes(text, CP_UTF8);
    std::string bigEndian = Utf16File(text);
    for (std::size_t i = 0; i < bigEndian.size(); i += 2) std::swap(bigEndian[i], bigEndian[i + 1]);
    wchar_t temporary[MAX_PATH] = {};
    GetEnvironmentVariableW(L"TMP", temporary, MAX_PATH);
    for (const std::string& bytes :
         {utf8, "\xef\xbb\xbf" + utf8, bigEndian, Utf16File(text), ToBytes(text, CP_ACP)}) {
        const SettingsFolder folder;
        const std::wstring other = folder.File(L"other.ini");
        WriteBytes(other, bytes);
        SetEnvironmentVariableW(L"TMP", folder.Path().c_str());
        EntryList list;
        ImportListFile(list, Client(), other);
        EXPECT_EQ(FilesIn(folder.Path()).size(), 3u) << "two files and the backups: no copy is left";
        ASSERT_EQ(list.size(), 1u) << testing::PrintToString(bytes);
        EXPECT_STREQ(list.at(0).current.text, L"\xe4\xf6");
        EXPECT_EQ(ReadBytes(other), bytes) << "it stays as it was";
    }
    SetEnvironmentVariableW(L"TMP", temporary);
}

}  // namespace
}  // namespace verbatix::test
