#include "clipboard/format_names.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "base/text.h"

namespace verbatix {
namespace {

TEST(ClipboardFormatName, NamesAFormatAndFindsItByName) {
    const std::pair<UINT, const wchar_t*> rows[] = {
        {1, L"TEXT"},
        {2, L"BITMAP"},
        {3, L"METAFILE PICTURE"},
        {4, L"SYLK"},
        {5, L"DIF"},
        {6, L"TIFF"},
        {7, L"OEM TEXT"},
        {8, L"DIB"},
        {9, L"PALETTE"},
        {10, L"PEN DATA"},
        {11, L"RIFF"},
        {12, L"WAVE DATA"},
        {13, L"UNICODE TEXT"},
        {14, L"ENHANCED METAFILE"},
        {15, L"DROP FILE LIST"},
        {16, L"LOCALE"},
        {17, L"DIBV5"},
        {18, L"MAX"},
        {128, L"OWNER DISPLAY"},
        {129, L"PRIVATE TEXT"},
        {130, L"PRIVATE BITMAP"},
        {131, L"PRIVATE METAFILE PICTURE"},
        {142, L"PRIVATE ENHANCED METAFILE"},
        {512, L"PRIVATE FIRST"},
        {767, L"PRIVATE LAST"},
        {768, L"GDI OBJECT FIRST"},
        {1023, L"GDI OBJECT LAST"},
    };
    wchar_t name[kFormatNameCapacity];
    for (const auto& [format, text] : rows) {
        EXPECT_EQ(ClipboardFormatName(format, name), 0u);
        EXPECT_STREQ(name, text);
        CopyText(name, LowerCase(text));
        EXPECT_EQ(ClipboardFormatName(0, name), format) << text;
    }
    const UINT own = RegisterClipboardFormatW(L"Somebody's own");
    EXPECT_EQ(ClipboardFormatName(own, name), 0u);
    EXPECT_STREQ(name, L"Somebody's own");
    EXPECT_EQ(ClipboardFormatName(0, name), 0u) << "registered names are not searched";
    EXPECT_EQ(ClipboardFormatName(600, name), 0u);
    EXPECT_STREQ(name, L"");
    EXPECT_EQ(ClipboardFormatName(0, name), 0u);
}

}  // namespace
}  // namespace verbatix
