#include "base/system_library.h"

#include <string>

namespace verbatix {

// Newer than Windows 7, which has it by an update of 2011.
static void RestrictEverySearch() {
    const auto setFolders =
        FindFunction<BOOL(WINAPI*)(DWORD)>(GetModuleHandleW(L"kernel32.dll"), "SetDefaultDllDirectories");
    if (setFolders) setFolders(LOAD_LIBRARY_SEARCH_SYSTEM32);
}

void SearchSystemFolderOnly() {
    RestrictEverySearch();
    SetDllDirectoryW(L"");  // takes the current folder away where the other function is missing
}

// Whether Windows keeps several versions of the library and leads its bare name to one of them, before any
// folder is searched.
static bool IsKeptSideBySide(const wchar_t* name) {
    ACTCTX_SECTION_KEYED_DATA found = {};
    found.cbSize = sizeof found;
    return FindActCtxSectionStringW(0, nullptr, ACTIVATION_CONTEXT_SECTION_DLL_REDIRECTION, name, &found) !=
           FALSE;
}

static std::wstring PathInSystemFolder(const wchar_t* name) {
    wchar_t folder[MAX_PATH] = L"";
    const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
    if (length == 0 || length >= MAX_PATH) return {};
    return std::wstring(folder, length) + L"\\" + name;
}

UniqueModule LoadSystemLibrary(const wchar_t* name) {
    UniqueModule library(LoadLibraryExW(name, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32));
    if (library || GetLastError() != ERROR_INVALID_PARAMETER) return library;
    // A Windows 7 that does not know the flag. Its GDI+ stands side by side only.
    const std::wstring place = IsKeptSideBySide(name) ? name : PathInSystemFolder(name);
    if (!place.empty()) library.Reset(LoadLibraryW(place.c_str()));
    return library;
}

}  // namespace verbatix
