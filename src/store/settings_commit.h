// The one way by which the settings file is written. Whatever one action changes becomes one new content of
// the whole file, which takes the old one's place in one step (see file_commit.h). Before the first commit
// of a run the content so far is kept beside the file, with ".bak" behind its name. What another program
// has put into the file meanwhile is kept (see settings_merge.h). UI thread only.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "store/ini_text.h"

namespace verbatix {

// What the store tells the program above it. A null function is left out.
struct StoreNotices {
    void (*written)() = nullptr;                // everything is in the file
    void (*notWritten)(DWORD error) = nullptr;  // nothing is; the next commit tries it again
    // Another program had put another list into the file; it is in this copy now.
    void (*otherListKept)(const std::wstring& copy) = nullptr;
};

extern StoreNotices storeNotices;

// Writes a value into the settings file, together with all that has not been written yet. A value that
// could not be written is tried again by every later commit of that file; false then. Inside a
// SettingsBatch the value only joins those that wait, and the result is true. Values are written in a form
// that cannot break the file (see ProfileLine).
bool WriteProfileText(const wchar_t* section, const wchar_t* key, std::wstring_view value);
bool WriteProfileNumber(const wchar_t* section, const wchar_t* key, int value);
// The same in the section of the program's options.
bool WriteProgramText(const wchar_t* key, std::wstring_view value);
bool WriteProgramNumber(const wchar_t* key, int value);

// Writes these values, with those that wait, in one commit, inside a SettingsBatch too. When that fails
// they are the caller's again. Line breaks in a value become blanks, what follows a NUL is left out.
bool WriteSettingsTogether(IniValues values);

// Whether a value waits for a commit that succeeds; `isMeant` tells which ones count.
bool HasWaitingSettings(bool (*isMeant)(const IniValue& value));

// Keeps the values that are written during its life for one commit at its end. No message box may come up
// in between: whatever ends the program then takes the values along.
class SettingsBatch {
  public:
    SettingsBatch();
    ~SettingsBatch();
    SettingsBatch(const SettingsBatch&) = delete;
    SettingsBatch& operator=(const SettingsBatch&) = delete;
};

// Takes what the settings file holds now for what is known of it: the list has just been read.
void RememberSettingsFile();

// Whether what the settings file held when it was last read or written is lost: there is no file, or an
// empty one.
bool IsSettingsFileLost();

// Makes a settings file that the profile functions can read: begins a missing one, and writes one in UTF-8
// or UTF-16BE anew. False when that failed.
bool PrepareSettingsFile();

// Puts other content into the place of the whole file; what it held is known then. 0 or a system error.
DWORD ReplaceSettings(std::string_view bytes);

}  // namespace verbatix
