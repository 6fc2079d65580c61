#include "paste/builtin/shell_browser.h"

namespace verbatix {

// A shell browser's window answers it with the address of its IShellBrowser, meant for its own process.
constexpr UINT kGetShellBrowser = WM_USER + 7;

bool BelongsToShellBrowser(HWND window) {
    for (int generation = 0; generation < 4 && window; ++generation) {
        DWORD_PTR answer = 0;
        // With a time limit: a foreign window that hangs must not take this program with it.
        if (SendMessageTimeoutW(window, kGetShellBrowser, 0, 0, SMTO_ABORTIFHUNG, 2000, &answer) &&
            answer) {
            return true;
        }
        window = GetParent(window);
    }
    return false;
}

}  // namespace verbatix
