#include "ui/look/view_look.h"

#include <commctrl.h>

#include <utility>

#include "base/handle.h"
#include "ids.h"
#include "store/settings.h"

namespace verbatix {

using UniqueFont = UniqueHandle<HFONT, DeleteObject>;

// A value from a settings file may be any number.
static int SizePercent(int size) {
    constexpr int kPercent[] = {100, 125, 150};
    return size >= 0 && size < 3 ? kPercent[size] : kPercent[0];
}

static UniqueFont ScaledFont(HFONT base, int percent) {
    LOGFONTW font = {};
    if (percent == 100 || !GetObjectW(base, sizeof font, &font)) return {};
    font.lfHeight = MulDiv(static_cast<int>(font.lfHeight), percent, 100);
    return UniqueFont(CreateFontIndirectW(&font));
}

void ApplyViewLook(HWND dialog) {
    const HWND list = GetDlgItem(dialog, IDC_LIST);
    ListView_SetExtendedListViewStyleEx(list, LVS_EX_DOUBLEBUFFER,
                                        settings.softPaint ? LVS_EX_DOUBLEBUFFER : 0U);

    static UniqueFont font;
    const auto base = reinterpret_cast<HFONT>(SendMessageW(dialog, WM_GETFONT, 0, 0));
    UniqueFont scaled = ScaledFont(base, SizePercent(settings.size));
    const HFONT used = scaled ? scaled.Get() : base;
    for (const int control : {IDC_LIST, IDC_TREE, IDC_TEXT, IDC_PREVIEW}) {
        SendDlgItemMessageW(dialog, control, WM_SETFONT, reinterpret_cast<WPARAM>(used), TRUE);
    }
    // Only now: until then the controls draw with the one before.
    font = std::move(scaled);
}

}  // namespace verbatix
