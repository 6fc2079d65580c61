#include "ui/look/main_places.h"

#include <algorithm>
#include <initializer_list>

#include "ids.h"

namespace verbatix {

namespace {

// Font units.
constexpr int kMargin = 6;
constexpr int kGap = 4;
constexpr int kSplitter = 6;
constexpr int kFieldHeight = 13;
constexpr int kCaptionHeight = 9;
constexpr int kButtonHeight = 14;
constexpr int kButtonWidth = 54;
constexpr int kModifierWidth = 92;
constexpr int kKeyWidth = 56;
constexpr int kHotkeyWidth = 100;
// From this width of the editor on label and hotkey stand in one row.
constexpr int kOneRowWidth = 370;
constexpr int kFilterCaptionWidth = 34;
constexpr int kCounterWidth = 120;
constexpr int kKeepPathsWidth = 76;
constexpr int kDropDownHeight = 130;
constexpr int kPreviewCaptionWidth = 44;
constexpr int kPreviewPercent = 15;  // of the editor
constexpr int kPreviewLeast = 27;    // three lines
// From this width on list and editor stand side by side.
constexpr int kWideWidth = 440;
// What each of the two keeps, whatever the user drags.
constexpr SIZE kSmallestList = {3 * kButtonWidth + 2 * kGap, 48};
constexpr SIZE kSmallestEditor = {250, 108};
constexpr SIZE kSmallestClient = {5 * kButtonWidth + 6 * kGap + 2 * kMargin, 224};
// The list's share where nobody has moved the splitter: the text is what needs room.
constexpr int kUsualBeside = 4200;
constexpr int kUsualAbove = 4000;

constexpr int kListButtons[] = {CMD_NEW_ENTRY, CMD_COPY_ENTRY, CMD_DELETE_ENTRY};
constexpr int kEditorButtons[] = {IDC_INSERT, CMD_TEST_ENTRY};

// Font units that the preview takes at least.
int LeastPreview(bool hasPreview) {
    return hasPreview ? kGap + kCaptionHeight + kPreviewLeast : 0;
}

int WidthOf(const RECT& place) {
    return static_cast<int>(place.right - place.left);
}

int HeightOf(const RECT& place) {
    return static_cast<int>(place.bottom - place.top);
}

// Takes rows off a part of the window and says what stands in them.
class Rows {
  public:
    Rows(const LayoutRequest& request, MainPlaces& places) : request_(request), places_(places) {}

    int X(int units) const { return request_.units.X(units); }
    int Y(int units) const { return request_.units.Y(units); }
    void Put(int control, const RECT& place) { places_.controls.push_back({control, place}); }

    void Filter(RECT& from) {
        RECT row = CutTop(from, Y(kFieldHeight));
        RECT caption = CutLeft(row, X(kFilterCaptionWidth));
        CutTop(caption, Y(2));
        Put(IDC_FILTER_CAPTION, caption);
        Put(IDC_FILTER, row);
        CutTop(from, Y(kGap));
    }

    void View(const RECT& place) {
        Put(IDC_LIST, place);
        Put(IDC_TREE, place);
    }

    void LabelAndHotkey(RECT& from) {
        const bool inOneRow = WidthOf(from) >= X(kOneRowWidth);
        if (!inOneRow) Captioned(IDC_LABEL_CAPTION, IDC_LABEL, CutFieldRow(from));
        FieldRow row = CutFieldRow(from);
        DropDown(IDC_KEY_CAPTION, IDC_KEY, CutRightPart(row, kKeyWidth));
        DropDown(IDC_MODIFIER_CAPTION, IDC_MODIFIER, CutRightPart(row, kModifierWidth));
        if (inOneRow) {
            Captioned(IDC_HOTKEY_CAPTION, IDC_HOTKEY, CutRightPart(row, kHotkeyWidth));
            Captioned(IDC_LABEL_CAPTION, IDC_LABEL, row);
        } else {
            Captioned(IDC_HOTKEY_CAPTION, IDC_HOTKEY, row);
        }
    }

