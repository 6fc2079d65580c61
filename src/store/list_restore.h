// Another list in the place of the one that the settings file holds, where the user says so. UI thread
// only.
#pragma once

#include <string>

#include "store/list_file.h"

namespace verbatix {

// Where damage was found at start: tells of it and asks which content to go on with. Where the user chooses
// a copy, that becomes the settings file, and options and list are read anew: true then. A refusal makes
// what is left whole. Does nothing where there was no damage.
bool AskAboutDamage(EntryList& list, const ListClient& client);

// Offers the list of a copy that was kept of the settings file. On Yes the list so far goes into a copy in
// its turn, and the other one is read: true then.
bool OfferKeptList(EntryList& list, const ListClient& client, const std::wstring& copy);

}  // namespace verbatix
