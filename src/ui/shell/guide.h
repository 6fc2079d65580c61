// The user guide, which the program carries in it as one page a language (made by packaging/guide), and
// opens in the browser. It needs no network.
#pragma once

#include <string>

namespace verbatix {

// Opens the guide at that place ("" for its beginning), in German where that is the language, else in
// English. False where the program was built without a guide or the page cannot be written to the temporary
// folder.
bool OpenGuide(const std::wstring& place);

// Opens the guide at the chapter on what has the keyboard. Where there is none, the page of questions.
void OpenGuideHere();

}  // namespace verbatix
