// The program's pages on the web, by the command that opens them.
#pragma once

#include <string>

namespace verbatix {

// Address of the page; empty for a command that opens none. Each site has its pages in German at one
// address and in English, which everybody else gets, at another.
std::wstring WebPageAddress(int command, bool german);

// Opens it with the browser that the user has. True when the command opens a page.
bool OpenWebPageOf(int command);

}  // namespace verbatix
