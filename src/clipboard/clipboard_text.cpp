#include "clipboard/clipboard_text.h"

#include <climits>
#include <cstring>

#include "base/text.h"
#include "clipboard/clipboard_session.h"

namespace verbatix {

bool ClipboardPutText(std::wstring_view text, Stay stay) {
    const std::string_view bytes(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t));
    return FillClipboard(kClipboardPatience, [&] {
        // Room for the terminator and one character more: some readers look one beyond the terminator.
        GiveToClipboard(CF_UNICODETEXT, MakeClipboardBlock(bytes, bytes.size() + 4));
        MarkForHistory(stay);
        return true;
    });
}

bool ClipboardGetText(std::wstring& text) {
    std::wstring found;
    const bool isRead = ReadClipboard([&] {
        const bool isWide = IsClipboardFormatAvailable(CF_UNICODETEXT) != FALSE;
        const LockedBlock block(GetClipboardData(isWide ? CF_UNICODETEXT : CF_TEXT));
        found = isWide ? WideTextOf(block.Bytes()) : AnsiTextOf(block.Bytes());
        return static_cast<bool>(block);
    });
    if (isRead) text = std::move(found);
    return isRead;
}

bool ClearClipboard() {
    return FillClipboard(kClipboardPatience, [] {
        // Announced without data, and nobody is there to deliver it: programs that ask get none.
        SetClipboardData(CF_TEXT, nullptr);
        SetClipboardData(CF_UNICODETEXT, nullptr);
        return true;
    });
}

std::wstring WideTextOf(std::string_view bytes) {
    std::wstring text((bytes.size() + 1) / sizeof(wchar_t), L'\0');
    if (!bytes.empty()) std::memcpy(text.data(), bytes.data(), bytes.size());
    text.resize(wcsnlen(text.data(), text.size()));
    return text;
}

std::wstring AnsiTextOf(std::string_view bytes) {
    bytes = bytes.substr(0, bytes.find('\0'));
    return FromBytes(bytes.substr(0, INT_MAX), CP_ACP);
}

}  // namespace verbatix
