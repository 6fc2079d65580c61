#include "hotkeys/disabled_hotkeys.h"

#include <gtest/gtest.h>

namespace verbatix {
namespace {

TEST(DisabledHotkeys, RoundTrip) {
    const DisabledHotkeys disabled = {{0, {{103, true}, {112, true}}},
                                      {3, {{116, true}}},
                                      {4, {{65, true}, {186, true}, {220, true}}},
                                      {9, {{32, true}, {107, true}}}};
    const std::wstring value = FormatDisabledHotkeys(disabled);
    EXPECT_EQ(value,
              L"L-Win+NUM_7|L-Win+F1|Alt-Gr+F5|Ctrl+A|Ctrl+\xba|Ctrl+^|R-Mouse+Space|R-Mouse+NUM_+|");
    EXPECT_EQ(ParseDisabledHotkeys(value), disabled);
}

TEST(DisabledHotkeys, WritesOnlyWhatIsSet) {
    EXPECT_EQ(FormatDisabledHotkeys({{4, {{65, false}, {66, true}}}, {5, {}}}), L"Ctrl+B|");
    EXPECT_EQ(FormatDisabledHotkeys({}), L"");
    EXPECT_EQ(FormatDisabledHotkeys({{10, {{65, true}}}, {11, {{65, true}}}}), L"L-Win+A|L-Win+A|");
}

TEST(DisabledHotkeys, ReadsWhatAHandLeftBehind) {
    const struct {
        const wchar_t* value;
        DisabledHotkeys disabled;
    } rows[] = {
        {L"", {}},
        {L"|||", {}},
        {L"Ctrl", {}},
        {L"Ctrl+", {}},
        {L"Ctrl+A", {{4, {{65, true}}}}},
        {L"R-Win+A|", {{1, {{45, true}}}}},  // the key behind an unmoved "R-Win" is its "-"
        {L"Ctrl+||", {}},                    // F13 is named by the separator
        {L"Shift+A|", {{0, {{L'h', true}}}}},
        {L"CtrlA|Alt+B", {{5, {{66, true}}}}},
        {L"Ctrl+A|Ctrl+A|", {{4, {{65, true}}}}},
    };
    for (const auto& row : rows) EXPECT_EQ(ParseDisabledHotkeys(row.value), row.disabled) << row.value;
}

TEST(DisabledHotkeys, ACutItemDisablesNothing) {
    std::wstring value;
    while (value.size() < kDisabledHotkeysSize - 1) value += L"Ctrl+F12|";
    value.resize(1016);
    value += L"Ctrl+F12|";  // read up to "Ctrl+F1"
    EXPECT_EQ(ParseDisabledHotkeys(value.substr(0, 1023)), (DisabledHotkeys{{4, {{123, true}}}}));
    EXPECT_EQ(ParseDisabledHotkeys(value), (DisabledHotkeys{{4, {{123, true}}}}));
}

}  // namespace
}  // namespace verbatix
