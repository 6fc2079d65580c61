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

void DestroyImageList(HIMAGELIST list) {
    static const auto call = Find<decltype(&ImageList_Destroy)>("ImageList_Destroy");
    if (call) call(list);
}

UniqueImageList MakeImageList(int edge, int count) {
    static const auto call = Find<decltype(&ImageList_Create)>("ImageList_Create");
    return UniqueImageList(call ? call(edge, edge, ILC_COLOR32 | ILC_MASK, count, 0) : nullptr);
}

void AddPicture(HIMAGELIST list, HICON picture) {
    static const auto resize = Find<BOOL(WINAPI*)(HIMAGELIST, UINT)>("ImageList_SetImageCount");
    static const auto count = Find<decltype(&ImageList_GetImageCount)>("ImageList_GetImageCount");
    static const auto replace = Find<decltype(&ImageList_ReplaceIcon)>("ImageList_ReplaceIcon");
    if (!list || !resize || !count || !replace) return;
    const int last = count(list);
    if (resize(list, static_cast<UINT>(last) + 1) && picture) replace(list, last, picture);
}

bool AddSubclass(HWND window, SUBCLASSPROC procedure, UINT_PTR id, DWORD_PTR data) {
    static const auto call = Find<decltype(&SetWindowSubclass)>("SetWindowSubclass");
    return call && call(window, procedure, id, data);
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
