#include "menu/menu_handle.h"

#include <algorithm>
#include <utility>

#include "base/language.h"
#include "base/product.h"

namespace verbatix {

bool BreakIntoColumns(MenuNode& menu, const MenuSpace& space,
                      const std::function<int(const std::wstring&)>& widthOf) {
    const std::size_t count = menu.children.size();
    const std::size_t columns = space.rows == 0 ? count : (count + space.rows - 1) / space.rows;
    if (columns <= 1) return true;
    const int columnWidth = space.width / static_cast<int>(columns);
    const bool fits = std::all_of(menu.children.begin(), menu.children.end(), [&](const MenuNode& child) {
        return widthOf(child.label) <= columnWidth;
    });
    if (!fits) return false;
    const std::size_t perColumn = (count + columns - 1) / columns;
    for (std::size_t item = perColumn; item < count; item += perColumn) {
        menu.children[item].flags |= MF_MENUBARBREAK;
    }
    return true;
}

namespace {

// Measures labels in the menu font.
class MenuRuler {
  public:
    MenuRuler() : context_(CreateCompatibleDC(nullptr)) {
        NONCLIENTMETRICSW metrics = {};
        metrics.cbSize = sizeof metrics;
        SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
        font_.Reset(CreateFontIndirectW(&metrics.lfMenuFont));
        previous_ = SelectObject(context_.Get(), font_.Get());
    }
    ~MenuRuler() { SelectObject(context_.Get(), previous_); }
    MenuRuler(const MenuRuler&) = delete;
    MenuRuler& operator=(const MenuRuler&) = delete;

    // With the room for the check mark, the arrow and the margins.
    int WidthOf(const std::wstring& label) const {
        SIZE size = {};
        GetTextExtentPoint32W(context_.Get(), label.c_str(), static_cast<int>(label.size()), &size);
        return size.cx + 3 * GetSystemMetrics(SM_CXMENUCHECK) + 2 * GetSystemMetrics(SM_CXSMICON);
    }

  private:
    UniqueHandle<HDC, DeleteDC> context_;
    UniqueHandle<HFONT, DeleteObject> font_;
    HGDIOBJ previous_ = nullptr;
};

}  // namespace

static MenuSpace SpaceAt(POINT place) {
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    if (!GetMonitorInfoW(MonitorFromPoint(place, MONITOR_DEFAULTTONEAREST), &monitor)) return {1, 0};
    constexpr int kThemeMargin = 6;  // what a theme adds to a row's height, generously
    const int rowHeight = GetSystemMetrics(SM_CYMENU) + kThemeMargin;
    const int rows = (monitor.rcWork.bottom - monitor.rcWork.top) / rowHeight - 1;
    // A menu wider than half the screen hides what the user is writing, and takes long to draw.
    return {static_cast<std::size_t>(std::max(rows, 1)), (monitor.rcWork.right - monitor.rcWork.left) / 2};
}

// Returns whether the menu is not going to scroll.
static bool Fill(HMENU menu, MenuNode& node, const MenuSpace& space, const MenuRuler& ruler) {
    const bool fits =
        BreakIntoColumns(node, space, [&](const std::wstring& label) { return ruler.WidthOf(label); });
    for (MenuNode& child : node.children) {
        if ((child.flags & MF_POPUP) == 0) {
            AppendMenuW(menu, child.flags, child.row + kFirstRowItem, child.label.c_str());
            continue;
        }
        UniqueMenu submenu(CreatePopupMenu());
        Fill(submenu.Get(), child, space, ruler);
        const UINT_PTR item = reinterpret_cast<UINT_PTR>(submenu.Get());
        if (AppendMenuW(menu, child.flags, item, child.label.c_str())) submenu.Release();
    }
    return fits;
}

UniqueMenu MakeMenuHandle(MenuNode tree, POINT place, bool winKeyIsTaken) {
    const MenuRuler ruler;
    const std::wstring& takenWinKey = LanguageText(text::kWinKeyTaken);
    MenuSpace space = SpaceAt(place);
    UniqueMenu menu(CreatePopupMenu());
    space.width -= std::max(ruler.WidthOf(kProductName), winKeyIsTaken ? ruler.WidthOf(takenWinKey) : 0);
    const bool fits = Fill(menu.Get(), tree, space, ruler);
    // A menu with columns does not scroll, so that one that has to gets a line instead of the break.
    AppendMenuW(menu.Get(), MF_BYPOSITION | (fits ? MF_MENUBREAK : MF_SEPARATOR), 0, nullptr);
    if (winKeyIsTaken) AppendMenuW(menu.Get(), MF_BYPOSITION, kTakenWinKeyItem, takenWinKey.c_str());
    AppendMenuW(menu.Get(), MF_BYPOSITION, kShowMainWindowItem, kProductName);
    return menu;
}

}  // namespace verbatix
