#include "store/settings_merge.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <map>

#include "base/text.h"
#include "store/stored_texts.h"
#include "store/text_file.h"

namespace verbatix {

namespace {

bool IsListValue(const IniValue& value) {
    const std::wstring section = FoldKey(value.section);
    return section == kTextSection || section == kLabelSection || section == kOrderSection ||
           (section == L"program" && FoldKey(value.key) == kCountKey);
}

using Values = std::map<std::pair<std::wstring, std::wstring>, std::wstring>;

Values ByName(const IniValues& values) {
    Values named;
    for (const IniValue& value : values)
        named.emplace(std::pair(FoldKey(value.section), FoldKey(value.key)), value.value);
    return named;
}

}  // namespace

SettingsText DecodeSettings(std::string_view bytes) {
    SettingsText decoded{DecodeByMark(bytes), EncodingByMark(bytes), true};
    switch (decoded.encoding) {
        case Encoding::kUtf16: decoded.isExact = bytes.size() % sizeof(wchar_t) == 0; break;
        case Encoding::kAnsi: decoded.isExact = ToBytes(decoded.text, CP_ACP) == bytes; break;
        default: break;
    }
    return decoded;
}

SettingsBytes EncodeSettings(std::wstring_view text, Encoding encoding) {
    if (encoding == Encoding::kAnsi && FitsAnsiCodePage(text)) return {ToBytes(text, CP_ACP), true};
    return {AsUtf16File(text), false};
}

bool HasList(std::wstring_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const IniLine line = ReadIniLine(text, at);
        at = line.next;
        if (line.kind == IniLine::kSection && FoldKey(line.name) == kTextSection) return true;
        if (line.kind == IniLine::kKey && FoldKey(line.name) == kCountKey) return true;
    }
    return false;
}

IniValues ListValues(std::wstring_view text) {
    IniValues values = AllIniValues(text);
    std::erase_if(values, [](const IniValue& value) { return !IsListValue(value); });
    return values;
}

MergedText MergeSettings(const std::optional<std::wstring>& known,
                         const std::optional<std::wstring>& found) {
    if (!found) return {known.value_or(std::wstring()), false};
    if (!known || *known == *found || !HasList(*known)) return {*found, false};
    if (!HasList(*found)) return {SetIniValues(*known, AllIniValues(*found)), false};
    const IniValues list = ListValues(*known);
    if (ByName(list) == ByName(ListValues(*found))) return {*found, false};
    return {SetIniValues(*found, list), true};
}

}  // namespace verbatix
