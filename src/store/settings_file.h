// Settings files as the profile functions read them. Failures are return values.
#pragma once

#include <optional>
#include <string>

#include "base/handle.h"

namespace verbatix {

// Whether the profile functions can be trusted with that path (see settingsPath).
bool IsProfilePath(const std::wstring& path);

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

// Whether another program keeps the file from being read or replaced just now.
bool IsHeldByAnother(const std::wstring& path);

}  // namespace verbatix
