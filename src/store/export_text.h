// The list as one text, in the layout of the list file but without end markers: what the export puts on the
// clipboard and what the first-run list is written in. Pure; lines that make no entry are left out.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace verbatix {

// Collects exported entries; they are numbered anew from 0.
struct ExportSink {
    unsigned count = 0;
    std::wstring textLines;  // each line ends in CR LF
    std::wstring labelLines;
    std::wstring orderLines;
};

// The sections "list_text", "list_label" and "list_order" of what was collected.
std::wstring FormatExport(const ExportSink& sink);

// The three strings that the list file holds of one entry.
struct EntryTexts {
    std::wstring value;
    std::wstring label;
    std::wstring order;
    std::wstring key = {};  // in lower case; only where the text was read from an export
};

// The entries of such a text by their keys' order. Lines may end in LF alone; values stand as they are, but
// for blanks before a hotkey.
std::vector<EntryTexts> ParseExport(std::wstring_view text);

}  // namespace verbatix
