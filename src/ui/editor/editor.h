// The editor of the main dialog: shows one entry and takes what the user changes over into the list.
// Changes are kept on their own, 200 ms after the last one and whenever the user turns elsewhere. A text
// beyond the limit is counted out beside it and stays in the field; when the user turns elsewhere he is
// asked what becomes of it. UI thread only.
#pragma once

#include <windows.h>

#include <string>

namespace verbatix {

struct Editor {
    int position = -1;    // of the entry that is shown; -1: none
    bool edited = false;  // the fields hold what the list does not
    bool filling = false;
    int sharer = -1;    // position of the entry that the link leads to
    std::wstring more;  // to say of the hotkey than the line does
};

extern Editor editor;

// Whether the user is asked what becomes of a text that is too long.
enum class Warn { kNever, kAlways };

// Fills captions, buttons and drop-downs in the active language.
void SetUpEditor(HWND dialog);

// Shows captions and drop-downs in the language that is active now.
void RelabelEditor();

// Shows the entry at that position; one that does not exist empties and disables the fields.
void ShowInEditor(int position);

// Lets the buttons that act on all that is selected be pressed, or not, as the selection is counted now.
void EnableSelectionButtons();

// Takes what was changed over into the list. False when the text is too long and stays in the field;
// everything else is taken over all the same.
bool TakeEditsOver(Warn warn);

// The same, and writes it and renews the hotkeys.
bool SaveEdits(Warn warn);

// The same, and writes what has not been written by earlier saves or is lost with a deleted file.
bool SaveAll(Warn warn);

// TIMER_EDITOR_UPDATE has run out.
void OnEditorTimer();

// A notification of one of the editor's controls. False when `control` is none of them.
bool OnEditorNotification(int control, int code);

}  // namespace verbatix
