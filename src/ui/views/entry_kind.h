// What an entry is, for the picture before it. Pure; nothing fails.
#pragma once

#include <string_view>

namespace verbatix {

// Also the order of the pictures.
enum class EntryKind { kText, kCommand, kPicture, kCharacters, kGroup, kHotkey };
constexpr int kEntryKinds = 6;

// The kind of an entry with that text: kGroup and kHotkey are no entry's.
EntryKind KindOfEntry(std::wstring_view text);

}  // namespace verbatix
