// What the store tells of the settings file, brought before the user: once, in the window, and where
// something is to be decided as a question. UI thread only.
#pragma once

namespace verbatix {

// To be called before the list is read.
void WatchStore();

// The list has been read, or could not be: says so, and tries again every second until it can.
void OnListRead();

// TIMER_LIST_RETRY: tries once more.
void OnListRetryTimer();

// Asks about damage that was found at start.
void AskAboutFoundDamage();

// Shows the settings file in the user's editor, or says why that is not possible.
void OpenSettingsFile();

}  // namespace verbatix
