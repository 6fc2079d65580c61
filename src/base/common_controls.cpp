#include "base/common_controls.h"

#include "base/system_library.h"

namespace verbatix {

template <typename Function>
static Function Find(const char* name) {
    // Never unloaded: the procedures of its windows may be called to the very end.
    static const HMODULE library = LoadSystemLibrary(L"comctl32.dll").Release();
    return FindFunction<Function>(library, name);
}

bool RegisterCommonControls(DWORD groups) {
    static const auto call = Find<decltype(&InitCommonControlsEx)>("InitCommonControlsEx");
    const INITCOMMONCONTROLSEX controls = {sizeof controls, groups};
    return call && call(&controls);
}

bool AddSubclass(HWND window, SUBCLASSPROC procedure, UINT_PTR id) {
    static const auto call = Find<decltype(&SetWindowSubclass)>("SetWindowSubclass");
    return call && call(window, procedure, id, 0);
}

bool RemoveSubclass(HWND window, SUBCLASSPROC procedure, UINT_PTR id) {
    static const auto call = Find<decltype(&RemoveWindowSubclass)>("RemoveWindowSubclass");
    return call && call(window, procedure, id);
}

LRESULT PassToSubclassed(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    static const auto call = Find<decltype(&DefSubclassProc)>("DefSubclassProc");
    return call ? call(window, message, wParam, lParam) : DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace verbatix
