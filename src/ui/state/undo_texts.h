// How a step that can be taken back is called. Nothing fails.
#pragma once

#include <string>

#include "ui/state/undo_history.h"

namespace verbatix {

// What was done, as the menu names it: "delete of 'Greeting'".
std::wstring ActionName(const Action& action);

// The same when it has just happened: "Deleted 'Greeting'."; empty where the user sees it happen anyway.
std::wstring DoneText(const Action& action);

}  // namespace verbatix
