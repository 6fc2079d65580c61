#include "store/entry_syntax.h"

#include <gtest/gtest.h>

#include "store/export_text.h"

namespace verbatix {
namespace {

TEST(EntryValue, ReadsWhatTheFileHolds) {
    const std::tuple<const wchar_t*, unsigned, unsigned, const wchar_t*> rows[] = {
        {L"Ctrl+C=a=b<E<N<D|", 4, 67, L"a=b"},
        {L"Ctrl-Alt+NUM_+=x", 2, 107, L"x"},
        {L"L-Mouse+Space=  x  <E<N<D|", 7, 32, L"  x  "},
        {L"L-Win+A=<E<N<D|<E<N<D|", 0, 65, L"<E<N<D|"},
        {L"L-Win+A=a<E<N<D|b", 0, 65, L"a<E<N<D|b"},
        {L"L-Win+A=x<E<N<D", 0, 65, L"x<E<N<D"},
        {L"L-Win+Unknown=x", 0, L'U', L"x"},
    };
    for (const auto& [value, modifier, key, text] : rows) {
        const std::optional<StoredEntry> entry = ReadEntryValue(value);
        ASSERT_TRUE(entry) << value;
        EXPECT_EQ(entry->modifier, modifier) << value;
        EXPECT_EQ(entry->key, key) << value;
        EXPECT_EQ(entry->text, text) << value;
    }
    for (const wchar_t* value : {L"", L"<E<N<D|", L"Shift+A=x", L"Ctrl-Shift+A=x", L" Ctrl+A=x",
                                 L"Ctrl A=x", L"Ctrl", L"Ctrl+A"}) {
        EXPECT_FALSE(ReadEntryValue(value)) << value;
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

TEST(EntryKey, HasThreeDigitsAndMore) {
    EXPECT_EQ(EntryNumberOfKey(L"TEXT_012"), 12u);
    EXPECT_EQ(EntryNumberOfKey(L"text_999999999"), 999999999u);
    for (const wchar_t* key :
         {L"", L"text_7", L"text_0007", L"text_-01", L"text_1000000000", L"text_4294967296"}) {
        EXPECT_FALSE(EntryNumberOfKey(key)) << key;
    }
}

TEST(Export, ReadsOrdinaryAndHostileTextsInKeyOrder) {
    const auto shown = [](std::wstring_view text) {
        std::wstring result;
        for (const EntryTexts& entry : ParseExport(text)) {
            result += L"(" + entry.value + L"," + entry.label + L"," + entry.order + L")";
        }
        return result;
    };
    const wchar_t* const rows[][2] = {
        {L"[list_text]\r\ntext_000=Ctrl+A=a  \r\ntext_001=Alt+B=b=c\r\n"
         L"[list_label]\r\ntext_000= label\r\n[list_order]\r\ntext_001=7\r\n",
         L"(Ctrl+A=a  , label,)(Alt+B=b=c,,7)"},
        {L"[list_text]\ntext_1000=d\ntext_999=c\ntext_10000=e\ntext_002=a", L"(a,,)(c,,)(d,,)(e,,)"},
        {L"[list_text]=x\ntext_000=a", L"(a,,)"},
        {L"[list_text", L""},
        {L"[list_label]\ntext_000=x", L""},
    };
    for (const auto& row : rows) EXPECT_EQ(shown(row[0]), row[1]);
    const auto entries = ParseExport(L"[List_Text]\ntext_001=b\nnothing\n=\ntext_000=a\ntext_000=twice");
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[1].value + entries[2].value, L"ab");
}

}  // namespace
}  // namespace verbatix
