// The clipboard as another process fills, reads and blocks it.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

#include "support/process.h"

namespace verbatix::test {

enum class ClipboardRecordKind : DWORD {
    bytes,      // a global block
    announced,  // no data: promised by the owner, or refused to the reader
    bitmap,     // a GDI bitmap of 3 by 2 pixels; its bytes are not told
};

struct ForeignFormat {
    UINT format = 0;
    std::string bytes;
    ClipboardRecordKind kind = ClipboardRecordKind::bytes;
};

// The file in which a test and the helper clipboard_owner tell each other about formats.
std::string FormatRecords(const std::vector<ForeignFormat>& formats);
std::vector<ForeignFormat> ParseRecords(const std::string& file);

// The bytes of a text, terminator included, as CF_UNICODETEXT holds them.
std::string WideBytes(std::wstring_view text);

// Another process replaces the clipboard's content by these formats, in this order, and ends. False when
// it could not.
bool PutForeign(const std::vector<ForeignFormat>& formats);

// The same by a process that stays, for formats announced without data, and may hang; it runs until the
// object goes.
Process PutForeignAndStay(const std::vector<ForeignFormat>& formats, bool hangs = false);

// What another process finds on the clipboard, in its order; formats that Windows makes of others
// (synthesised ones) are among them.
std::vector<ForeignFormat> ReadForeign();

// The bytes that another process finds under that format; "(absent)" when there is no such format.
std::string ReadForeign(UINT format);

// The text that this process finds; "(none)" when there is none.
std::wstring ClipboardText();

// A process that holds the clipboard open until the object goes.
Process HoldClipboard();

}  // namespace verbatix::test
