// Somebody else's file manager: a window in which the files given as arguments (all of one folder) are
// selected. It answers the copy stroke as the shell's own view does, with the shell's data object.
#include <windows.h>

#include <ole2.h>
#include <shellapi.h>
#include <shlobj.h>

#include <vector>

static std::vector<LPITEMIDLIST> selection;

static void CopySelection() {
    IShellFolder* folder = nullptr;
    IDataObject* data = nullptr;
    std::vector<LPCITEMIDLIST> items;
    for (LPCITEMIDLIST whole : selection) {
        LPCITEMIDLIST item = nullptr;
        if (folder) folder->Release();
        if (FAILED(SHBindToParent(whole, IID_IShellFolder, reinterpret_cast<void**>(&folder), &item)))
            return;
        items.push_back(item);
    }
    if (!folder) return;
    if (SUCCEEDED(folder->GetUIObjectOf(nullptr, static_cast<UINT>(items.size()), items.data(),
                                        IID_IDataObject, nullptr, reinterpret_cast<void**>(&data)))) {
        OleSetClipboard(data);
        data->Release();
    }
    folder->Release();
}

static LRESULT CALLBACK ViewProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_KEYDOWN:
            if (wParam == 'C' && GetKeyState(VK_CONTROL) < 0) CopySelection();
            return 0;
        case WM_DESTROY: PostQuitMessage(0); return 0;
        default: return DefWindowProcW(window, message, wParam, lParam);
    }
}

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR commandLine, int) {
    if (FAILED(OleInitialize(nullptr))) return 1;
    int count = 0;
    PWSTR* const paths = *commandLine ? CommandLineToArgvW(commandLine, &count) : nullptr;
    for (int index = 0; index < count; ++index) {
        if (const LPITEMIDLIST item = ILCreateFromPathW(paths[index])) selection.push_back(item);
    }
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = ViewProcedure;
    windowClass.hInstance = instance;
    windowClass.lpszClassName = L"VerbatixTestShellView";
    RegisterClassW(&windowClass);
    const HWND window = CreateWindowExW(0, windowClass.lpszClassName, L"Files", WS_OVERLAPPEDWINDOW, 100,
                                        100, 300, 200, nullptr, nullptr, instance, nullptr);
    ShowWindow(window, SW_SHOW);
    SetForegroundWindow(window);
    SetFocus(window);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    OleUninitialize();
    return 0;
}
