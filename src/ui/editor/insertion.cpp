#include "ui/editor/insertion.h"

#include <windows.h>

#include "ids.h"
#include "ui/state/main_window.h"

namespace verbatix {

void InsertIntoText(const std::wstring& text, bool atStart) {
    const HWND field = DialogControl(IDC_TEXT);
    if (atStart) SendMessageW(field, EM_SETSEL, 0, 0);
    SendMessageW(field, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
    SetFocus(field);
}

}  // namespace verbatix
