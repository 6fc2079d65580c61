#include "support/message_box.h"

#include <windows.h>

#include "support/process.h"

namespace verbatix::test {

static HWND OwnMessageBox() {
    for (HWND box = nullptr; (box = FindWindowExW(nullptr, box, L"#32770", nullptr)) != nullptr;) {
        DWORD process = 0;
        GetWindowThreadProcessId(box, &process);
        if (process == GetCurrentProcessId() && IsWindowVisible(box)) return box;
    }
    return nullptr;
}

static int CountButtons(HWND box) {
    int count = 0;
    for (HWND child = nullptr; (child = FindWindowExW(box, child, L"Button", nullptr)) != nullptr;) ++count;
    return count;
}

MessageBoxAnswer::MessageBoxAnswer() : thread_([this] { Watch(); }) {}

MessageBoxAnswer::~MessageBoxAnswer() {
    Seen();
}

bool MessageBoxAnswer::Seen() {
    stop_ = true;
    if (thread_.joinable()) thread_.join();
    return seen_;
}

void MessageBoxAnswer::Watch() {
    HWND box = nullptr;
    while (!stop_ && (box = OwnMessageBox()) == nullptr) Sleep(5);
    if (!box) return;
    seen_ = true;
    caption_ = WindowText(box);
    for (HWND child = nullptr; (child = FindWindowExW(box, child, L"Static", nullptr)) != nullptr;) {
        // A picture is a static control without text.
        if (const std::wstring text = WindowText(child); !text.empty()) text_ = text;
    }
    buttons_ = CountButtons(box);
    hasOwner_ = GetWindow(box, GW_OWNER) != nullptr;
    // The box may not take keys yet, so the answer is repeated until it is gone.
    while (IsWindow(box)) {
        PostMessageW(box, WM_COMMAND, LOWORD(SendMessageW(box, DM_GETDEFID, 0, 0)), 0);
        Sleep(20);
    }
}

}  // namespace verbatix::test
