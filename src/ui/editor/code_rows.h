// How a row of the list of codes looks: the code and what it gives today in one line, its sentence below.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "ui/editor/code_catalogue.h"

namespace verbatix {

// In pixels, for the font of that list box.
int CodeRowHeight(HWND list);

// The row in words, for programs that read the screen out.
std::wstring RowName(const CodeItem& item, std::wstring_view example);

// In the colours of the system or of the dark theme. Without a code the sentence stands alone.
void DrawCodeRow(const DRAWITEMSTRUCT& draw, std::wstring_view token, std::wstring_view meaning,
                 std::wstring_view example);

}  // namespace verbatix
