// The formats by which a program asks clipboard histories, synchronisation and managers to leave content
// alone. They are asked, not forced.
#pragma once

#include <windows.h>

namespace verbatix {

// How long what is put on the clipboard is meant to stay.
enum class Stay {
    UntilReplaced,  // the user's from now on: histories may keep it
    ForThePaste,    // marked: the user never copied it
};

// Puts the marks on the opened clipboard, behind what is there, where the content is to pass.
void MarkForHistory(Stay stay);

// Whether the format is such a mark. Its being there tells something even when it has no data.
bool IsHistoryMark(UINT format);

}  // namespace verbatix
