#include "clipboard/format_names.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "base/text.h"

namespace verbatix {
namespace {

TEST(ClipboardFormatName, NamesAFormatAndFindsItByName) {
    UINT count = 0;
    std::map<UINT, std::wstring> formats = {{128, L"OWNER DISPLAY"},
                                            {129, L"PRIVATE TEXT"},
                                            {130, L"PRIVATE BITMAP"},
                                            {131, L"PRIVATE METAFILE PICTURE"},
                                            {142, L"PRIVATE ENHANCED METAFILE"},
                                            {512, L"PRIVATE FIRST"},
                                            {767, L"PRIVATE LAST"},
                                            {768, L"GDI OBJECT FIRST"},
                                            {1023, L"GDI OBJECT LAST"}};
    for (const wchar_t* text :
         {L"TEXT", L"BITMAP", L"METAFILE PICTURE", L"SYLK", L"DIF", L"TIFF", L"OEM TEXT", L"DIB",
          L"PALETTE", L"PEN DATA", L"RIFF", L"WAVE DATA", L"UNICODE TEXT", L"ENHANCED METAFILE",
          L"DROP FILE LIST", L"LOCALE", L"DIBV5", L"MAX"}) {
        formats[++count] = text;
    }
    wchar_t name[kFormatNameCapacity];
    for (const auto& [format, text] : formats) {
        EXPECT_EQ(ClipboardFormatName(format, name), 0u);
        EXPECT_EQ(name, text);
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
