// A picture as C source text, for programs that carry it inside themselves.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace verbatix {

// The lines "int xs=...;" and "int ys=...;" (width and height in pixels) and the array "img_data" with
// `bytes`, kSourceBytesPerLine of them a line, ended by an extra 0. Lines end in CR LF.
inline constexpr int kSourceBytesPerLine = 32;  // eight pixels
std::wstring BitmapSourceText(int width, int height, std::span<const std::uint8_t> bytes);

}  // namespace verbatix
