#include "store/entry_uses.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <iterator>

#include "store/settings_path.h"
#include "store/text_file.h"

namespace verbatix {

namespace {

constexpr std::int64_t kLargestFile = 16LL << 20;
// In the year 9999 that function of the system ends which shows a time.
constexpr std::int64_t kLastSecond = 253'000'000'000;
constexpr std::uint32_t kMostUses = 999'999'999;
constexpr std::string_view kHead =
    "; Uses of the entries: hotkey and text as a number, how often, when last (seconds since 1970).\r\n"
    "; Without this file counting begins anew; nothing else is lost.\r\n";

// The hash of Fowler, Noll and Vo: files depend on it.
void Mix(UseKey& hash, unsigned unit) {
    hash = (hash ^ unit) * 0x100000001b3U;
}

// Reads one number and the blank behind it; false when there is none.
template <typename Number>
bool Take(std::string_view& line, Number& number, int base) {
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), number, base);
    if (error != std::errc()) return false;
    line.remove_prefix(static_cast<std::size_t>(end - line.data()));
    if (!line.empty() && line.front() != ' ') return false;
    line.remove_prefix(std::min<std::size_t>(line.size(), 1));
    return true;
}

void ParseLine(UseBook& book, std::string_view line) {
    UseKey key = 0;
    Uses uses;
    const bool isLine = Take(line, key, 16) && Take(line, uses.count, 10) && Take(line, uses.last, 10);
    if (!isLine || uses.count == 0 || uses.last < 0 || uses.last > kLastSecond) return;
    uses.count = std::min(uses.count, kMostUses);
    book[key] = uses;
}

}  // namespace

UseKey UseKeyOf(unsigned keyCode, unsigned modifier, std::wstring_view text) {
    constexpr unsigned kModifiers = 10;
    UseKey hash = 0xcbf29ce484222325U;
    Mix(hash, keyCode & 0xff);
    Mix(hash, modifier < kModifiers ? modifier : 0);
    for (const wchar_t unit : text) Mix(hash, unit);
    return hash;
}

void CountUse(UseBook& book, UseKey key, std::int64_t now) {
    Uses& uses = book[key];
    uses.count = std::min(uses.count + 1, kMostUses);
    uses.last = std::clamp<std::int64_t>(now, 0, kLastSecond);
}

void CarryUses(UseBook& book, const EditedKeys& edited) {
    std::unordered_set<UseKey> before;
    std::unordered_set<UseKey> after;
    for (const auto& [from, to] : edited) {
        before.insert(from);
        after.insert(to);
    }
    for (const auto& [from, to] : edited) {
        const auto old = book.find(from);
        if (from == to || before.count(to) || after.count(from) || old == book.end()) continue;
        const Uses carried = old->second;
        Uses& uses = book[to];
        uses = {std::max(uses.count, carried.count), std::max(uses.last, carried.last)};
    }
}

std::string FormatUses(const UseBook& book, const std::unordered_set<UseKey>& kept) {
    std::string bytes(kHead);
    for (const auto& [key, uses] : book) {
        if (uses.count == 0 || !kept.count(key)) continue;
        char line[64];
        const int length =
            std::snprintf(line, sizeof line, "%016llx %u %lld\r\n", static_cast<unsigned long long>(key),
                          uses.count, static_cast<long long>(uses.last));
        bytes.append(line, static_cast<std::size_t>(length));
    }
    return bytes;
}

UseBook ParseUses(std::string_view bytes) {
    UseBook book;
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        std::string_view line = bytes.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (!line.starts_with(';')) ParseLine(book, line);
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return book;
}

std::wstring UsesPath() {
    return settingsPath + L".uses";
}

UseBook ReadUses() {
    const auto bytes = ReadWholeFile(UsesPath(), kLargestFile);
    return bytes ? ParseUses(*bytes) : UseBook{};
}

}  // namespace verbatix
