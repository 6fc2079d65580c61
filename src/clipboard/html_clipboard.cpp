#include "clipboard/html_clipboard.h"

#include <windows.h>

#include <algorithm>
#include <climits>

#include "base/text.h"
#include "clipboard/clipboard_session.h"
#include "clipboard/html_format.h"
#include "hotkeys/foreground.h"

namespace verbatix {

static UINT HtmlFormat() {
    static const UINT format = RegisterClipboardFormatW(L"HTML Format");
    return format;
}

bool HtmlClipboardPut(std::wstring_view text, Stay stay) {
    // The format ends at the first zero, so nothing behind one could be read.
    const std::string fragment = ToBytes(text.substr(0, text.find(L'\0')).substr(0, INT_MAX), CP_UTF8);
    const std::string data = BuildHtmlData(fragment);
    if (data.empty()) return false;
    return FillClipboard(kClipboardPatience, [&] {
        if (!GiveToClipboard(HtmlFormat(), MakeClipboardBlock(data, data.size() + 4))) return false;
        // Readers of plain text get the UTF-8 bytes under the ANSI format, on purpose: it is the source
        // text of the entry, byte for byte as it stands in the HTML.
        GiveToClipboard(CF_TEXT, MakeClipboardBlock(fragment, fragment.size() + 4));
        MarkForHistory(stay);
        return true;
    });
}

// The code page that the data is shown in and its header read by. Where each byte is one character of the
// ANSI code page, that page; elsewhere the data's own encoding.
static UINT RawCodePage() {
    CPINFO info = {};
    return GetCPInfo(CP_ACP, &info) && info.MaxCharSize == 1 ? CP_ACP : CP_UTF8;
}

static void ShowData(std::size_t size, const std::wstring& raw) {
    // A screen shows a few thousand characters, and laying out megabytes of them would take minutes.
    constexpr std::size_t kShown = 0xFFFF;
    const std::wstring text = Format(L"%d\n%ls", static_cast<int>(size), raw.substr(0, kShown).c_str());
    ShowBoxInFront(nullptr, text, L"");
}

bool HtmlClipboardGet(std::wstring& fragment, std::wstring& raw) {
    std::string data;
    std::size_t size = 0;
    const bool found = ReadClipboard([&] {
        const LockedBlock block(GetClipboardData(HtmlFormat()));
        size = block.Bytes().size();
        data = block.Bytes().substr(0, INT_MAX);
        return static_cast<bool>(block);
    });
    data.resize(std::min(data.size(), data.find('\0')));
    if (found) raw = FromBytes(data, RawCodePage());
    ShowData(size, raw);
    if (!found) return false;
    // The offsets count bytes, and the fragment's bytes are UTF-8 whatever the ANSI code page is.
    if (const auto bytes = FindHtmlFragment(data, raw)) fragment = FromBytes(*bytes, CP_UTF8);
    return true;
}

}  // namespace verbatix
