// The picture on the clipboard.
#pragma once

#include <windows.h>

#include "base/handle.h"

namespace verbatix {

using UniqueBitmap = UniqueHandle<HBITMAP, DeleteObject>;

// A copy of the clipboard's bitmap; none when the clipboard is busy or holds no bitmap, nor anything that
// Windows makes one of.
UniqueBitmap ClipboardGetBitmap();

}  // namespace verbatix
