#include "menu/menu_model.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <random>
#include <set>

#include "base/text.h"

namespace verbatix {
namespace {

using Texts = std::vector<std::wstring>;

constexpr unsigned kKey = 'W';
constexpr unsigned kCtrlAlt = 2;

void Add(EntryList& list, std::wstring_view text, std::wstring_view label = {}, int order = 0,
         unsigned key = kKey, unsigned modifier = kCtrlAlt) {
    AddEntry(list, text, label, key, modifier, -1, order);
}

std::vector<MenuRow> Collected(const EntryList& list, unsigned key = kKey, unsigned modifier = kCtrlAlt) {
    return CollectMenuRows(list, key, modifier).value_or(std::vector<MenuRow>());
}

Texts LabelsOf(const std::vector<MenuRow>& rows) {
    Texts labels;
    for (const MenuRow& row : rows) labels.push_back(row.label);
    return labels;
}

MenuRow LabelledRow(std::wstring label, int order = 0) {
    MenuRow row;
    row.label = std::move(label);
    row.text = L"text of " + row.label;
    row.order = order;
    row.labelIsMenuLabel = true;
    return row;
}

// A tree in one line: "Group>(item, -, [heading])".
std::wstring Drawn(const MenuNode& menu) {
    std::wstring drawn;
    for (const MenuNode& child : menu.children) {
        if (!drawn.empty()) drawn += L", ";
        if (child.flags & MF_POPUP) {
            drawn += child.label + L">(" + Drawn(child) + L")";
        } else if (child.flags & MF_SEPARATOR) {
            drawn += L"-";
        } else if (child.flags & MF_DISABLED) {
            drawn += L"[" + child.label + L"]";
        } else {
            drawn += child.label;
        }
    }
    return drawn;
}

std::wstring DrawnLabels(const Texts& labels) {
    std::vector<MenuRow> rows;
    for (const std::wstring& label : labels) rows.push_back(LabelledRow(label));
    return Drawn(BuildMenuTree(rows));
}

TEST(CollectMenuRows, TakesTheEntriesOfTheHotkeyInListOrder) {
    EntryList list;
    Add(list, L"first", L"One");
    Add(list, L"other key", L"", 0, 'X');
    Add(list, L"other modifier", L"", 0, kKey, 4);
    Add(list, L"second", L"2", 7);  // one character is no menu label
    Add(list, L"", L"no text");
    Add(list, L"", L"3");  // nothing to show
    const auto rows = Collected(list);
    ASSERT_EQ(LabelsOf(rows), (Texts{L"One", L"second", L"no text"}));
    EXPECT_EQ(rows[0].text, L"first");
    EXPECT_TRUE(rows[0].labelIsMenuLabel);
    EXPECT_FALSE(rows[1].labelIsMenuLabel);
    EXPECT_EQ(rows[1].order, 7);
    EXPECT_EQ(rows[1].position, 3);
    EXPECT_EQ(rows[1].number, list.at(3).current.number);
    EXPECT_FALSE(rows[1].piece);
    EXPECT_EQ(rows[2].text, L"");
}

TEST(CollectMenuRows, ComparesCodesAsTheKeyboardHookDoes) {
    EntryList list;
    Add(list, L"semicolon", L"", 0, VK_OEM_1);  // stored sign-extended
    EXPECT_EQ(LabelsOf(Collected(list, VK_OEM_1)), Texts{L"semicolon"});
    Add(list, L"no such modifier", L"", 0, kKey, 12);
    EXPECT_EQ(LabelsOf(Collected(list, kKey, 0)), Texts{L"no such modifier"});
    Add(list, L"no hotkey", L"", 0, 0);
    EXPECT_TRUE(Collected(list, 0).empty());
}

TEST(CollectMenuRows, CutsACharacterListAtItsCommas) {
    const struct {
        const wchar_t* text;
        Texts pieces;
    } rows[] = {
        {L"charmap:a,,b", {L"a", L"b"}},
        {L"charmap:", {}},
        {L"charmap:,,,", {}},
        {L"charmap: ,long piece,\x20ac", {L" ", L"long piece", L"\x20ac"}},
        {L"charmap:a/b,&,\xd83d\xde00,", {L"a/b", L"&", L"\xd83d\xde00"}},
        {L" charmap:a,b", {L" charmap:a,b"}},
        {L"Charmap:a,b", {L"Charmap:a,b"}},
    };
    for (const auto& row : rows) {
        EntryList list;
        Add(list, row.text, L"a label that does not count here");
        const auto collected = Collected(list);
        const bool isCharacterList = std::wstring_view(row.text).starts_with(kCharacterListPrefix);
        if (!isCharacterList) {
            ASSERT_EQ(collected.size(), 1U);
            EXPECT_FALSE(collected[0].piece);
            continue;
        }
        EXPECT_EQ(LabelsOf(collected), row.pieces) << testing::PrintToString(row.text);
        for (const MenuRow& piece : collected) {
            EXPECT_TRUE(piece.piece);
            EXPECT_FALSE(piece.labelIsMenuLabel);
            EXPECT_EQ(piece.text, piece.label);
        }
    }
}

TEST(CollectMenuRows, RefusesMoreThanNineHundred) {
    EntryList list;
    for (int count = 0; count < 899; ++count) Add(list, L"text");
    Add(list, L"charmap:a,");
    EXPECT_EQ(Collected(list).size(), 900U);
    Add(list, L"charmap:,");
    EXPECT_EQ(Collected(list).size(), 900U);
    Add(list, L"charmap:,b");
    EXPECT_FALSE(CollectMenuRows(list, kKey, kCtrlAlt));

    EntryList commas;
    std::wstring text = L"charmap:";
    for (int count = 0; count < 1500; ++count) text += L"x,";
    Add(commas, text);
    EXPECT_FALSE(CollectMenuRows(commas, kKey, kCtrlAlt));
    EXPECT_TRUE(CollectMenuRows(commas, 'X', kCtrlAlt));
}

TEST(OrderMenuRows, FollowsTheSettings) {
    const struct {
        MenuOptions options;
        Texts order;
    } rows[] = {
        {{0, true, true}, {L"b", L"&C", L"B", L"a", L"late"}},
        {{0, false, false}, {L"b", L"&C", L"B", L"a", L"late"}},
        {{1, true, true}, {L"late", L"a", L"b", L"B", L"&C"}},
        {{2, true, true}, {L"late", L"a", L"b", L"B", L"&C"}},
        {{1, false, true}, {L"late", L"B", L"&C", L"a", L"b"}},
        {{1, true, false}, {L"a", L"b", L"B", L"&C", L"late"}},
        {{2, false, false}, {L"B", L"&C", L"a", L"b", L"late"}},
    };
    for (const auto& row : rows) {
        std::vector<MenuRow> menu = {LabelledRow(L"b", 5), LabelledRow(L"&C", 5), LabelledRow(L"B", 5),
                                     LabelledRow(L"a", 5), LabelledRow(L"late", 1)};
        OrderMenuRows(menu, row.options);
        EXPECT_EQ(LabelsOf(menu), row.order)
            << row.options.sortMode << row.options.ignoreCase << row.options.useMenuOrder;
        EXPECT_EQ(menu.back().text, L"text of " + menu.back().label);
    }
}

TEST(OrderMenuRows, WritesTheOrderNumberWithEightDigits) {
    // Compared as text: a minus sign comes before digits, and nine digits are no wider place.
    std::vector<MenuRow> rows;
    for (const int order : {10, 9, 123456789, 2000, -5, INT_MIN, INT_MAX, 0}) {
        rows.push_back(LabelledRow(Format(L"%d", order), order));
    }
    OrderMenuRows(rows, {});
    EXPECT_EQ(LabelsOf(rows),
              (Texts{L"-5", L"-2147483648", L"0", L"9", L"10", L"2000", L"123456789", L"2147483647"}));
}

// The rule word for word: append "0" while the key exists.
std::vector<std::size_t> OrderByTheRule(const Texts& labels) {
    std::map<std::wstring, std::size_t> keys;
    for (std::size_t index = 0; index < labels.size(); ++index) {
        std::wstring key = labels[index];
        while (keys.contains(key)) key += L'0';
        keys[key] = index;
    }
    std::vector<std::size_t> order;
    order.reserve(keys.size());
    for (const auto& [key, index] : keys) order.push_back(index);
    return order;
}

TEST(OrderMenuRows, KeepsEveryDuplicate) {
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        Texts labels;
        for (int count = 0; count < 40; ++count) {
            labels.push_back(std::wstring(random() % 3, L'x') + std::wstring(random() % 5, L'0') +
                             std::wstring(random() % 2, L'1'));
        }
        std::vector<MenuRow> rows;
        for (const std::wstring& label : labels) {
            rows.push_back(LabelledRow(label));
            rows.back().position = static_cast<int>(rows.size()) - 1;
        }
        OrderMenuRows(rows, {1, false, false});
        std::vector<std::size_t> order;
        order.reserve(rows.size());
        for (const MenuRow& row : rows) order.push_back(static_cast<std::size_t>(row.position));
        ASSERT_EQ(order, OrderByTheRule(labels)) << round;
    }
}

TEST(OrderMenuRows, OrdersLongDuplicatesInNoTime) {
    std::vector<MenuRow> rows;
    for (std::size_t count = 0; count < kMaximumMenuRows; ++count) {
        rows.push_back(LabelledRow(std::wstring(4000, L'x') + std::wstring(count % 90, L'0')));
    }
    const ULONGLONG start = GetTickCount64();
    OrderMenuRows(rows, {});
    EXPECT_LT(GetTickCount64() - start, 5000U);
    EXPECT_EQ(rows.size(), kMaximumMenuRows);
    EXPECT_EQ(rows.front().label.size(), 4000U);
}

TEST(ApplyMenuDirective, ReadsTheStartOfTheLabel) {
    const struct {
        const wchar_t* label;
        const wchar_t* changed;
        unsigned flags;
        int32_t kind;
    } rows[] = {
        {L"plain", L"plain", 0, 0},
        {L"", L"", 0, 0},
        {L"MenuBreak:", L"MenuBreak:", MF_SEPARATOR, 0},
        {L"MenuBreak: rest", L"MenuBreak: rest", MF_SEPARATOR, 0},
        {L"MenuBreakName:Heads", L"Heads", MF_DISABLED, kHeadingKind},
        {L"MenuBreakName:", L"", MF_DISABLED, kHeadingKind},
        {L"MenuBreakName:MenuBreak:", L"MenuBreak:", MF_DISABLED, kHeadingKind},
        {L" MenuBreak:", L" MenuBreak:", 0, 0},
        {L"menubreak:", L"menubreak:", 0, 0},
        {L"MenuBreak", L"MenuBreak", 0, 0},
    };
    for (const auto& row : rows) {
        unsigned flags = MF_BYPOSITION;
        std::wstring label = row.label;
        MenuRow menuRow;
        ApplyMenuDirective(flags, label, menuRow);
        EXPECT_EQ(flags, MF_BYPOSITION | row.flags) << testing::PrintToString(row.label);
        EXPECT_EQ(label, row.changed);
        EXPECT_EQ(menuRow.kind, row.kind);
    }
}

TEST(BuildMenuTree, MakesGroupsOfPaths) {
    const struct {
        Texts labels;
        const wchar_t* tree;
    } rows[] = {
        {{L"one", L"two"}, L"one, two"},
        {{L"G/one", L"two", L"G/three"}, L"G>(one, three), two"},
        {{L"A/B/C/deep", L"A/B/b", L"A/a"}, L"A>(B>(C>(deep), b), a)"},
        {{L"A/A/A/x", L"A/x"}, L"A>(A>(A>(x)), x)"},
        {{L"A//x", L"/A/y", L"//z", L"A/ /w"}, L"A>(x, y, w), z"},
        {{L"A/x", L"a/x"}, L"A>(x), a>(x)"},
        {{L"A/", L"//", L"B/ "}, L"A>(text of A/), text of //, B>(text of B/ )"},
        {{L"A", L"A/x"}, L"A, A>(x)"},
        {{L"&A/&x", L"A/y"}, L"&A>(&x), A>(y)"},
        {{L"A/x", L"A/MenuBreak:", L"A/MenuBreakName:More", L"A/y"}, L"A>(x, -, [More], y)"},
        {{L"MenuBreak:", L"MenuBreakName:H"}, L"-, [H]"},
        {{}, L""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(DrawnLabels(row.labels), row.tree) << testing::PrintToString(row.labels);
    }
}

TEST(BuildMenuTree, ATextForALabelIsNoPathAndHasNoAccessKeys) {
    std::vector<MenuRow> rows(2);
    rows[0].label = L"http://a/b?x=1&y=2";
    rows[1].label = L"MenuBreakName:R&D/IT";
    EXPECT_EQ(Drawn(BuildMenuTree(rows)), L"http://a/b?x=1&&y=2, [R&&D/IT]");
    EXPECT_EQ(rows[1].kind, kHeadingKind);
    // The text that stands in for an empty last part is a text, too.
    std::vector<MenuRow> standIn = {LabelledRow(L"G/")};
    standIn[0].text = L"you & me";
    EXPECT_EQ(Drawn(BuildMenuTree(standIn)), L"G>(you && me)");
}

TEST(BuildMenuTree, LimitsTheDepth) {
    std::wstring label;
    for (int level = 0; level < 127; ++level) label += L"g/";
    std::vector<MenuRow> rows = {LabelledRow(label + L"x")};
    const MenuNode menu = BuildMenuTree(rows);
    int depth = 0;
    const MenuNode* node = &menu;
    for (; !node->children.empty(); node = &node->children[0]) ++depth;
    EXPECT_EQ(depth, 17);
    EXPECT_EQ(node->label, L"x");
}

TEST(ShownLabel, IsOneLineOfUsableWidth) {
    const std::wstring longText(4000, L'x');
    const struct {
        std::wstring label;
        bool isMenuLabel;
        std::wstring shown;
    } rows[] = {
        {L"R&D", true, L"R&D"},
        {L"R&D", false, L"R&&D"},
        {L"&&&", false, L"&&&&&&"},
        {L"tab\there\x01", true, L"tab here "},
        {L"Dear Sir,\\nthank you", false, L"Dear Sir, thank you"},
        {std::wstring(80, L'y'), true, std::wstring(80, L'y')},
        {std::wstring(81, L'y'), true, std::wstring(80, L'y') + L"\x2026"},
        {longText, false, longText.substr(0, 80) + L"\x2026"},
        {std::wstring(79, L'y') + L"\xd83d\xde00\xd83d\xde00", false, std::wstring(79, L'y') + L"\x2026"},
        {std::wstring(4000, L'&'), false, std::wstring(160, L'&') + L"\x2026"},
        {L"\x05e9\x05dc\x05d5\x05dd \xd83d\xde00", true, L"\x05e9\x05dc\x05d5\x05dd \xd83d\xde00"},
        {L"", false, L""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ShownLabel(row.label, row.isMenuLabel), row.shown) << testing::PrintToString(row.label);
    }
}

TEST(MenuTooltipText, ShowsTheFirstLines) {
    std::wstring lines = L"1";
    for (int line = 2; line <= 11; ++line) lines += Format(L"\\n%d", line);
    const struct {
        std::wstring text;
        std::wstring shown;
    } rows[] = {
        {L"", L""},
        {L"Hello %name%", L"Hello %name%"},
        {L"one\\ntwo", L"one\r\ntwo"},
        {lines.substr(0, lines.size() - 4), L"1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n10"},
        {lines, L"1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n10\x2026"},
        {std::wstring(600, L'x'), std::wstring(600, L'x')},
        {std::wstring(601, L'x'), std::wstring(600, L'x') + L"\x2026"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(MenuTooltipText(row.text), row.shown) << testing::PrintToString(row.text);
    }
}

}  // namespace
}  // namespace verbatix