    // What there is to say of the entry, and a button where something can be done.
    void Advice(RECT& from) {
        RECT row = CutTop(from, Y(kCaptionHeight + 2));
        RECT button = CutRight(row, request_.keepsPaths ? X(kKeepPathsWidth) : 0);
        Put(IDC_KEEP_PATHS, button);
        CutTop(row, Y(1));
        Put(IDC_CLASH, row);
    }

    // What the text would paste, at the bottom, with what can be mended in it.
    void Preview(RECT& from) {
        if (!request_.hasPreview) return;
        const int box = std::max(Y(kPreviewLeast), HeightOf(from) * kPreviewPercent / 100);
        Put(IDC_PREVIEW, CutBottom(from, box));
        RECT row = CutBottom(from, Y(kCaptionHeight + 2));
        CutBottom(from, Y(kGap - 2));
        RECT caption = CutLeft(row, X(kPreviewCaptionWidth));
        CutTop(caption, Y(2));
        Put(IDC_PREVIEW_CAPTION, caption);
        Put(IDC_MEND_CODE, row);
    }

    void Text(RECT from) {
        RECT captions = CutTop(from, Y(kCaptionHeight));
        Put(IDC_COUNTER, CutRight(captions, X(kCounterWidth)));
        Put(IDC_TEXT_CAPTION, captions);
        Put(IDC_TEXT, from);
    }

    void Editor(RECT from) {
        LabelAndHotkey(from);
        Advice(from);
        Preview(from);
        Text(from);
    }

    // Buttons in the row at the bottom, from the left or up to the right end.
    template <typename Buttons>
    void ButtonRow(RECT row, const Buttons& buttons, bool atRight) {
        const int count = static_cast<int>(std::size(buttons));
        if (atRight) row = CutRight(row, count * X(kButtonWidth) + (count - 1) * X(kGap));
        for (const int button : buttons) {
            Put(button, CutLeft(row, X(kButtonWidth)));
            CutLeft(row, X(kGap));
        }
    }

    RECT ButtonPlace(RECT& from) {
        const RECT row = CutBottom(from, Y(kButtonHeight));
        CutBottom(from, Y(kGap));
        return row;
    }

  private:
    // Fields side by side, under their captions.
    struct FieldRow {
        RECT captions;
        RECT fields;
    };

    FieldRow CutFieldRow(RECT& from) {
        const FieldRow row = {CutTop(from, Y(kCaptionHeight)), CutTop(from, Y(kFieldHeight))};
        CutTop(from, Y(2));
        return row;
    }

    FieldRow CutRightPart(FieldRow& row, int width) {
        const FieldRow part = {CutRight(row.captions, X(width)), CutRight(row.fields, X(width))};
        CutRight(row.captions, X(kGap));
        CutRight(row.fields, X(kGap));
        return part;
    }

    void Captioned(int caption, int field, const FieldRow& at) {
        Put(caption, at.captions);
        Put(field, at.fields);
    }

    // Its height is that of its list.
    void DropDown(int caption, int field, FieldRow at) {
        at.fields.bottom = at.fields.top + Y(kDropDownHeight);
        Captioned(caption, field, at);
    }

