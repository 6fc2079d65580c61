// Times as people read them.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace verbatix {

// Date and time, or the time alone, as the user's Windows writes them in short and in the local time zone.
// `seconds` count from 1970 in UTC. Empty for a time that Windows does not know.
std::wstring ShortDateAndTime(std::int64_t seconds);
std::wstring ShortTime(std::int64_t seconds);

}  // namespace verbatix
