#include "paste/text/path_breaks.h"

#include <gtest/gtest.h>

namespace verbatix {
namespace {

// "#" stands for a backslash-n that is kept a part of its path, "|" for one that stays a line break.
TEST(KeepPaths, TellsAPathFromALineBreak) {
    const wchar_t* const rows[] = {
        L"run:C:#ew\\tool.exe",
        L"runx:C:\\tools#ew#ext.exe a|\"D:#otes\\b.exe\" C:#ew",
        L"runa:C:\\my texts#otes.exe|calc",
        L"cmd:\"C:\\a.b#ew.exe\" x",
        L"runX:\"C:\\a.exe#ow",  // quoted to the end: no command begins there
        L"cpy:%AppData%#otes.exe %cpy%",
        L"img:\\\\server#ew.png",
        L"runA:tool /out=C:#ew.txt|tool",
        L"runx:notepad|calc|C:\\x.exe|E:\\y",
        L"runx:C:\\a.exe one|notepad",
        L"runx:C:\\tools|C:\\more",
        L"runx:C:\\tools\\|\\\\server\\x",
        L"runx:C:\\tools|",
        L"runx:50% off|now",
        L"runx:12:|30",
        // Nothing runs.
        L"C:|ew",
        L"replace:C:|ew=>x",
        L"sys:Txt2Key:C:|ew",
        L"run",
        L"",
    };
    for (const std::wstring_view row : rows) {
        std::wstring stored, kept;
        for (const wchar_t c : row) {
            stored += c == L'#' || c == L'|' ? L"\\n" : std::wstring(1, c);
            kept += c == L'#' ? L"\\%nc%n" : c == L'|' ? L"\\n" : std::wstring(1, c);
        }
        EXPECT_EQ(KeepPaths(stored), kept);
        EXPECT_TRUE(PathBreaks(kept).empty()) << testing::PrintToString(kept);
    }
}

}  // namespace
}  // namespace verbatix
