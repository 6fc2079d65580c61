// Where everything stands in the main dialog: pure, from the size of the dialog to rectangles. A part of
// the window gets a rectangle and cuts its rows off it; a new row is one more cut. Nothing fails: where the
// room is too small, what comes last gets none.
#pragma once

#include <windows.h>

#include <vector>

namespace verbatix {

// Measures in units of a font, as dialogs have them: a quarter of its average width, an eighth of its
// height.
struct FontUnits {
    SIZE character = {4, 8};  // pixels
    int X(int units) const { return MulDiv(units, static_cast<int>(character.cx), 4); }
    int Y(int units) const { return MulDiv(units, static_cast<int>(character.cy), 8); }
};

// Cuts that many pixels off one side and returns them; `from` keeps the rest. At most all of it.
RECT CutTop(RECT& from, int pixels);
RECT CutBottom(RECT& from, int pixels);
RECT CutLeft(RECT& from, int pixels);
RECT CutRight(RECT& from, int pixels);

struct LayoutRequest {
    RECT client = {};  // without the status bar
    FontUnits units;
    // Parts in kWholeSplit of the room that go to the list: beside the editor, and above it. 0: as many as
    // it gets by itself.
    int splitBeside = 0;
    int splitAbove = 0;
    bool keepsPaths = false;  // the button for it is shown
    bool hasPreview = false;  // what the text would paste is shown under it
};
constexpr int kWholeSplit = 10000;

struct Placed {
    int control;
    RECT place;
};

struct MainPlaces {
    std::vector<Placed> controls;
    bool isBeside = false;  // the list stands beside the editor, not above it
    RECT shared = {};       // what list and editor share, the splitter between them included
};

MainPlaces PlaceControls(const LayoutRequest& request);

// The share of the list, in parts of kWholeSplit, that begins the splitter at that place in the dialog.
int SplitAt(const MainPlaces& places, int position);

// The smallest client area, without status bar, in which everything can be used.
SIZE SmallestClient(const FontUnits& units, bool hasPreview);

// `place` moved, and where necessary shrunk, into the work area.
RECT FitInto(RECT place, const RECT& workArea);

}  // namespace verbatix
