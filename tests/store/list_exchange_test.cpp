#include "store/list_exchange.h"

#include <gtest/gtest.h>

#include "base/language.h"
#include "base/text.h"
#include "store/ini_files.h"

namespace verbatix::test {
namespace {

class ListExchange : public testing::Test {
  protected:
    ListExchange() {
        SetLanguageTexts({{66, L"closed"}, {129, L"found"}, {1076, L"nothing"}, {1300, L"large"}}, {});
    }
    ~ListExchange() override { SetLanguageTexts({}, {}); }

    const SettingsFolder folder_;
    const std::wstring other_ = folder_.File(L"other.txt");
    EntryList list_;
    ListClient client_ = Client();
};

TEST_F(ListExchange, OddEntriesComeBackTheSame) {
    EntryList list;
    AddOddEntries(list);
    ASSERT_TRUE(WriteExportFile(other_, ExportText(list, AllPositions(list))));
    nextEntryNumber = 0;
    settingsPath = folder_.File(L"missing\\Verbatix.ini");
    ImportListFile(list_, client_, other_);
    ASSERT_EQ(list_.size(), list.size());
    for (const auto& [position, slot] : list) {
        EXPECT_STREQ(list_.at(position).current.text, slot.current.text);
        EXPECT_FALSE(Differ(list_.at(position).current, slot.current)) << position;
    }
    EXPECT_TRUE(asked.message.starts_with(L"found: 15\n")) << asked.message;
    EXPECT_TRUE(HasUnsaved(list_)) << "the next save tries again";
}

TEST_F(ListExchange, ExportsChosenEntriesInTheOrderAskedFor) {
    AddEntry(list_, L"one ", L"L", 'A', 4, -1, 5);
    AddEntry(list_, L"", L"", 'B', 4, -1, 6);
    AddEntry(list_, L"three", L"", 'C', 4, -1, -7);
    int count = 0;
    EXPECT_EQ(ExportText(list_, {2, 1, 9, 0}, &count),
              L"[list_text]\r\ntext_000=Ctrl+C=three\r\ntext_001=Ctrl+A=one \r\n"
              L"[list_label]\r\ntext_000=\r\ntext_001=L\r\n[list_order]\r\ntext_000=-7\r\ntext_001=5\r\n");
    EXPECT_EQ(ReadBytes(settingsPath), "") << "an export leaves the file alone";
    EXPECT_EQ(count, 2) << "neither the deleted one nor one that does not exist";
}

TEST_F(ListExchange, BadFilesAreToldOfAndChangeNothing) {
    const std::wstring entry = L"[list_text]\r\ntext_000=Ctrl+A=\x416\r\n";
    std::string noise(3 << 20, '\0');
    for (std::size_t i = 0; i < noise.size(); ++i) noise[i] = static_cast<char>(i * i >> 7);
    const struct {
        const char* name;
        std::string bytes;
        const wchar_t* message;  // how it begins
    } rows[] = {
        {"empty", "", L"nothing\n"},
        {"binary", noise, L"nothing\n"},
        {"other text", "Dear all,\r\ntext_000=Ctrl+A=x\r\n", L"nothing\n"},
        {"half a character", Utf16File(entry) + "x", L"found: 1\n"},
        {"UTF-8", ToBytes(entry, CP_UTF8), L"found: 1\n"},
        {"50 MB", std::string(50 << 20, 'x'), L"large\n"},
    };
    AddEntry(list_, L"mine", L"", 'A', 0, -1, 0);
    client_ = Client(IDNO);
    for (const auto& row : rows) {
        asked.message.clear();
        ASSERT_TRUE(WriteBytes(other_, row.bytes));
        ImportListFile(list_, client_, other_);
        EXPECT_TRUE(asked.message.starts_with(row.message)) << row.name << asked.message;
        EXPECT_EQ(list_.size(), 1u);
        EXPECT_EQ(ReadBytes(settingsPath), "");
    }
    asked.message.clear();
    ImportListFile(list_, client_, folder_.File(L"missing.txt"));
    EXPECT_TRUE(asked.message.starts_with(L"closed:\n" + folder_.File(L"missing.txt")));
}

}  // namespace
}  // namespace verbatix::test
