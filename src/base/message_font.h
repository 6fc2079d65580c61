// Dialogs from templates, in the font that the user has chosen in Windows for messages and not the
// template's: what is measured in dialog units grows and shrinks with it. UI thread only.
#pragma once

#include <windows.h>

#include <span>
#include <vector>

namespace verbatix {

// A DIALOGEX template with that font in place of its own; empty when it is none, or has no font.
std::vector<BYTE> WithFont(std::span<const BYTE> dialogTemplate, const LOGFONTW& font, WORD points);

// As DialogBoxParam and CreateDialogParam, for a template of this program. With the template's font where
// the other cannot be put in.
INT_PTR RunDialog(int dialog, HWND owner, DLGPROC procedure, LPARAM param);
HWND CreateDialogWindow(int dialog, HWND owner, DLGPROC procedure, LPARAM param);

}  // namespace verbatix
