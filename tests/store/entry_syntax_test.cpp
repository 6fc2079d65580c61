#include "store/entry_syntax.h"

#include <gtest/gtest.h>

#include "store/export_text.h"

namespace verbatix {
namespace {

TEST(EntryValue, ReadsWhatTheFileHolds) {
    const struct {
        const wchar_t* value;
        bool isEntry;
        unsigned modifier;
        unsigned key;
        const wchar_t* text;
    } rows[] = {
        {L"Ctrl+C=a=b<E<N<D|", true, 4, 67, L"a=b"},
        {L"Ctrl+C=a=b", true, 4, 67, L"a=b"},
        {L"R-Win+A=x<E<N<D|", true, 1, 65, L"x"},
        {L"Ctrl-Alt+NUM_+=x", true, 2, 107, L"x"},
        {L"Alt-Gr+F12==<E<N<D|", true, 3, 123, L"="},
        {L"L-Mouse+Space=  two blanks  <E<N<D|", true, 7, 32, L"  two blanks  "},
        {L"L-Win+A=<E<N<D|", true, 0, 65, L""},
        {L"L-Win+A=<E<N<D|<E<N<D|", true, 0, 65, L"<E<N<D|"},
        {L"L-Win+A=a<E<N<D|b", true, 0, 65, L"a<E<N<D|b"},
        {L"L-Win+A=x<E<N<D", true, 0, 65, L"x<E<N<D"},
        {L"L-Win+=x", true, 0, 0, L"x"},
        {L"L-Win+==x", true, 0, 0, L"=x"},
        {L"L-Win+Unknown=x", true, 0, L'U', L"x"},
        {L"<E<N<D|", false, 0, 0, L""},
        {L"Shift+A=x", false, 0, 0, L""},
        {L"Ctrl-Shift+A=x", false, 0, 0, L""},
        {L" Ctrl+A=x", false, 0, 0, L""},
        {L"Ctrl A=x", false, 0, 0, L""},
        {L"Ctrl", false, 0, 0, L""},
        {L"Ctrl+A", false, 0, 0, L""},
        {L"", false, 0, 0, L""},
    };
    for (const auto& row : rows) {
        const std::optional<StoredEntry> entry = ReadEntryValue(row.value);
        ASSERT_EQ(entry.has_value(), row.isEntry) << row.value;
        if (!entry) continue;
        EXPECT_EQ(entry->modifier, row.modifier) << row.value;
        EXPECT_EQ(entry->key, row.key) << row.value;
        EXPECT_EQ(entry->text, row.text) << row.value;
    }
    EXPECT_EQ(ReadEntryValue(L"Alt+A=" + std::wstring(100000, L'x'))->text.size(), 4095u - 6);
}

TEST(EntryValue, ACutMarkerIsNotText) {
    constexpr std::size_t kRead = kTextLimit - 1;
    for (std::size_t kept = 0; kept <= kEndMarker.size(); ++kept) {
        const std::wstring text(kRead - 6 - kept, L'x');
        const std::wstring value = L"Alt+A=" + text + std::wstring(kEndMarker);
        EXPECT_EQ(ReadEntryValue(value.substr(0, kRead))->text, text) << kept;
        EXPECT_EQ(ReadEntryValue(value)->text, text) << kept;
    }
    const std::wstring shorter = std::wstring(kRead - 9, L'x') + L"<E";
    EXPECT_EQ(ReadEntryValue(L"Alt+A=" + shorter)->text, shorter) << "was not cut";
}

TEST(EntryValue, EveryHotkeyComesBack) {
    EntryList list;
    for (unsigned modifier = 0; modifier < 10; ++modifier) {
        for (const unsigned key : {0u, 9u, 32u, 65u, 107u, 112u, 123u, 124u, 186u, 220u, 255u}) {
            AddEntry(list, L" =x\\n ", L"", key, modifier, -1, 0);
        }
    }
    EntryList again;
    for (const auto& [position, slot] : list) {
        ASSERT_TRUE(ParseStoredEntry(again, FormatStoredValue(slot.current), L"", 0));
        EXPECT_EQ(again.at(position).current.keyCode, slot.current.keyCode);
        EXPECT_EQ(again.at(position).current.modifier, slot.current.modifier);
        EXPECT_STREQ(again.at(position).current.text, L" =x\\n ");
    }
}

TEST(EntryKey, HasThreeDigitsAndMore) {
    for (const unsigned number : {0u, 7u, 999u, 1000u, 123456u}) {
        EXPECT_EQ(EntryNumberOfKey(EntryKey(number)), number);
    }
    EXPECT_EQ(EntryKey(1000), L"text_1000");
    EXPECT_EQ(EntryNumberOfKey(L"TEXT_012"), 12u);
    for (const wchar_t* key : {L"", L"text_", L"text_7", L"text_0007", L"text_-01", L"text_00a",
                               L"xext_007", L"text_4294967296", L"text_99999999999999"}) {
        EXPECT_FALSE(EntryNumberOfKey(key)) << key;
    }
}

TEST(Export, LayoutReadsBackInKeyOrder) {
    ExportSink sink;
    sink.textLines = L"text_000=Ctrl+A=a  \r\ntext_001=Alt+B=b=c\r\n";
    sink.labelLines = L"text_000= label\r\n";
    sink.orderLines = L"text_001=7\r\n";
    const std::wstring text = FormatExport(sink);
    EXPECT_EQ(text,
              L"[list_text]\r\ntext_000=Ctrl+A=a  \r\ntext_001=Alt+B=b=c\r\n"
              L"[list_label]\r\ntext_000= label\r\n[list_order]\r\ntext_001=7\r\n");
    const std::vector<EntryTexts> entries = ParseExport(text);
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].value, L"Ctrl+A=a  ");
    EXPECT_EQ(entries[0].label, L" label");
    EXPECT_EQ(entries[0].order, L"");
    EXPECT_EQ(entries[1].value, L"Alt+B=b=c");
    EXPECT_EQ(entries[1].order, L"7");
}

TEST(Export, LongerNumbersComeLater) {
    const auto entries =
        ParseExport(L"[list_text]\ntext_1000=d\ntext_999=c\ntext_10000=e\ntext_002=a\ntext_100=b\n");
    std::wstring order;
    for (const EntryTexts& entry : entries) order += entry.value;
    EXPECT_EQ(order, L"abcde");
}

TEST(Export, ReadsHostileTexts) {
    EXPECT_TRUE(ParseExport(L"").empty());
    EXPECT_TRUE(ParseExport(L"[list_text").empty());
    EXPECT_TRUE(ParseExport(L"text_000=Ctrl+A=a\n[").empty());
    EXPECT_TRUE(ParseExport(L"[list_label]\ntext_000=x").empty());
    const auto entries = ParseExport(L"[List_Text]\ntext_001=b\nnothing\n=\ntext_000=a\ntext_000=twice");
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[1].value, L"a");
    EXPECT_EQ(entries[2].value, L"b");
}

}  // namespace
}  // namespace verbatix
