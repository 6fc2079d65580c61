// The program's own HTML writer and reader for scripts:
//     put TEXT    puts the text, with {u} for a few characters of two to four UTF-8 bytes
//     get FILE    writes the fragment as UTF-8 into the file, and closes the message box
// The exit code is 0 when the clipboard took the HTML or had some.
#include <windows.h>

#include <shellapi.h>

#include <string>

#include "base/handle.h"
#include "base/text.h"
#include "clipboard/html_clipboard.h"
#include "support/message_box.h"

using namespace verbatix;

static int Get(const wchar_t* path) {
    std::wstring fragment;
    std::wstring raw;
    const bool found = HtmlClipboardGet(fragment, raw);
    const std::string bytes = ToBytes(fragment, CP_UTF8);
    const UniqueFile file(CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    DWORD written = 0;
    WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    return found ? 0 : 1;
}

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    if (count != 3) return 1;
    if (std::wstring_view(arguments[1]) == L"put") {
        std::wstring text = arguments[2];
        ReplaceAll(text, L"{u}", L"\x00e4\x20ac\x4e2d\xd83d\xde00");
        return HtmlClipboardPut(text) ? 0 : 1;
    }
    test::MessageBoxAnswer closed;
    return Get(arguments[2]);
}
