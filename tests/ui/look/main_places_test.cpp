// Where everything stands in windows of every size.
#include "ui/look/main_places.h"

#include <gtest/gtest.h>

#include <map>

#include "ids.h"
#include "ui/look/window_place.h"
#include "ui/views/list_rows.h"

namespace verbatix::test {
namespace {

std::map<int, RECT> ByControl(const MainPlaces& places) {
    std::map<int, RECT> byControl;
    for (const Placed& placed : places.controls) byControl[placed.control] = placed.place;
    return byControl;
}

TEST(MainPlaces, ListAndEditorShareWindowsOfEverySizeAndResolution) {
    for (const LONG percent : {100, 150, 200, 300}) {
        LayoutRequest request;
        request.hasPreview = true;
        request.units.character = {7 * percent / 100, 15 * percent / 100};
        const SIZE smallest = SmallestClient(request.units, true);
        for (const LONG wide : {100, 130, 160, 250}) {
            for (const int split : {-5, 0, 1, 3000, kWholeSplit, 2147483647}) {
                request.client = {0, 0, smallest.cx * wide / 100, smallest.cy * 3 / 2};
                request.splitBeside = request.splitAbove = split;
                const MainPlaces places = PlaceControls(request);
                std::map<int, RECT> at = ByControl(places);
                const RECT list = at[IDC_LIST];
                const RECT text = at[IDC_TEXT];
                const RECT bar = at[IDC_SPLITTER];
                EXPECT_EQ(places.isBeside, wide >= 160) << wide;
                EXPECT_TRUE(places.isBeside ? list.right == bar.left && bar.right == text.left
                                            : list.bottom == bar.top && bar.bottom < text.top);
                for (const RECT& part : {list, text}) {
                    EXPECT_GE(part.right - part.left, request.units.X(160)) << split;
                    EXPECT_GE(part.bottom - part.top, request.units.Y(38)) << split;
                }
                for (const auto& [control, place] : at) {
                    EXPECT_LE(place.right, request.client.right) << control;
                    EXPECT_GE(place.right, place.left) << control;
                }
                // The splitter stays where it is put.
                const int position = static_cast<int>(places.isBeside ? bar.left : bar.top) + 7;
                request.splitBeside = request.splitAbove = SplitAt(places, position);
                const RECT moved = ByControl(PlaceControls(request))[IDC_SPLITTER];
                if (split != 3000) continue;
                EXPECT_EQ(places.isBeside ? moved.left : moved.top, position);
            }
        }
    }
}

TEST(MainPlaces, WindowsAndColumnsFitWhereTheyStand) {
    const RECT work = {0, 0, 1280, 860};
    const std::pair<RECT, RECT> windows[] = {
        {{40, 50, 840, 650}, {40, 50, 840, 650}},          {{-300, 50, 500, 650}, {-300, 50, 500, 650}},
        {{9000, 9000, 9800, 9600}, {480, 260, 1280, 860}}, {{100, 100, 1600, 700}, {0, 100, 1280, 700}},
        {{-10, 40, 2000, 2000}, {0, 0, 1280, 860}},        {{-790, 0, 10, 600}, {0, 0, 800, 600}},
    };
    for (const auto& [stored, expected] : windows) {
        const RECT place = PlaceOnScreen(stored, work);
        EXPECT_TRUE(EqualRect(&place, &expected)) << stored.left << " gives " << place.left;
    }

    struct Case {
        int list, hotkey, label;
        std::array<int, 3> widths;
    };
    const Case lists[] = {{1000, 0, 0, {340, 280, 380}},
                          {1000, 100, 150, {100, 150, 750}},
                          {1000, 0, 150, {340, 150, 510}},
                          {300, 200, 200, {120, 120, 60}},
                          {300, 2147483647, 2147483647, {120, 120, 60}},
                          {40, 200, 200, {0, 0, 40}}};
    for (const Case& row : lists) {
        EXPECT_EQ(ColumnWidths(row.list, row.hotkey, row.label, 60), row.widths) << row.list;
    }
}

}  // namespace
}  // namespace verbatix::test
