// Image files on the clipboard: as a bitmap that every program takes, and as the file's own bytes for
// those that know the file's format and its transparency.
#pragma once

#include <string>
#include <string_view>

namespace verbatix {

// The clipboard format for a file that begins so: "GIF", "PNG" or "JFIF"; null when there are not more
// than 3 bytes to judge by.
const wchar_t* ImageFormatName(std::string_view bytes);

// Puts the image in the file on the clipboard and pastes it, 20 ms later. White space around the path is
// ignored. False when the file is no image: the clipboard is left empty then, so that no paste brings
// what was there before, and nothing is pasted. When the clipboard is busy it stays as it is and the result
// is true. A file
// that holds an image but cannot be read once more is told to the user; its bitmap is pasted still. One
// that does not answer for 10 s, or is not read within 60 s, counts as no image. Pictures and files are as
// large as the memory allows, the file's own bytes below 4 GB. Sets keepClipboardOnce except when it fails.
bool ImageFileToClipboard(std::wstring_view path);

}  // namespace verbatix
