// A settings file that has come to harm, as a power failure or another program may leave it, seen before
// anything is written into it. What it holds is kept in the backup folder; what is to be done about it is
// the user's to say, where a copy of the file holds more of the list. UI thread only.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace verbatix {

// How much of a list a text holds: the keys of its three sections.
struct ListShape {
    bool isEmpty = true;     // not a line in it
    bool endsWhole = false;  // with the end of a line
    int count = -1;          // how many entries there are to be; -1: there is no list
    int texts = 0;           // within that count
    int labels = 0;
    int orders = 0;
};

ListShape ShapeOfList(std::wstring_view text);

// Whether something is missing at its end, or all of it. A hand may have written such a file: it counts as
// damaged only where a copy holds more.
bool LooksDamaged(const ListShape& shape);
bool HoldsMore(const ListShape& copy, const ListShape& shape);

// A copy that holds more than the file.
struct ListSource {
    std::wstring path;
    int entries = 0;
};

struct ListDamage {
    std::wstring path;    // of the settings file
    std::wstring keptIn;  // where a copy of what was found lies; empty where there was no file
    int entries = 0;      // in what was found
    std::vector<ListSource> sources;
};

// Looks at the settings file once in a run, before it is written for the first time; `content` is what it
// holds, nothing where it is missing. Of a damaged one a copy is kept.
void ExamineSettingsFile(const std::optional<std::string>& content);

// What was found in the file that settingsPath names; null when nothing is wrong with it, or nothing can be
// done.
const ListDamage* FoundDamage();

// The user has decided.
void ForgetDamage();

// Where the content before the first commit of a run stays.
std::wstring GenerationPath(const std::wstring& path);

}  // namespace verbatix
