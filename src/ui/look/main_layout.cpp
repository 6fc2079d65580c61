#include "ui/look/main_layout.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>

#include "ids.h"
#include "store/settings.h"
#include "ui/state/main_window.h"

namespace verbatix {

namespace {

// Dialog units.
constexpr int kMargin = 6;
constexpr int kGap = 4;
constexpr int kFieldHeight = 13;
constexpr int kCaptionHeight = 9;
constexpr int kButtonHeight = 14;
constexpr int kButtonWidth = 54;
constexpr int kModifierWidth = 92;
constexpr int kKeyWidth = 56;
constexpr int kFilterCaptionWidth = 34;
constexpr int kCounterWidth = 120;
constexpr int kKeepPathsWidth = 76;
constexpr int kDropDownHeight = 130;
// Between filter and buttons everything but list and text is of fixed height.
constexpr int kListPercent = 52;
constexpr int kPreviewCaptionWidth = 44;
constexpr int kPreviewPercent = 15;
constexpr int kPreviewLeast = 27;  // three lines

class Layout {
  public:
    explicit Layout(HWND dialog) : dialog_(dialog) {}

    int X(int units) const { return Pixels(units, 0).cx; }
    int Y(int units) const { return Pixels(0, units).cy; }
    void Place(int control, int x, int y, int width, int height) const {
        // Drawn anew: what a maximised window copies along may not have been drawn yet.
        SetWindowPos(GetDlgItem(dialog_, control), nullptr, x, y, std::max(width, 0), std::max(height, 0),
                     SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
    }

  private:
    SIZE Pixels(int width, int height) const {
        RECT units = {0, 0, width, height};
        MapDialogRect(dialog_, &units);
        return {units.right, units.bottom};
    }

    HWND dialog_;
};

// Each places a row at `y` and returns where the next begins.
int PlaceFilter(const Layout& at, int width, int y) {
    const int left = at.X(kMargin + kFilterCaptionWidth);
    at.Place(IDC_FILTER_CAPTION, at.X(kMargin), y + at.Y(2), at.X(kFilterCaptionWidth),
             at.Y(kCaptionHeight));
    at.Place(IDC_FILTER, left, y, width - left - at.X(kMargin), at.Y(kFieldHeight));
    return y + at.Y(kFieldHeight + kGap);
}

int PlaceHotkeyRow(const Layout& at, int width, int y) {
    const int key = width - at.X(kMargin + kKeyWidth);
    const int modifier = key - at.X(kGap + kModifierWidth);
    const int label = at.X(kMargin);
    const int labelWidth = modifier - at.X(kGap) - label;
    at.Place(IDC_LABEL_CAPTION, label, y, labelWidth, at.Y(kCaptionHeight));
    at.Place(IDC_MODIFIER_CAPTION, modifier, y, at.X(kModifierWidth), at.Y(kCaptionHeight));
    at.Place(IDC_KEY_CAPTION, key, y, at.X(kKeyWidth), at.Y(kCaptionHeight));
    y += at.Y(kCaptionHeight);
    at.Place(IDC_LABEL, label, y, labelWidth, at.Y(kFieldHeight));
    at.Place(IDC_MODIFIER, modifier, y, at.X(kModifierWidth), at.Y(kDropDownHeight));
    at.Place(IDC_KEY, key, y, at.X(kKeyWidth), at.Y(kDropDownHeight));
    y += at.Y(kFieldHeight + 2);
    // Beside what it says, where the entry has a path to keep.
    const bool keepsPaths = GetWindowLongPtrW(DialogControl(IDC_KEEP_PATHS), GWL_STYLE) & WS_VISIBLE;
    const int button = keepsPaths ? at.X(kKeepPathsWidth) : 0;
    at.Place(IDC_CLASH, label, y, width - 2 * label - button, at.Y(kCaptionHeight));
    at.Place(IDC_KEEP_PATHS, width - label - button, y - at.Y(1), button, at.Y(kCaptionHeight + 2));
    return y + at.Y(kCaptionHeight + 1);
}

int PlaceTextCaption(const Layout& at, int width, int y) {
    const int counter = at.X(kCounterWidth);
    const int left = at.X(kMargin);
    at.Place(IDC_TEXT_CAPTION, left, y, width - 2 * left - counter, at.Y(kCaptionHeight));
    at.Place(IDC_COUNTER, width - left - counter, y, counter, at.Y(kCaptionHeight));
    return y + at.Y(kCaptionHeight);
}

// How much of `shared` the preview takes, its caption included.
int PreviewHeight(const Layout& at, int shared) {
    if (!settings.showPreview) return 0;
    const int box = std::max(at.Y(kPreviewLeast), shared * kPreviewPercent / 100);
    return at.Y(kGap + kCaptionHeight) + box;
}

void PlacePreview(const Layout& at, int width, int bottom, int height) {
    if (height == 0) return;
    const int left = at.X(kMargin);
    int y = bottom - height + at.Y(kGap);
    const int caption = at.X(kPreviewCaptionWidth);
    at.Place(IDC_PREVIEW_CAPTION, left, y, caption, at.Y(kCaptionHeight));
    at.Place(IDC_MEND_CODE, left + caption, y - at.Y(2), width - 2 * left - caption,
             at.Y(kCaptionHeight + 2));
    y += at.Y(kCaptionHeight);
    at.Place(IDC_PREVIEW, left, y, width - 2 * left, bottom - y);
}

void PlaceButtons(const Layout& at, int width, int y) {
    const int step = at.X(kButtonWidth + kGap);
    int left = at.X(kMargin);
    for (const int button : {CMD_NEW_ENTRY, CMD_COPY_ENTRY, CMD_DELETE_ENTRY}) {
        at.Place(button, left, y, at.X(kButtonWidth), at.Y(kButtonHeight));
        left += step;
    }
    left = width - at.X(kMargin) + at.X(kGap) - 2 * step;
    for (const int button : {IDC_INSERT, CMD_TEST_ENTRY}) {
        at.Place(button, left, y, at.X(kButtonWidth), at.Y(kButtonHeight));
        left += step;
    }
}

int PlaceStatusBar(int width) {
    SendMessageW(mainWindow.statusBar, WM_SIZE, 0, 0);
    RECT status = {};
    GetWindowRect(mainWindow.statusBar, &status);
    // The second part has room for the longest of its texts, which says why no hotkey works; the third is
    // not used.
    const int parts[] = {width * 28 / 100, width * 86 / 100, width * 86 / 100, -1};
    SendMessageW(mainWindow.statusBar, SB_SETPARTS, std::size(parts), reinterpret_cast<LPARAM>(parts));
    return static_cast<int>(status.bottom - status.top);
}

}  // namespace

void LayOutControls(HWND dialog) {
    RECT client;
    GetClientRect(dialog, &client);
    const int width = static_cast<int>(client.right);
    const int bottom = static_cast<int>(client.bottom) - PlaceStatusBar(width);
    const Layout at(dialog);

    const int list = PlaceFilter(at, width, at.Y(kGap));
    const int buttons = bottom - at.Y(kGap + kButtonHeight);
    const int fixed = at.Y(kGap + kCaptionHeight + kFieldHeight + 2 + kCaptionHeight + 1 + kCaptionHeight);
    const int whole = buttons - at.Y(kGap) - list - fixed;
    const int preview = PreviewHeight(at, whole);
    const int shared = whole - preview;
    const int listHeight = shared * kListPercent / 100;
    for (const int view : {IDC_LIST, IDC_TREE}) {
        at.Place(view, at.X(kMargin), list, width - 2 * at.X(kMargin), listHeight);
    }
    int y = PlaceHotkeyRow(at, width, list + listHeight + at.Y(kGap));
    y = PlaceTextCaption(at, width, y);
    const int end = buttons - at.Y(kGap);
    at.Place(IDC_TEXT, at.X(kMargin), y, width - 2 * at.X(kMargin), end - preview - y);
    PlacePreview(at, width, end, preview);
    PlaceButtons(at, width, buttons);
}

void GiveComfortableSize(HWND dialog) {
    RECT place;
    GetWindowRect(dialog, &place);
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    if (!GetMonitorInfoW(MonitorFromWindow(dialog, MONITOR_DEFAULTTONEAREST), &monitor)) return;
    const RECT& work = monitor.rcWork;
    const LONG width = std::min((place.right - place.left) * 3 / 2, work.right - work.left);
    const LONG height = std::min((place.bottom - place.top) * 3 / 2, work.bottom - work.top);
    SetWindowPos(dialog, nullptr, static_cast<int>((work.left + work.right - width) / 2),
                 static_cast<int>((work.top + work.bottom - height) / 2), static_cast<int>(width),
                 static_cast<int>(height), SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace verbatix
