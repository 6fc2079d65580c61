#include "ui/look/view_look.h"

#include <commctrl.h>

#include <utility>

#include "base/handle.h"
#include "base/screen_scale.h"
#include "base/text.h"
#include "ids.h"
#include "store/settings.h"
#include "ui/state/main_window.h"

namespace verbatix {

using UniqueFont = UniqueHandle<HFONT, DeleteObject>;

int ViewSizePercent() {
    constexpr int kPercent[] = {100, 125, 150};
    // A value from a settings file may be any number.
    const int size = settings.size;
    return size >= 0 && size < 3 ? kPercent[size] : kPercent[0];
}

namespace {

struct Fonts {
    UniqueFont dialog;  // as Windows has it for messages
    UniqueFont views;   // in the size that the user has chosen
    UniqueFont text;
};

Fonts MakeFonts(UINT dpi) {
    LOGFONTW look = MessageFont(dpi);
    Fonts made;
    made.dialog.Reset(CreateFontIndirectW(&look));
    look.lfHeight = MulDiv(static_cast<int>(look.lfHeight), ViewSizePercent(), 100);
    made.views.Reset(CreateFontIndirectW(&look));
    if (settings.fixedWidth) {
        look.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
        CopyText(look.lfFaceName, LF_FACESIZE, LF_FACESIZE, L"Consolas");
    }
    made.text.Reset(CreateFontIndirectW(&look));
    return made;
}

void SetFont(HWND control, const UniqueFont& font) {
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font.Get()), TRUE);
}

}  // namespace

void ApplyViewLook(HWND dialog) {
    const HWND list = GetDlgItem(dialog, IDC_LIST);
    ListView_SetExtendedListViewStyleEx(list, LVS_EX_DOUBLEBUFFER,
                                        settings.softPaint ? LVS_EX_DOUBLEBUFFER : 0U);

    static Fonts fonts;
    Fonts made = MakeFonts(mainWindow.dpi);
    for (HWND control = GetWindow(dialog, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT)) {
        const int id = GetDlgCtrlID(control);
        const bool isView = id == IDC_LIST || id == IDC_TREE;
        const bool isText = id == IDC_TEXT || id == IDC_PREVIEW;
        SetFont(control, isText ? made.text : isView ? made.views : made.dialog);
    }
    // Only now: until then the controls draw with those before.
    fonts = std::move(made);
}

}  // namespace verbatix
