// The settings file as a file, so that no character is lost in it: the profile functions keep a UTF-16 file
// as it is but never make one, and in any other file a character outside the ANSI code page becomes "?".
// Failures are return values; the settings file is either untouched or wholly replaced.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/handle.h"

namespace verbatix {

// Whether the profile functions can be trusted with that path (see settingsPath).
bool IsProfilePath(const std::wstring& path);

// Makes the file one that the profile functions read, and able to hold `text`: a missing or empty file is
// begun with the UTF-16LE mark FF FE; a file in UTF-8 with mark, whose first section Windows does not see,
// or in UTF-16BE, which it does not know, is rewritten as UTF-16LE at once, a file without mark when `text`
// needs a character that the ANSI code page lacks. A copy of the original goes to the backup folder. False
// when the path is a folder, cannot be created or read, or the rewriting failed.
bool PrepareSettingsFile(const std::wstring& path, std::wstring_view text = {});

// Whether what the file held is lost: it has been deleted or emptied, or begun anew by the above, since
// SettingsFileIsWhole() was called, which says that all there is to keep is in it.
bool IsSettingsFileLost(const std::wstring& path);
void SettingsFileIsWhole();

// Puts the file `replacement` in the place of `path`. When that fails, `replacement` is deleted, but kept
// if there is nothing at `path` any more: it may then be the only copy.
bool ReplaceSettingsFile(const std::wstring& path, const std::wstring& replacement);

// The characters of the file as the profile functions understand them. Nothing when it cannot be read, is
// larger than 64 MB, is neither UTF-16LE with mark nor ANSI, or holds bytes that the ANSI code page does
// not map to and fro.
std::optional<std::wstring> ReadSettingsFile(const std::wstring& path);

// Another settings file, to be read with the profile functions. Editors save text in UTF-8, with and
// without mark, which those functions take for ANSI; of such a file, and of one in UTF-16BE, a temporary
// copy in UTF-16LE is read, deleted when this object goes. Where that fails the file itself is read.
class ForeignSettingsFile {
  public:
    explicit ForeignSettingsFile(const std::wstring& path);
    ~ForeignSettingsFile();
    ForeignSettingsFile(const ForeignSettingsFile&) = delete;
    ForeignSettingsFile& operator=(const ForeignSettingsFile&) = delete;

    const std::wstring& Path() const { return path_; }

  private:
    std::wstring path_;
    std::wstring copy_;
};

// Holds the file open so that no other program (a backup, a virus scanner) can lock it: the profile
// functions read a locked file as an empty one. Waits up to `milliseconds` for a lock to end. An empty
// handle when there is no file to be read, nothing when there is one but it cannot be read.
std::optional<UniqueFile> KeepReadable(const std::wstring& path, unsigned milliseconds);

}  // namespace verbatix
