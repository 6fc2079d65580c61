// The page of a fault report for whoever reads it: version, exception, and the places in the code. It is
// made and written without the heap and without the loader's lock, since the thread that crashed may hold
// either; so neither the standard library's texts nor most of what opens files by name are used here.
#pragma once

#include <string>

#include "app/fault_facts.h"

namespace verbatix {

// Loads what the page needs. Called while all is well.
void PrepareFaultPage(const std::wstring& folder);

// Writes the page into a file of that name in the folder, an older one of the name replaced. False where
// the folder cannot be written.
bool WriteFaultPage(const wchar_t* name, const FaultFacts& facts);

}  // namespace verbatix
