#include "clipboard/html_format.h"

#include <cstdio>

#include "base/text.h"

namespace verbatix {

namespace {

constexpr std::string_view kHead =
    "Version:0.9\r\n"
    "StartHTML:00000000\r\n"
    "EndHTML:00000000\r\n"
    "StartFragment:00000000\r\n"
    "EndFragment:00000000\r\n"
    "StartSelection:00000000\r\n"
    "EndSelection:00000000\r\n"
    "<html><body>\r\n<!--StartFragment-->";
constexpr std::string_view kTail = "<!--EndFragment--></body>\r\n</html>";
constexpr std::size_t kLargestOffset = 99999999;

// Writes the number over the eight zeros behind the key.
void FillIn(std::string& data, std::string_view key, std::size_t offset) {
    char digits[16];
    const int length = std::snprintf(digits, sizeof digits, "%08u", static_cast<unsigned>(offset));
    data.replace(data.find(key) + key.size(), 8, digits, static_cast<std::size_t>(length));
}

}  // namespace

std::string BuildHtmlData(std::string_view fragment) {
    if (fragment.size() > kLargestOffset - kHead.size() - kTail.size()) return {};
    std::string data(kHead);
    data.append(fragment).append(kTail);
    // The markers are searched in the whole text: a fragment that holds an end marker of its own ends
    // there for the readers. The header keeps its place and is always found first.
    const std::size_t start = data.find("<!--StartFrag") + std::string_view("<!--StartFragment-->").size();
    const std::size_t end = data.find("<!--EndFrag");
    FillIn(data, "StartHTML:", data.find("<html>"));
    FillIn(data, "EndHTML:", data.size());
    FillIn(data, "StartFragment:", start);
    FillIn(data, "EndFragment:", end);
    FillIn(data, "StartSelection:", start);
    FillIn(data, "EndSelection:", end);
    return data;
}

std::wstring_view ValueAfterKey(std::wstring_view source, std::wstring_view key,
                                std::wstring_view endDelimiter) {
    const std::size_t found = source.find(key);
    if (found == std::wstring_view::npos) return {};
    const std::size_t start = found + key.size();
    const std::size_t end = source.find(endDelimiter, found + 1);
    if (end == std::wstring_view::npos || end < start) return {};
    return source.substr(start, end - start);
}

static std::wstring WithoutReturns(std::wstring_view value) {
    std::wstring result(value);
    ReplaceAll(result, L"\r", L"");
    return result;
}

std::optional<std::string_view> FindHtmlFragment(std::string_view data, std::wstring_view raw) {
    std::wstring_view start = ValueAfterKey(raw, L"StartFragment:", L"\r");
    std::wstring_view end = ValueAfterKey(raw, L"EndFragment:", L"\r");
    // One digit cannot be an offset behind a header, so the lines may have ended by LF alone.
    if (start.size() < 2) {
        start = ValueAfterKey(raw, L"StartFragment:", L"\n");
        end = ValueAfterKey(raw, L"EndFragment:", L"\n");
    }
    const std::wstring digits = WithoutReturns(start);
    if (digits.size() < 2) return std::nullopt;
    const int from = ToInt(digits);
    const int to = ToInt(WithoutReturns(end));
    if (from < 0 || to < from || static_cast<std::size_t>(to) >= data.size()) return std::nullopt;
    return data.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from));
}

}  // namespace verbatix
