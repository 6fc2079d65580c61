#include "hotkeys/hook_upkeep.h"

#include <utility>

#include "base/text.h"

namespace verbatix {

bool ClockJumped(ClockWatch& watch, long long seconds) {
    const long long before = std::exchange(watch.storedSeconds, seconds);
    if (seconds <= before + 2 && seconds >= before - 2) return false;
    ++watch.jumps;
    return true;
}

bool HookWasPassedBy(DWORD keyTime, DWORD hookTime) {
    constexpr LONG kLate = 500;
    return static_cast<LONG>(keyTime - hookTime) > kLate;
}

std::wstring HookStatusText(unsigned jumps, unsigned installs) {
    return Format(L"R:%d (%d)", jumps, installs);
}

}  // namespace verbatix
