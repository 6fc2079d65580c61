// The calls into the library of the common controls, which is not imported (see system_library.h): Windows
// keeps it side by side, and the manifest says which version is meant. Without it controls and subclasses
// are missing, and nothing else fails. UI thread only.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "base/handle.h"

namespace verbatix {

// Registers the window classes of these ICC_... groups; false when one is missing.
bool RegisterCommonControls(DWORD groups);

// A list of that many square pictures, null when it cannot be made; a picture that cannot be added leaves
// an empty place.
void DestroyImageList(HIMAGELIST list);
using UniqueImageList = UniqueHandle<HIMAGELIST, DestroyImageList>;
UniqueImageList MakeImageList(int edge, int count);
void AddPicture(HIMAGELIST list, HICON picture);

// As SetWindowSubclass, RemoveWindowSubclass and DefSubclassProc.
bool AddSubclass(HWND window, SUBCLASSPROC procedure, UINT_PTR id, DWORD_PTR data = 0);
bool RemoveSubclass(HWND window, SUBCLASSPROC procedure, UINT_PTR id);
LRESULT PassToSubclassed(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace verbatix
