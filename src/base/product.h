// The program's name, as it is shown and as it names files, the mutex and the window message.
#pragma once

namespace verbatix {

inline constexpr wchar_t kProductName[] = L"Verbatix";

}  // namespace verbatix
