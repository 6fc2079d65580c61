#include "menu/menu_handle.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace verbatix {
namespace {

TEST(BreakIntoColumns, MakesColumnsThatFitTheScreen) {
    const struct {
        std::size_t items;
        MenuSpace space;
        bool fits;
        std::vector<std::size_t> breaks;
    } rows[] = {
        {0, {10, 100}, true, {}},          {10, {10, 5}, true, {}},
        {11, {10, 20}, true, {6}},         {11, {10, 19}, false, {}},
        {30, {10, 30}, true, {10, 20}},    {31, {10, 40}, true, {8, 16, 24}},
        {5, {0, 100}, true, {1, 2, 3, 4}},
    };
    for (const auto& row : rows) {
        MenuNode menu;
        menu.children.resize(row.items);
        EXPECT_EQ(BreakIntoColumns(menu, row.space, [](const std::wstring&) { return 10; }), row.fits);
        std::vector<std::size_t> breaks;
        for (std::size_t item = 0; item < row.items; ++item) {
            if (menu.children[item].flags & MF_MENUBARBREAK) breaks.push_back(item);
        }
        EXPECT_EQ(breaks, row.breaks) << row.items;
    }
}

std::vector<UINT> ItemIds(HMENU menu) {
    std::vector<UINT> ids(static_cast<std::size_t>(std::max(GetMenuItemCount(menu), 0)));
    int position = 0;
    for (UINT& id : ids) id = GetMenuItemID(menu, position++);
    return ids;
}

TEST(MakeMenuHandle, NumbersTheItemsByRow) {
    std::vector<MenuRow> rows(3);
    rows[0].label = L"text";
    rows[1].label = L"Group/item";
    rows[1].labelIsMenuLabel = true;
    rows[2].label = L"MenuBreakName:Heading";
    const MenuNode tree = BuildMenuTree(rows);
    constexpr UINT kSubmenu = static_cast<UINT>(-1);
    const UniqueMenu menu = MakeMenuHandle(tree, {}, false);
    EXPECT_EQ(ItemIds(menu.Get()), (std::vector<UINT>{10, kSubmenu, 12, 0, 10000}));
    EXPECT_EQ(ItemIds(GetSubMenu(menu.Get(), 1)), std::vector<UINT>{11});
    EXPECT_TRUE(GetMenuState(menu.Get(), 12, MF_BYCOMMAND) & MF_DISABLED);
    EXPECT_TRUE(GetMenuState(menu.Get(), 3, MF_BYPOSITION) & MF_MENUBREAK);
    const UniqueMenu taken = MakeMenuHandle(tree, {}, true);
    EXPECT_EQ(ItemIds(taken.Get()), (std::vector<UINT>{10, kSubmenu, 12, 0, 10001, 10000}));
}

}  // namespace
}  // namespace verbatix
