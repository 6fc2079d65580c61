// What the menu decides without a screen: rows, order, tree, columns, place, and the input it must not get.
#include "menu/menu_model.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "base/text.h"
#include "hotkeys/caret_place.h"
#include "menu/menu_handle.h"
#include "menu/menu_input.h"

namespace verbatix {
namespace {

using Texts = std::vector<std::wstring>;

constexpr unsigned kKey = 'W';
constexpr unsigned kCtrlAlt = 2;

Texts LabelsOf(const std::vector<MenuRow>& rows) {
    Texts labels;
    for (const MenuRow& row : rows) labels.push_back(row.label);
    return labels;
}

std::vector<MenuRow> LabelledRows(const Texts& labels) {
    std::vector<MenuRow> rows;
    for (const std::wstring& label : labels) {
        rows.push_back({label, L"text of " + label, false, static_cast<int>(rows.size())});
        rows.back().labelIsMenuLabel = true;
    }
    return rows;
}

TEST(CollectMenuRows, TakesTheEntriesOfTheHotkeyInListOrder) {
    EntryList list;
    const auto add = [&](std::wstring_view text, std::wstring_view label = {}, unsigned key = kKey,
                         unsigned modifier = kCtrlAlt) {
        AddEntry(list, text, label, key, modifier, -1, 7);
    };
    const auto collected = [&](unsigned key, unsigned modifier) {
        return CollectMenuRows(list, key, modifier).value_or(std::vector<MenuRow>());
    };
    add(L"first", L"On");
    add(L"other key", L"", 'X');
    add(L"other modifier", L"", kKey, 4);
    add(L"second", L"2");  // one character is no menu label
    add(L"", L"no text");
    add(L"", L"3");                           // nothing to show
    add(L"semicolon", L"", VK_OEM_1);         // stored sign-extended
    add(L"no such modifier", L"", kKey, 12);  // codes compare as the keyboard hook does
    add(L"no hotkey", L"", 0);
    add(L"charmap:a,,/b, ,&\xd83d\xde00,", L"a label that does not count here", 'C');
    add(L" charmap:a,b", L"", 'C');
    const auto rows = collected(kKey, kCtrlAlt);
    ASSERT_EQ(LabelsOf(rows), (Texts{L"On", L"second", L"no text"}));
    EXPECT_TRUE(rows[0].text == L"first" && rows[0].labelIsMenuLabel && !rows[1].labelIsMenuLabel);
    EXPECT_TRUE(rows[1].order == 7 && rows[1].position == 3 && !rows[1].piece);
    EXPECT_EQ(rows[1].number, list.at(3).current.number);
    EXPECT_EQ(LabelsOf(collected(VK_OEM_1, kCtrlAlt)), Texts{L"semicolon"});
    EXPECT_EQ(LabelsOf(collected(kKey, 0)), Texts{L"no such modifier"});
    EXPECT_TRUE(collected(0, kCtrlAlt).empty());
    const auto pieces = collected('C', kCtrlAlt);
    EXPECT_EQ(LabelsOf(pieces), (Texts{L"a", L"/b", L" ", L"&\xd83d\xde00", L" charmap:a,b"}));
    EXPECT_TRUE(pieces[1].piece && pieces[1].text == L"/b" && !pieces[1].labelIsMenuLabel &&
                !pieces[4].piece);
}

TEST(OrderMenuRows, FollowsTheSettingsAndKeepsEveryDuplicate) {
    const std::pair<MenuOptions, Texts> settings[] = {
        {{0, true, true}, {L"b", L"&C", L"B", L"a", L"late"}},
        {{1, true, true}, {L"late", L"a", L"b", L"B", L"&C"}},
        {{2, true, true}, {L"late", L"a", L"b", L"B", L"&C"}},
        {{1, false, true}, {L"late", L"B", L"&C", L"a", L"b"}},
        {{1, true, false}, {L"a", L"b", L"B", L"&C", L"late"}},
        {{2, false, false}, {L"B", L"&C", L"a", L"b", L"late"}},
    };
    for (const auto& [options, order] : settings) {
        std::vector<MenuRow> menu = LabelledRows({L"b", L"&C", L"B", L"a", L"late"});
        for (MenuRow& row : menu) row.order = row.label == L"late" ? 1 : 5;
        OrderMenuRows(menu, options);
        EXPECT_EQ(LabelsOf(menu), order) << options.sortMode << options.ignoreCase << options.useMenuOrder;
    }
    // Eight digits compared as text: a minus sign comes before digits, and nine digits are no wider place.
    std::vector<MenuRow> rows =
        LabelledRows({L"10", L"9", L"123456789", L"2000", L"-5", L"-2147483648", L"0"});
    for (MenuRow& row : rows) row.order = ToInt(row.label);
    OrderMenuRows(rows, {});
    EXPECT_EQ(LabelsOf(rows), (Texts{L"-5", L"-2147483648", L"0", L"9", L"10", L"2000", L"123456789"}));

    // Of equal labels the later one is ordered as if it had as many more "0" as make it another.
    rows = LabelledRows({L"x0", L"x", L"x", L"x00", L"x", L"x01", L"x 0", L"x0"});
    OrderMenuRows(rows, {1, false, false});
    std::wstring order;
    for (const MenuRow& row : rows) order += std::to_wstring(row.position);
    EXPECT_EQ(order, L"16023475");
}

// A tree in one line: "Group>(item, -, [heading])".
std::wstring Drawn(const MenuNode& menu) {
    std::wstring drawn;
    for (const MenuNode& child : menu.children) {
        if (!drawn.empty()) drawn += L", ";
        drawn += child.flags & MF_POPUP       ? child.label + L">(" + Drawn(child) + L")"
                 : child.flags & MF_SEPARATOR ? L"-"
                 : child.flags & MF_DISABLED  ? L"[" + child.label + L"]"
                                              : child.label;
    }
    return drawn;
}

TEST(BuildMenuTree, MakesGroupsAndDirectives) {
    const std::pair<Texts, const wchar_t*> trees[] = {
        {{L"G/one", L"two", L"G/three"}, L"G>(one, three), two"},
        {{L"A/B/C/deep", L"A/B/b", L"A/a", L"A/A/x"}, L"A>(B>(C>(deep), b), a, A>(x))"},
        {{L"A//x", L"/A/y", L"//z", L"A/ /w", L"a/x"}, L"A>(x, y, w), z, a>(x)"},
        {{L"A/", L"//", L"B/ "}, L"A>(text of A/), text of //, B>(text of B/ )"},
        {{L"A", L"A/x", L"&A/&x"}, L"A, A>(x), &A>(&x)"},
        {{L"A/x", L"A/MenuBreak: rest", L"A/MenuBreakName:More"}, L"A>(x, -, [More])"},
        {{L"MenuBreak:", L"MenuBreakName:MenuBreak:"}, L"-, [MenuBreak:]"},
        {{L" MenuBreak:", L"menubreak:", L"MenuBreak"}, L" MenuBreak:, menubreak:, MenuBreak"},
    };
    for (const auto& [labels, tree] : trees) {
        std::vector<MenuRow> rows = LabelledRows(labels);
        EXPECT_EQ(Drawn(BuildMenuTree(rows)), tree) << testing::PrintToString(labels);
    }
    // A text for a label is no path and has no access keys; nor has one that stands in for an empty part.
    std::vector<MenuRow> rows = LabelledRows({L"http://a/b?x=1&y=2", L"MenuBreakName:R&D/IT", L"G/"});
    rows[0].labelIsMenuLabel = rows[1].labelIsMenuLabel = false;
    rows[2].text = L"you & me";
    EXPECT_EQ(Drawn(BuildMenuTree(rows)), L"http://a/b?x=1&&y=2, [R&&D/IT], G>(you && me)");
    EXPECT_EQ(rows[1].kind, kHeadingKind);
    std::wstring label;
    for (int level = 0; level < 127; ++level) label += L"g/";
    rows = LabelledRows({label + L"x"});
    const MenuNode menu = BuildMenuTree(rows);
    int depth = 0;
    const MenuNode* node = &menu;
    for (; !node->children.empty(); node = &node->children[0]) ++depth;
    EXPECT_EQ(depth, 17);
    EXPECT_EQ(node->label, L"x");
}

TEST(MenuTexts, AreOfUsableSize) {
    const std::tuple<std::wstring, bool, std::wstring> labels[] = {
        {L"R&D", true, L"R&D"},
        {L"&&&", false, L"&&&&&&"},
        {L"tab\there\x01", true, L"tab here "},
        {L"Dear Sir,\\nthank you", false, L"Dear Sir, thank you"},
        {L"\\new folder", true, L"\\new folder"},
        {std::wstring(80, L'y'), true, std::wstring(80, L'y')},
        {std::wstring(78, L'y') + L"\\n\\n", false, std::wstring(78, L'y') + L"  "},
        {std::wstring(4000, L'y'), true, std::wstring(80, L'y') + L"\x2026"},
        {std::wstring(79, L'y') + L"\xd83d\xde00\xd83d\xde00", false, std::wstring(79, L'y') + L"\x2026"},
        {std::wstring(4000, L'&'), false, std::wstring(160, L'&') + L"\x2026"},
    };
    for (const auto& [label, isMenuLabel, shown] : labels) EXPECT_EQ(ShownLabel(label, isMenuLabel), shown);
    const std::pair<std::wstring, std::wstring> tooltips[] = {
        {L"Hello %name%\\ntwo", L"Hello %name%\r\ntwo"},
        {L"1\\n2\\n3\\n4\\n5\\n6\\n7\\n8\\n9\\n10\\n11",
         L"1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n10\x2026"},
        {std::wstring(600, L'x'), std::wstring(600, L'x')},
        {std::wstring(601, L'x'), std::wstring(600, L'x') + L"\x2026"},
    };
    for (const auto& [text, shown] : tooltips) EXPECT_EQ(MenuTooltipText(text), shown);
}

TEST(MakeMenuHandle, BreaksIntoColumnsAndNumbersByRow) {
    const std::tuple<std::size_t, MenuSpace, bool, std::vector<std::size_t>> rows[] = {
        {10, {10, 5}, true, {}},           {11, {10, 20}, true, {6}},         {11, {10, 19}, false, {}},
        {31, {10, 40}, true, {8, 16, 24}}, {5, {0, 100}, true, {1, 2, 3, 4}},
    };
    for (const auto& [items, space, fits, expected] : rows) {
        MenuNode menu;
        menu.children.resize(items);
        EXPECT_EQ(BreakIntoColumns(menu, space, [](const std::wstring&) { return 10; }), fits);
        std::vector<std::size_t> breaks;
        for (std::size_t item = 0; item < items; ++item) {
            if (menu.children[item].flags & MF_MENUBARBREAK) breaks.push_back(item);
        }
        EXPECT_EQ(breaks, expected) << items;
    }
    std::vector<MenuRow> labelled = LabelledRows({L"text", L"Group/item", L"MenuBreakName:Heading"});
    const UniqueMenu menu = MakeMenuHandle(BuildMenuTree(labelled), {}, false);
    EXPECT_EQ(GetMenuItemID(GetSubMenu(menu.Get(), 1), 0), 11u);
    EXPECT_TRUE(GetMenuState(menu.Get(), 12, MF_BYCOMMAND) & MF_DISABLED) << "the heading";
}

TEST(PlaceBelowCaret, NeedsACaretThatCanBeSeen) {
    const std::pair<RECT, bool> rows[] = {
        {{120, 110, 120, 126}, true},  {{120, 110, 121, 110}, false}, {{120, 395, 121, 411}, true},
        {{120, 400, 121, 416}, false}, {{120, 90, 121, 106}, true},   {{120, 84, 121, 100}, false},
        {{99, 110, 100, 126}, false},  {{500, 110, 501, 126}, false},
    };
    for (const auto& [caret, found] : rows) {
        const auto place = PlaceBelowCaret(caret, {100, 100, 500, 400});
        ASSERT_EQ(place.has_value(), found) << caret.left << ", " << caret.top;
        if (!place) continue;
        EXPECT_TRUE(place->point.x == caret.left && place->point.y == caret.bottom &&
                    place->exclude.top == caret.top);
        EXPECT_GT(place->exclude.right, place->exclude.left);
    }
}

constexpr DWORD kOpened = 1000;

TEST(DecideMenuInput, HoldsBackWhatTheHotkeyLeaves) {
    using enum MenuInput;
    struct Event {
        UINT message;
        WPARAM key;
        MenuInput decision;
        DWORD time = kOpened + 50;
    };
    const std::vector<Event> sequences[] = {
        {{WM_KEYDOWN, 'A', Pass}, {WM_KEYUP, 'A', Pass}, {WM_SYSKEYDOWN, 'A', Pass}},
        // Alt closes when it comes up; that of the hotkey and the program's own do not.
        {{WM_SYSKEYDOWN, VK_MENU, Swallow}, {WM_SYSKEYUP, VK_MENU, Close}, {WM_KEYUP, VK_MENU, Pass}},
        {{WM_SYSKEYUP, VK_MENU, Pass}},
        {{WM_SYSKEYDOWN, VK_MENU, Swallow, kOpened}, {WM_SYSKEYUP, VK_MENU, Pass, kOpened}},
        // Only a button that was pressed in the menu chooses.
        {{WM_LBUTTONUP, 0, Swallow},
         {WM_RBUTTONUP, 0, Swallow},
         {WM_LBUTTONDOWN, 0, Pass},
         {WM_LBUTTONUP, 0, Pass}},
    };
    for (const DWORD shift : {DWORD{0}, DWORD{0} - kOpened - 10}) {  // the clock wraps at once after it
        for (const auto& events : sequences) {
            MenuInputState state;
            state.openedAt = kOpened + shift;
            for (const Event& event : events) {
                const MSG message = {nullptr, event.message, event.key, 0, event.time + shift, {}};
                EXPECT_EQ(DecideMenuInput(state, message), event.decision)
                    << event.message << " " << event.key;
                EXPECT_EQ(state.lastWasButtonDown, event.message == WM_LBUTTONDOWN);
            }
        }
    }
}

}  // namespace
}  // namespace verbatix
