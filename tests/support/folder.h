// A folder of its own for each test that needs files.
#pragma once

#include <string>
#include <string_view>

namespace verbatix::test {

// A new empty folder, removed with all it holds when the object goes. It is made beside the test program,
// not in the temporary folder: Verbatix treats the temporary folder specially.
class Folder {
  public:
    Folder();
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    const std::wstring& Path() const { return path_; }
    // Full path of a file of that name in the folder.
    std::wstring File(std::wstring_view name) const { return path_ + L"\\" + std::wstring(name); }

  private:
    std::wstring path_;
};

// The whole file as bytes; empty when it cannot be read.
std::string ReadBytes(const std::wstring& path);

// Creates or replaces the file; false when that fails.
bool WriteBytes(const std::wstring& path, std::string_view bytes);

// `text` as UTF-16LE with byte-order mark: what a settings file looks like.
std::string Utf16File(std::wstring_view text);

// Full path of a program built beside the tests ("target_window.exe"), and of the program itself.
std::wstring HelperPath(std::wstring_view name);
std::wstring ProgramPath();

}  // namespace verbatix::test
