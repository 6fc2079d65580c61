#include "ui/state/program_client.h"

#include <windows.h>

namespace verbatix {

ProgramClient programClient;

std::wstring ProgramFile() {
    constexpr DWORD kLongestPath = 0x8000;
    std::wstring path(kLongestPath, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), kLongestPath));
    return path;
}

}  // namespace verbatix
