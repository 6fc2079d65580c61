// Diagnostic lines for a debugger or a debug-output viewer; nothing is written anywhere else.
#pragma once

namespace verbatix {

// printf to OutputDebugStringW. Wide string arguments are written %ls. The line end is the caller's.
void DebugLine(const wchar_t* format, ...);

}  // namespace verbatix
