#include "base/system_library.h"

#include <string>

namespace verbatix {

UniqueModule LoadSystemLibrary(const wchar_t* name) {
    // By full path: the flag that asks for the system's folder is newer than Windows 7.
    wchar_t folder[MAX_PATH] = L"";
    const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
    if (length == 0 || length >= MAX_PATH) return {};
    return UniqueModule(LoadLibraryW((std::wstring(folder) + L"\\" + name).c_str()));
}

}  // namespace verbatix
