// Sees the key events that reach the end of the hook chain: what a later hook, and then the program in
// front, gets to see. Make it before the hook under test is installed; the hook installed last is asked
// first.
#pragma once

#include <windows.h>

#include <atomic>
#include <ostream>
#include <vector>

#include "support/message_thread.h"
#include "support/shared_list.h"

namespace verbatix::test {

struct SeenKey {
    DWORD key;
    bool up;
    ULONG_PTR tag;
    bool operator==(const SeenKey&) const = default;
};

inline void PrintTo(const SeenKey& seen, std::ostream* out) {
    *out << seen.key << (seen.up ? " up" : " down") << (seen.tag ? " tagged" : "");
}

class KeyWatch {
  public:
    KeyWatch() {
        Take();
        thread_.Run(
            [] { hook = SetWindowsHookExW(WH_KEYBOARD_LL, Procedure, GetModuleHandleW(nullptr), 0); });
    }
    ~KeyWatch() {
        thread_.Run([] { UnhookWindowsHookEx(hook); });
    }

    // What was seen since the last call.
    static std::vector<SeenKey> Take() { return seen.Take(); }

    // Of the last event.
    inline static std::atomic<DWORD> scanCode;

  private:
    // Wine shows a hook the neutral code that was sent, Windows the sided one it stands for.
    static DWORD SidedKey(const KBDLLHOOKSTRUCT& event) {
        const bool extended = (event.flags & LLKHF_EXTENDED) != 0;
        if (event.vkCode == VK_CONTROL) return extended ? VK_RCONTROL : VK_LCONTROL;
        if (event.vkCode == VK_MENU) return extended ? VK_RMENU : VK_LMENU;
        return event.vkCode;
    }

    static LRESULT CALLBACK Procedure(int code, WPARAM message, LPARAM parameter) noexcept {
        const auto& event = *reinterpret_cast<const KBDLLHOOKSTRUCT*>(parameter);
        scanCode = event.scanCode;
        seen.Add({SidedKey(event), (event.flags & LLKHF_UP) != 0, event.dwExtraInfo});
        return CallNextHookEx(nullptr, code, message, parameter);
    }

    inline static HHOOK hook;
    inline static SharedList<SeenKey> seen;
    MessageThread thread_;
};

}  // namespace verbatix::test
