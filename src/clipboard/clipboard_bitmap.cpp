#include "clipboard/clipboard_bitmap.h"

#include "clipboard/clipboard_session.h"

namespace verbatix {

UniqueBitmap ClipboardGetBitmap() {
    const ClipboardSession clipboard = ClipboardSession::ForReading();
    const HANDLE bitmap = clipboard ? GetClipboardData(CF_BITMAP) : nullptr;
    if (!bitmap) return UniqueBitmap();
    return UniqueBitmap(static_cast<HBITMAP>(CopyImage(bitmap, IMAGE_BITMAP, 0, 0, 0)));
}

}  // namespace verbatix
