// A copied text as a page in the browser.
#pragma once

#include <string>

namespace verbatix {

// The text with every line end (CR LF, CR or LF) as "<br>". Nothing is escaped and no frame is added: who
// copies HTML source sees it as a page.
std::wstring PageFromText(std::wstring text);

// The user's temporary folder, its backslash included; empty when the system tells none.
std::wstring TemporaryFolder();

// Where the page is written: one file in that folder, used again each time. Empty without the folder.
std::wstring TemporaryPagePath();

// Writes the page as UTF-16LE with byte-order mark in place of the file; false when that fails.
bool WritePage(const std::wstring& path, const std::wstring& page);

// Opens the file with the program that the user has for it. A variable, so that no browser comes up in
// tests.
extern void (*openPage)(const std::wstring& path);

// Writes the text as a page and opens it. When the page cannot be written nothing is opened.
void OpenTextAsPage(const std::wstring& text);

}  // namespace verbatix
