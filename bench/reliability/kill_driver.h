// Kills the running program at random moments while its list is worked on, and judges what is left in the
// settings file: nothing but what stood there before an action or after it.
#pragma once

#include <random>
#include <string>

#include "support/program_run.h"

namespace verbatix::test {

struct KillOptions {
    int entries = 200;
    int kills = 10;
    unsigned seed = 1;
    std::wstring settingsFolder;  // empty: beside the program
};

struct KillResult {
    int files = 0;          // that were looked at
    int insideCommits = 0;  // of the kills: an unfinished new file lay beside
    int actions = 0;
    std::wstring broken;  // what is wrong with the first bad file, empty when none was
};

KillResult KillWhileWorking(const KillOptions& options);

// The same work while the disk of the folder is full again and again; every file is looked at, and once
// there is room again, everything that was typed has to be in it. `settingsFolder` must be a small disk of
// its own.
KillResult FillDiskWhileWorking(const KillOptions& options);

// What is wrong with the bytes of a file that the work above may have left; empty when nothing is.
std::wstring Judge(const std::string& bytes, int entries);

}  // namespace verbatix::test
