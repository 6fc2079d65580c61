// The area under the editor's text that shows what the entry would paste now, and a button that mends a
// code which is none. UI thread only.
#pragma once

namespace verbatix {

// Shows or hides the area as the option says, and lays the window out.
void ShowPreviewArea();

// Shows what the text in the editor gives at this moment.
void RefreshPreview();

// Puts the code that was meant in the place of the first one that is none, undoable in the text.
void MendCode();

}  // namespace verbatix
