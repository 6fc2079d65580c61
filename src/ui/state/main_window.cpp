#include "ui/state/main_window.h"

#include "ids.h"
#include "store/settings.h"

namespace verbatix {

MainWindow mainWindow;

HWND DialogControl(int control) {
    return GetDlgItem(mainWindow.window, control);
}

std::wstring FieldText(int control) {
    const HWND window = DialogControl(control);
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

bool IsTreeShown() {
    return settings.showTree && mainWindow.listMode != ListMode::kClashes;
}

bool IsFiltered() {
    return mainWindow.listMode != ListMode::kAll || GetWindowTextLengthW(DialogControl(IDC_FILTER)) > 0;
}

HWND ShownView() {
    return IsTreeShown() ? mainWindow.tree : mainWindow.list;
}

}  // namespace verbatix
