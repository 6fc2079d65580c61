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

// Writes what the user has made of the window: its place and the widths of the columns.
void RememberLook();

// Saves everything before the program ends. False when something would be lost and the user has not agreed
// to that: a text that is too long stays in its field, and the window comes up with it.
bool SaveForExit();

// Ends the dialog with that code, quits the message loop with code 1 and removes the keyboard hook. Nothing
// is saved.
void LeaveProgram(int dialogCode);

// Both. Where the first one fails the program goes on running.
void ExitProgram(int dialogCode);

// For an end that does not wait for the user: the session ends, another program wants this one to end. The
// window's place is written too.
// A text that is too long is kept in a file beside the backups, which the next start tells of.
void SaveWithoutAsking();
void TellOfUnsavedText();

// The session goes on after all: the text is still in its field, and the file is not needed.
void ForgetUnsavedText();

}  // namespace verbatix
