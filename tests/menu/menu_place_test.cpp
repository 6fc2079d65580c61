#include "menu/menu_place.h"

#include <gtest/gtest.h>

namespace verbatix {
namespace {

TEST(PlaceBelowCaret, NeedsACaretThatCanBeSeen) {
    const RECT visible = {100, 100, 500, 400};
    const struct {
        RECT caret;
        bool found;
    } rows[] = {
        {{120, 110, 121, 126}, true},   {{120, 110, 120, 126}, true},  {{120, 110, 121, 110}, false},
        {{120, 395, 121, 411}, true},   {{120, 400, 121, 416}, false}, {{120, 84, 121, 100}, false},
        {{120, 90, 121, 106}, true},    {{99, 110, 100, 126}, false},  {{500, 110, 501, 126}, false},
        {{120, -30000, 121, 0}, false}, {{120, 126, 121, 110}, false},
    };
    for (const auto& row : rows) {
        const auto place = PlaceBelowCaret(row.caret, visible);
        ASSERT_EQ(place.has_value(), row.found) << row.caret.left << ", " << row.caret.top;
        if (!place) continue;
        EXPECT_EQ(place->point.x, row.caret.left);
        EXPECT_EQ(place->point.y, row.caret.bottom);
        EXPECT_EQ(place->exclude.top, row.caret.top);
        EXPECT_GT(place->exclude.right, place->exclude.left);
    }
}

}  // namespace
}  // namespace verbatix
