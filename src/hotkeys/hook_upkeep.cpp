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

std::wstring HookStatusText(unsigned jumps, unsigned installs) {
    return Format(L"R:%d (%d)", jumps, installs);
}

}  // namespace verbatix
