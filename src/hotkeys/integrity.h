// Programs with more rights than this one: Windows shows a hook none of the keys that they get.
#pragma once

#include <windows.h>

#include <optional>

namespace verbatix {

// Whether keys in a process of the level `theirs` are kept from one of the level `ours`. Nothing: Windows
// did not tell. It keeps a token to itself, as a rule, because the process has more rights.
bool IsOutOfReach(std::optional<DWORD> ours, std::optional<DWORD> theirs);

// Whether the window's program keeps its keys from this one. False for no window and for a window that is
// gone.
bool KeepsKeysFromUs(HWND window);

}  // namespace verbatix
