#include "ui/editor/insertion.h"

#include <windows.h>

#include "ids.h"
#include "store/entry.h"
#include "ui/editor/editor_fields.h"
#include "ui/state/keep_entries.h"
#include "ui/state/main_window.h"

namespace verbatix {

void ReplaceSelectedText(const std::wstring& text) {
    BeginStep();
    SendMessageW(DialogControl(IDC_TEXT), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
    EndStep();
}

void InsertIntoText(const std::wstring& text, bool atStart) {
    const HWND field = DialogControl(IDC_TEXT);
    // What only stands for a text gives way, as it does to what is typed.
    const bool isStandIn = FieldText(IDC_TEXT) == *StoredFromEditorText(L"");
    if (isStandIn || atStart) SendMessageW(field, EM_SETSEL, 0, isStandIn ? -1 : 0);
    ReplaceSelectedText(text);
    SetFocus(field);
}

}  // namespace verbatix
