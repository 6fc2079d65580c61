// Image files as pictures for the clipboard, decoded by GDI+. The library is loaded for the one call and
// let go after it: a program that waits in the background all day does not carry a decoder about.
#pragma once

#include <cstdint>
#include <string>

#include "base/handle.h"

namespace verbatix {

// The bytes that the program can still have, and whether a picture of that size is decoded where so many
// bytes of memory are left. The header of a damaged or malicious file can promise any size.
std::uint64_t MemoryLeft();
bool IsDecodableSize(UINT width, UINT height, std::uint64_t memory);

// The picture in the file as a 32-bit bottom-up device-independent bitmap in one block, the way CF_DIB
// wants it; transparent parts are black. None when the file is no image, is too large or cannot be read.
UniqueGlobal LoadImageAsDib(const std::wstring& path);

}  // namespace verbatix
