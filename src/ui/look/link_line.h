// A line of text one stretch of which may be a link: a control of its own, in the dialog's font and
// colours. The link is followed by a click, or with Enter or the space bar once the Tab key has come to it;
// the dialog gets BN_CLICKED. A line without link takes no keyboard. UI thread only.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>

namespace verbatix {

// Makes the class "VerbatixLinkLine" known, before the dialog is created. False when Windows refuses.
bool RegisterLinkLine();

// Shows a text, of which that many characters from `start` on are the link; 0: it has none.
void SetLinkLine(HWND line, const std::wstring& text, std::size_t start = 0, std::size_t length = 0);

}  // namespace verbatix
