// The ways out of the main window: hidden, in the tray, minimised, ended.
#pragma once

namespace verbatix {

// Hides the window and makes sure that the tray icon is there to get it back. The first time in the life
// of a settings file the user is told so.
void HideMainWindow();

// Shows the window shrinking into the tray and hides it; the keyboard hook is installed anew unless
// hotkeys are paused.
void SendToTray();

// What the close button does by the options: hide, send to the tray, or end the program.
void CloseMainWindow();

// What the minimise button does: into the tray if that option is on and the window is active, otherwise
// nothing at all. The window is never minimised in the ordinary way, because without a button in the task
// bar it would be out of reach.
void MinimizeMainWindow();

// Ends the program: ends the dialog with that code, remembers the window's place, quits the message loop
// with code 1 and removes the keyboard hook.
void ExitProgram(int dialogCode);

}  // namespace verbatix
