// Entries of other lists into this one.
#pragma once

namespace verbatix {

// Asks for a file and offers to add its entries.
void ImportFromFile();

// The same with the exchange file that another run of the program has written.
void ImportExchangeFile();

}  // namespace verbatix
