#include "menu/menu_input.h"

namespace verbatix {

static MenuInput DecideAlt(MenuInputState& state, bool down, DWORD time) {
    const bool isOwn = static_cast<LONG>(time - state.openedAt) <= 0;  // the clock may wrap
    if (down) {
        if (!isOwn) state.altDown = true;
        return MenuInput::Swallow;
    }
    if (!state.altDown) return MenuInput::Pass;
    state.altDown = false;
    return MenuInput::Close;
}

static MenuInput DecideKey(MenuInputState& state, const MSG& message, bool down) {
    return message.wParam == VK_MENU ? DecideAlt(state, down, message.time) : MenuInput::Pass;
}

MenuInput DecideMenuInput(MenuInputState& state, const MSG& message) {
    switch (message.message) {
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN: state.lastWasButtonDown = false; return DecideKey(state, message, true);
        case WM_KEYUP:
        case WM_SYSKEYUP: return DecideKey(state, message, false);
        case WM_LBUTTONDOWN:
        case WM_RBUTTONDOWN:
        case WM_MBUTTONDOWN:
        case WM_NCLBUTTONDOWN:
        case WM_NCRBUTTONDOWN:
        case WM_NCMBUTTONDOWN:
            state.buttonWasPressed = true;
            state.lastWasButtonDown = true;
            state.buttonPoint = message.pt;
            return MenuInput::Pass;
        case WM_LBUTTONUP:
        case WM_RBUTTONUP:
        case WM_MBUTTONUP:
            state.lastWasButtonDown = false;
            return state.buttonWasPressed ? MenuInput::Pass : MenuInput::Swallow;
        default: return MenuInput::Pass;
    }
}

}  // namespace verbatix
