#include "clipboard/clipboard_text.h"

#include <climits>
#include <cstring>

#include "base/text.h"
#include "clipboard/clipboard_session.h"

namespace verbatix {

bool ClipboardPutText(std::wstring_view text, Stay stay) {
    ClipboardSession clipboard;
    if (!clipboard) return false;
    EmptyClipboard();
    // Room for the terminator and one character more: some readers look one beyond the terminator.
    const std::string_view bytes(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t));
    GiveToClipboard(CF_UNICODETEXT, MakeClipboardBlock(bytes, bytes.size() + 4));
    MarkForHistory(stay);
    return clipboard.Close();
}

bool ClipboardGetText(std::wstring& text) {
    const ClipboardSession clipboard = ClipboardSession::ForReading();
    if (!clipboard) return false;
    const bool isWide = IsClipboardFormatAvailable(CF_UNICODETEXT) != FALSE;
    const LockedBlock block(GetClipboardData(isWide ? CF_UNICODETEXT : CF_TEXT));
    if (!block) return false;
    text = isWide ? WideTextOf(block.Bytes()) : AnsiTextOf(block.Bytes());
    return true;
}

bool ClearClipboard() {
    ClipboardSession clipboard;
    if (!clipboard) return false;
    EmptyClipboard();
    // Announced without data, and nobody is there to deliver it: programs that ask get none.
    SetClipboardData(CF_TEXT, nullptr);
    SetClipboardData(CF_UNICODETEXT, nullptr);
    return clipboard.Close();
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
