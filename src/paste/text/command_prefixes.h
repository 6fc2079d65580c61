// Entries whose text begins with a command: what the prefix and its argument are. Pure; carrying the
// command out is the executor's.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace verbatix {

enum class CommandKind {
    None,        // a text to paste
    Replace,     // "replace:"   search and replace in the selection
    CopySlot,    // "copy_slot:"
    PasteSlots,  // "paste_slot:"
    SaveSlot,    // "save_slot:"
    Builtin,     // "sys:"
    RunLines,    // "runx:" "runa:" "runX:" "runA:"   each line a command line, the selection copied first
    Image,       // "img:"
    Run,         // "cmd:" "run:"   the rest is one command line
    Cpy,         // "cpy:"   a program with the copied selection in its parameters
};

struct ParsedCommand {
    CommandKind kind = CommandKind::None;
    std::wstring argument;  // what follows the prefix, "%nc%" taken out; for Replace the whole text
    wchar_t slot = 0;       // CopySlot, SaveSlot: the slot character, 0 when the text ends before it
    bool elevate = false;   // RunLines
};

// The kind in a word, for reports.
const wchar_t* KindName(CommandKind kind);

// Every prefix, for showing them to the user.
std::span<const wchar_t* const> CommandPrefixes();

// Reads the prefix: case-sensitive, only at the very start. At most the first 4,095 characters of a text
// are looked at, except for Replace.
ParsedCommand ParseCommand(std::wstring_view text);

struct ProgramAndParameters {
    std::wstring program;  // with its quotes where it was quoted
    std::wstring parameters;
};

// Cuts a command line behind a quoted program, else at the first blank. The character behind the closing
// quote is passed over, whatever it is.
ProgramAndParameters SplitProgram(std::wstring_view line);

// The command of a "cpy:" entry with the selection in the places that ask for it.
ProgramAndParameters WithSelection(ProgramAndParameters command, const std::wstring& selection);

struct ReplaceRule {
    std::wstring before;
    std::wstring after;
};

// The rules of a "replace:" entry, in the order in which they are applied.
std::vector<ReplaceRule> ReplaceRules(std::wstring_view entryText);

struct ReplaceResult {
    std::wstring text;
    std::size_t count = 0;  // of replaced occurrences
};

// Applies the rules of a "replace:" entry to `subject`. Every line but the first that holds "=>" is a rule,
// old text before and new text behind it, with control codes (%05 to %24) on both sides. A rule without
// old text, or whose result would be longer than kLongestExpansion, replaces nothing.
ReplaceResult ApplyReplaceRules(std::wstring_view entryText, std::wstring subject);

}  // namespace verbatix
