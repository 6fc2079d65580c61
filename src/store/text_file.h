// Text files as bytes: read and written whole, in whatever encoding an editor has saved them. Failures are
// return values.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/handle.h"

namespace verbatix {

// Opens for reading without keeping anybody from the file.
UniqueFile OpenForReading(const std::wstring& path);

// The whole file; nothing when it cannot be opened, is larger than `limit` bytes or cannot be read.
// GetLastError() is ERROR_FILE_TOO_LARGE for one that is too large.
std::optional<std::string> ReadWholeFile(const std::wstring& path, std::int64_t limit);

// Writes the file and flushes it. `disposition` as for CreateFileW. False when any of it failed.
bool WriteWholeFile(const std::wstring& path, DWORD disposition, std::string_view bytes);

enum class Encoding { kUtf16, kUtf16BigEndian, kUtf8, kAnsi };

// By the mark at the beginning of `bytes`; without one kAnsi.
Encoding EncodingByMark(std::string_view bytes);

// Valid UTF-8 that is not also plain ASCII: a text in any other code page hardly ever looks so.
bool IsUtf8WithoutMark(std::string_view bytes);

// The text without its mark: UTF-16 and UTF-8 by the mark, all else by the ANSI code page.
std::wstring DecodeByMark(std::string_view bytes);

// The same, but UTF-8 is also recognised without a mark.
std::wstring DecodeText(std::string_view bytes);

// `text` as UTF-16LE with byte-order mark.
std::string AsUtf16File(std::wstring_view text);

}  // namespace verbatix
