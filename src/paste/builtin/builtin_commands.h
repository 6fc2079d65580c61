// The commands that an entry calls by name with "sys:". They act on the program in front by way of its
// selection and the clipboard. Main thread only; the waits of 1, 200 and 300 ms block it on purpose, to
// let that program react to the strokes.
#pragma once

#include <windows.h>

#include <span>
#include <string>

namespace verbatix {

// How a command was called.
struct BuiltinCall {
    std::wstring_view text;      // the command's name and what follows it
    std::wstring_view argument;  // what follows the name
    HWND target;                 // had the keyboard when the entry was triggered; may be gone by now
};

struct BuiltinCommand {
    const wchar_t* name;
    void (*run)(const BuiltinCall& call);
};

// Every command in the order in which the names are tried.
std::span<const BuiltinCommand> BuiltinCommands();

// The first command whose name `text` begins with (exact case); null when there is none.
const BuiltinCommand* FindBuiltinCommand(std::wstring_view text);

// Runs the command that `text`, what follows "sys:", calls. An unknown one is told to the user. The
// clipboard is closed on return, whatever happened. Always returns 1: the entry was a command.
int RunBuiltinCommand(const std::wstring& text, HWND target);

}  // namespace verbatix
