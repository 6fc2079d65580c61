// The program's name, as it is shown and as it names files, the mutex and the window message; and its
// version.
#pragma once

namespace verbatix {

inline constexpr wchar_t kProductName[] = L"Verbatix";

// "1.2.3", from the one place where the build keeps it.
extern const wchar_t kProductVersion[];

}  // namespace verbatix
