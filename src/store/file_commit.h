// A file that changes in one step: whoever reads it, and whatever ends the program or the machine
// meanwhile, finds the old content or the new one. Failures are system error codes; the old content is then
// untouched.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace verbatix {

// What to do where the folder of the file lets no file be made beside it.
enum class InPlace {
    kNever,
    kAfterCopy,  // overwrite the file, once a copy of what it holds is safe elsewhere
};

// Writes `bytes` to a new file beside `path` (its name with ".new" behind it), flushes it, reads it back
// and puts it into the place of `path`, with the rights that the old file had. A file that another program
// holds is tried again for 300 ms. 0, or the system's error.
DWORD CommitFile(const std::wstring& path, std::string_view bytes, InPlace inPlace = InPlace::kNever);

// Keeps `bytes`, which the file at `path` holds, under the time, `reason` and the file's own name: in the
// backup folder, else beside the file, else in the user's temporary folder. Nothing is written over. The
// path of the copy; empty when none could be made.
std::wstring KeepCopy(const std::wstring& path, std::string_view bytes, const wchar_t* reason);

// Whether both paths lead to one file that exists, however they are spelled.
bool IsSameFile(const std::wstring& a, const std::wstring& b);

}  // namespace verbatix
