// Help > About: version, settings file, state of the hotkeys, and a button that copies details for a
// report.
#pragma once

namespace verbatix {

// Shows the box until the user closes it.
void ShowAbout();

}  // namespace verbatix
