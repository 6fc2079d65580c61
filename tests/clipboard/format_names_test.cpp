#include "clipboard/format_names.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace verbatix {
namespace {

TEST(ClipboardFormatName, NamesStandardAndRegisteredFormats) {
    const std::wstring longName(255, L'n');
    const struct {
        UINT format;
        const wchar_t* name;
    } rows[] = {
        {CF_TEXT, L"TEXT"},
        {CF_BITMAP, L"BITMAP"},
        {CF_DIBV5, L"DIBV5"},
        {18, L"MAX"},
        {CF_DSPTEXT, L"PRIVATE TEXT"},
        {CF_PRIVATEFIRST, L"PRIVATE FIRST"},
        {CF_GDIOBJLAST, L"GDI OBJECT LAST"},
        {19, L""},
        {0x201, L""},
        {0xFFFFFFFF, L""},
        {RegisterClipboardFormatW(L"HTML Format"), L"HTML Format"},
        {RegisterClipboardFormatW(longName.c_str()), longName.c_str()},
    };
    for (const auto& row : rows) {
        wchar_t name[kFormatNameCapacity];
        std::fill(std::begin(name), std::end(name), L'#');
        EXPECT_EQ(ClipboardFormatName(row.format, name), 0u);
        EXPECT_STREQ(name, row.name) << row.format;
    }
}

TEST(ClipboardFormatName, FindsStandardFormatsByName) {
    RegisterClipboardFormatW(L"Registered By Somebody");
    const struct {
        const wchar_t* name;
        UINT format;
    } rows[] = {
        {L"text", CF_TEXT},
        {L"Unicode Text", CF_UNICODETEXT},
        {L"DIBV5", CF_DIBV5},
        {L"max", 18},
        {L"", 0},
        {L"TEX", 0},
        {L"HTML Format", 0},
        {L"Registered By Somebody", 0},
    };
    for (const auto& row : rows) {
        wchar_t name[kFormatNameCapacity];
        CopyText(name, row.name);
        EXPECT_EQ(ClipboardFormatName(0, name), row.format) << row.name;
    }
    wchar_t unterminated[kFormatNameCapacity];
    std::fill(std::begin(unterminated), std::end(unterminated), L'T');
    EXPECT_EQ(ClipboardFormatName(0, unterminated), 0u);
}

}  // namespace
}  // namespace verbatix
