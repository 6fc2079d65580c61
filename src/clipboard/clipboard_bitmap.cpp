#include "clipboard/clipboard_bitmap.h"

#include "clipboard/clipboard_session.h"

namespace verbatix {

UniqueBitmap ClipboardGetBitmap() {
    UniqueBitmap copy;
    ReadClipboard([&] {
        const HANDLE bitmap = GetClipboardData(CF_BITMAP);
        copy.Reset(bitmap ? static_cast<HBITMAP>(CopyImage(bitmap, IMAGE_BITMAP, 0, 0, 0)) : nullptr);
        return true;
    });
    return copy;
}

}  // namespace verbatix
