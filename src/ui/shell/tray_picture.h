// The picture of the tray icon: the program's own, or that with a mark in its corner which says why hotkeys
// do not do what the user expects.
#pragma once

#include <windows.h>

#include <cstdint>
#include <span>

#include "base/handle.h"

namespace verbatix {

enum class TrayMark { kNone, kPaused, kOutOfReach, kFailing };

// What the picture depends on.
struct TrayLook {
    TrayMark mark = TrayMark::kNone;
    bool isBarLight = false;  // the task bar is
    int side = 16;            // pixels of a small icon there
    bool operator==(const TrayLook&) const = default;
};

// The look without a mark on the task bar as it is now: its colour (before Windows 10 none was light), and
// the resolution of its screen.
TrayLook LookOnTaskBar();

// Draws the mark over the lower right of a picture of that side: the top row of pixels first, each
// 0xAARRGGBB with the colour as it is, not multiplied by alpha. A paused program's picture goes grey. Pure.
void DrawMark(std::span<std::uint32_t> pixels, TrayLook look);

// The picture made of the icon resource of this program. Without a mark it has the system's size of large
// icons, which the task bar scales as it likes; a mark is drawn at the size of small ones, pixel by pixel.
// Where that fails the picture comes without mark; none at all without the resource.
UniqueIcon MakeTrayPicture(WORD resource, TrayLook look);

}  // namespace verbatix
