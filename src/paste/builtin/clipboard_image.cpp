#include "paste/builtin/clipboard_image.h"

#include <cstdint>
#include <string>
#include <vector>

#include "base/text.h"
#include "clipboard/clipboard_session.h"
#include "clipboard/clipboard_text.h"
#include "clipboard/paste_content.h"
#include "clipboard/saved_clipboard.h"
#include "hotkeys/foreground.h"
#include "hotkeys/key_simulation.h"
#include "hotkeys/pause.h"
#include "hotkeys/stroke_target.h"
#include "paste/builtin/bitmap_source.h"
#include "paste/builtin/gdi_plus.h"

namespace verbatix {

namespace {

using UniqueDc = UniqueHandle<HDC, DeleteDC>;

void Tell(const std::wstring& text) {
    ShowBoxInFront(nullptr, text, L"");
}

UniqueBitmap CopyBitmap() {
    if (!SendCopy()) return {};
    AwaitCopy(200);
    return ClipboardGetBitmap();
}

BITMAP Describe(HBITMAP bitmap) {
    BITMAP description = {};
    if (!GetObjectW(bitmap, sizeof description, &description)) return {};
    return description;
}

std::int64_t PixelCount(const BITMAP& description) {
    return static_cast<std::int64_t>(description.bmWidth) * description.bmHeight;
}

// A copy for each attempt: what the clipboard has taken is its own, also where another program took the
// clipboard over. Without one there is nothing to paste.
bool GiveCopy(HBITMAP bitmap) {
    UniqueBitmap copy(static_cast<HBITMAP>(CopyImage(bitmap, IMAGE_BITMAP, 0, 0, 0)));
    if (!copy || !SetClipboardData(CF_BITMAP, copy.Get())) return false;
    copy.Release();
    MarkForHistory(StayOfPastes());
    return true;
}

void PutBitmap(const UniqueBitmap& bitmap) {
    if (!FillClipboard(kClipboardPatience, [&] { return GiveCopy(bitmap.Get()); })) WithholdStrokes();
}

}  // namespace

PixelImage ReadPixels(HBITMAP bitmap) {
    const BITMAP description = Describe(bitmap);
    if (description.bmWidth <= 0 || description.bmHeight <= 0) return {};
    const auto width = static_cast<UINT>(description.bmWidth);
    if (!IsDecodableSize(width, static_cast<UINT>(description.bmHeight), MemoryLeft())) return {};
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = description.bmWidth;
    info.bmiHeader.biHeight = -description.bmHeight;  // negative: the top row comes first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    PixelImage image = {description.bmWidth, description.bmHeight, {}};
    image.pixels.resize(static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height));
    const UniqueDc context(CreateCompatibleDC(nullptr));
    const int rows = GetDIBits(context.Get(), bitmap, 0, static_cast<UINT>(image.height),
                               image.pixels.data(), &info, DIB_RGB_COLORS);
    if (rows != image.height) return {};
    return image;
}

UniqueBitmap MakeBitmap(const PixelImage& image) {
    return UniqueBitmap(CreateBitmap(image.width, image.height, 1, 32, image.pixels.data()));
}

void CropClipboardImage(std::wstring_view argument) {
    const UniqueBitmap bitmap = CopyBitmap();
    if (!bitmap) return Tell(L"No-HBitmap");
    const BITMAP description = Describe(bitmap.Get());
    const PixelImage image = ReadPixels(bitmap.Get());
    if (image.pixels.empty()) {
        return Tell(Format(L"No-Bitmap-Pix\n\nWidthBytes: %d bmWidth:%d bmBitsPixel:%d hb:%d",
                           description.bmWidthBytes, description.bmWidth, description.bmBitsPixel,
                           HandleToLong(bitmap.Get())));
    }
    if (description.bmBitsPixel != 32) return Tell(L"Bitmap 32 Bit ?");
    const std::vector<std::wstring_view> pieces = Split(argument, L':');
    const int margin = pieces.size() > 1 ? ToInt(pieces[1]) : 0;
    const UniqueBitmap cropped = MakeBitmap(Crop(image, FindContent(image, margin)));
    ClearForCopy();
    Pause(100);
    if (cropped) PutBitmap(cropped);
    Pause(100);
    SendPaste(20);
}

void ClipboardImageToSource() {
    const UniqueBitmap bitmap = CopyBitmap();
    if (StrokeAim() != Aim::Free) return;
    const BITMAP description = Describe(bitmap.Get());
    if (PixelCount(description) > kMaxSourcePixels) {
        return Tell(
            Format(L"Bitmap > 10 Mega-Pixel\n\n%d x %d", description.bmWidth, description.bmHeight));
    }
    const PixelImage image = ReadPixels(bitmap.Get());
    if (image.pixels.empty()) return Tell(L"No HBITMAP");
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(image.pixels.data());
    const std::size_t size = image.pixels.size() * sizeof image.pixels[0];
    if (!ClipboardPutText(BitmapSourceText(image.width, image.height, {bytes, size}))) WithholdStrokes();
    keepClipboardOnce = true;
}

}  // namespace verbatix