    const LayoutRequest& request_;
    MainPlaces& places_;
};

// The first part's pixels of those that both share, so that both keep their least.
int ShareOf(int whole, int split, int first, int second) {
    const int wanted = MulDiv(whole, std::clamp(split, 0, kWholeSplit), kWholeSplit);
    // Where there is not enough for both, in proportion.
    if (whole < first + second) return MulDiv(whole, first, first + second);
    return std::clamp(wanted, first, whole - second);
}

void PlaceBeside(Rows& rows, RECT area, const LayoutRequest& request, MainPlaces& places) {
    places.shared = area;
    const int both = WidthOf(area) - rows.X(kSplitter);
    const int split = request.splitBeside > 0 ? request.splitBeside : kUsualBeside;
    RECT list = CutLeft(area, ShareOf(both, split, rows.X(kSmallestList.cx), rows.X(kSmallestEditor.cx)));
    rows.Put(IDC_SPLITTER, CutLeft(area, rows.X(kSplitter)));
    rows.ButtonRow(rows.ButtonPlace(list), kListButtons, false);
    rows.Filter(list);
    rows.View(list);
    rows.ButtonRow(rows.ButtonPlace(area), kEditorButtons, true);
    rows.Editor(area);
}

void PlaceAbove(Rows& rows, RECT area, const LayoutRequest& request, MainPlaces& places) {
    const RECT buttons = rows.ButtonPlace(area);
    rows.ButtonRow(buttons, kListButtons, false);
    rows.ButtonRow(buttons, kEditorButtons, true);
    rows.Filter(area);
    places.shared = area;
    const int both = HeightOf(area) - rows.Y(kSplitter);
    const int split = request.splitAbove > 0 ? request.splitAbove : kUsualAbove;
    rows.View(CutTop(area, ShareOf(both, split, rows.Y(kSmallestList.cy),
                                   rows.Y(kSmallestEditor.cy + LeastPreview(request.hasPreview)))));
    rows.Put(IDC_SPLITTER, CutTop(area, rows.Y(kSplitter)));
    rows.Editor(area);
}

}  // namespace

RECT CutTop(RECT& from, int pixels) {
    RECT cut = from;
    from.top = cut.bottom = from.top + std::clamp(pixels, 0, std::max(HeightOf(from), 0));
    return cut;
}

RECT CutBottom(RECT& from, int pixels) {
    RECT cut = from;
    from.bottom = cut.top = from.bottom - std::clamp(pixels, 0, std::max(HeightOf(from), 0));
    return cut;
}

RECT CutLeft(RECT& from, int pixels) {
    RECT cut = from;
    from.left = cut.right = from.left + std::clamp(pixels, 0, std::max(WidthOf(from), 0));
    return cut;
}

RECT CutRight(RECT& from, int pixels) {
    RECT cut = from;
    from.right = cut.left = from.right - std::clamp(pixels, 0, std::max(WidthOf(from), 0));
    return cut;
}

MainPlaces PlaceControls(const LayoutRequest& request) {
    MainPlaces places;
    Rows rows(request, places);
    RECT area = request.client;
    places.isBeside = WidthOf(area) >= rows.X(kWideWidth);
    CutLeft(area, rows.X(kMargin));
    CutRight(area, rows.X(kMargin));
    CutTop(area, rows.Y(kGap));
    CutBottom(area, rows.Y(kGap));
    (places.isBeside ? PlaceBeside : PlaceAbove)(rows, area, request, places);
    return places;
}

int SplitAt(const MainPlaces& places, int position) {
    const auto splitter = std::find_if(places.controls.begin(), places.controls.end(),
                                       [](const Placed& placed) { return placed.control == IDC_SPLITTER; });
    if (splitter == places.controls.end()) return 0;
    const RECT& bar = splitter->place;
    const int start = static_cast<int>(places.isBeside ? places.shared.left : places.shared.top);
    const int both =
        places.isBeside ? WidthOf(places.shared) - WidthOf(bar) : HeightOf(places.shared) - HeightOf(bar);
    if (both <= 0) return 0;
    // Never 0, which stands for the usual share.
    return std::clamp(MulDiv(position - start, kWholeSplit, both), 1, kWholeSplit);
}

SIZE SmallestClient(const FontUnits& units, bool hasPreview) {
    return {units.X(kSmallestClient.cx), units.Y(kSmallestClient.cy + LeastPreview(hasPreview))};
}

RECT FitInto(RECT place, const RECT& workArea) {
    const LONG width = std::min(place.right - place.left, workArea.right - workArea.left);
    const LONG height = std::min(place.bottom - place.top, workArea.bottom - workArea.top);
    const LONG left = std::clamp(place.left, workArea.left, workArea.right - width);
    const LONG top = std::clamp(place.top, workArea.top, workArea.bottom - height);
    return {left, top, left + width, top + height};
}

}  // namespace verbatix
