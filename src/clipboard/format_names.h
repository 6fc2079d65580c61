// Display names of clipboard formats: what a program registered, or this module's own names for the
// standard formats. The names are for people and for finding a format; data is never put back by name.
#pragma once

#include <windows.h>

namespace verbatix {

// Room for a format's name with its terminator; Windows cuts longer ones.
constexpr int kFormatNameCapacity = 256;

// With a format id: fills `name` with the registered name, else the standard one, else an empty text, and
// returns 0. With id 0: returns the standard format whose name is in `name` (any case; the first match
// counts), or 0 when there is none; registered names are not searched.
UINT ClipboardFormatName(UINT format, wchar_t (&name)[kFormatNameCapacity]);

}  // namespace verbatix
