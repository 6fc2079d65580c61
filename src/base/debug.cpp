#include "base/debug.h"

#include <windows.h>

#include <cstdarg>
#include <cwchar>

namespace verbatix {

void DebugLine(const wchar_t* format, ...) {
    wchar_t line[512];
    std::va_list arguments;
    va_start(arguments, format);
    _vsnwprintf(line, sizeof line / sizeof *line - 1, format, arguments);
    va_end(arguments);
    line[sizeof line / sizeof *line - 1] = L'\0';
    OutputDebugStringW(line);
}

}  // namespace verbatix
