// Ways of looking at the list that leave most of it out: the entries that were never used, and those that
// clash. A line at the bottom of the window says so; a click on it or Esc leads back to the whole list. UI
// thread only.
#pragma once

#include <string>
#include <vector>

namespace verbatix {

// Of the rows that the filter has left, in the order of the list or sorted, those that the mode shows, in
// its order. `pinned` stays, whatever it has become.
std::vector<int> RowsOfMode(std::vector<int> rows, int pinned);

// Why the entry at that position is among the clashes.
std::wstring ClashText(int position);

// The line about the mode, for so many rows; empty where all entries are shown. And what stands in the
// place of the rows where there are none.
std::wstring ModeLine(std::size_t rows);
std::wstring ModeEmptyNote();

}  // namespace verbatix
