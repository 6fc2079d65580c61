#include "ui/state/timed_pause.h"

#include <ctime>
#include <optional>

#include "base/local_time.h"
#include "hotkeys/keyboard_hook.h"

namespace verbatix {

static std::optional<PauseEnd> pauseEnd;

bool IsPauseOver(const PauseEnd& end, ULONGLONG tick, std::int64_t time) {
    return tick >= end.tick || time >= end.time;
}

std::int64_t ShownPauseEnd(const PauseEnd& end, ULONGLONG tick, std::int64_t time) {
    // The clocks do not tick together, and the shown minute must not change to and fro.
    constexpr std::int64_t kTolerance = 30;
    if (IsPauseOver(end, tick, time)) return time;
    const std::int64_t byTick = time + static_cast<std::int64_t>((end.tick - tick) / 1000);
    return byTick + kTolerance < end.time ? byTick : end.time;
}

void PauseHotkeys(bool paused) {
    pauseEnd.reset();
    if (keyboardHook.off != paused) ToggleKeyboardHook();
}

void PauseHotkeysForAnHour() {
    constexpr int kSeconds = 3600;
    PauseHotkeys(true);
    pauseEnd = {GetTickCount64() + kSeconds * 1000ULL, std::time(nullptr) + kSeconds};
}

bool IsPausedForATime() {
    return pauseEnd.has_value();
}

std::wstring PauseEndText() {
    if (!pauseEnd) return {};
    return ShortTime(ShownPauseEnd(*pauseEnd, GetTickCount64(), std::time(nullptr)));
}

bool EndPauseInTime() {
    if (!pauseEnd || !IsPauseOver(*pauseEnd, GetTickCount64(), std::time(nullptr))) return false;
    PauseHotkeys(false);
    return true;
}

}  // namespace verbatix
