// Built-in tools for the picture that the foreground program copies. Each lets it copy first and blocks
// 200 ms for that; what is wrong is told in a message box. The message texts are known to users as they
// are and stay so.
#pragma once

#include <windows.h>

#include <string_view>

#include "clipboard/clipboard_bitmap.h"
#include "paste/builtin/image_crop.h"

namespace verbatix {

// The largest picture that becomes source text: at about 16 characters a pixel the text takes 320 MB.
inline constexpr UINT kMaxSourcePixels = 10'000'000;

// Crops the picture to its content and pastes it. `argument` is what follows the command's name; the number
// after its first ":" says how many pixels of the border stay around the content (none without it).
void CropClipboardImage(std::wstring_view argument);

// Replaces the picture on the clipboard by its bytes as C source text, each pixel blue, green, red and
// alpha, from the top row down. Sets keepClipboardOnce when it does.
void ClipboardImageToSource();

// The bitmap's pixels; empty when they cannot be read or the memory does not
// allow for it, for a part of it and for a new bitmap.
PixelImage ReadPixels(HBITMAP bitmap);

// A bitmap of those pixels, fit for CF_BITMAP; none when it cannot be made.
UniqueBitmap MakeBitmap(const PixelImage& image);

}  // namespace verbatix
