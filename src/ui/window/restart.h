// The program started anew, with or without administrator rights, and what else is started with them.
// Everything is saved first; where the new copy does not start, this one goes on running and says so.
#pragma once

namespace verbatix {

// Ends this copy once another one with the same settings file has been started.
void RestartProgram();

// The same with administrator rights, which the user may refuse.
void RestartElevated();

// A command prompt with administrator rights.
void OpenElevatedPrompt();

// Starts the update service and tells what it answers.
void LookForUpdates();

}  // namespace verbatix
