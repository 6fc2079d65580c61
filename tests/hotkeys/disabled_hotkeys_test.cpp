#include "hotkeys/disabled_hotkeys.h"

#include <gtest/gtest.h>
#include <windows.h>

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
    constexpr std::size_t kRead = kDisabledHotkeysSize - 1;
    std::wstring value = L"Ctrl+F2|";
    while (value.size() < kRead - 7) value += L"Ctrl+F12|";
    value += L"Ctrl+F12|";
    ASSERT_TRUE(value.substr(0, kRead).ends_with(L"|Ctrl+F1"));
    const DisabledHotkeys whole = {{4, {{VK_F2, true}, {VK_F12, true}}}};
    EXPECT_EQ(ParseDisabledHotkeys(value.substr(0, kRead)), whole);
    EXPECT_EQ(ParseDisabledHotkeys(value), whole);
}

}  // namespace
}  // namespace verbatix
