// A folder of its own for each test that needs files.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

#include "base/handle.h"
#include "base/text.h"

namespace verbatix::test {

// Full path of a program built beside the tests ("target_window.exe").
inline std::wstring HelperPath(std::wstring_view name) {
    wchar_t path[MAX_PATH];
    const std::wstring_view module(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
    return std::wstring(module.substr(0, module.rfind(L'\\') + 1)).append(name);
}

// Names of what is in a folder and fits.
inline std::vector<std::wstring> FilesIn(const std::wstring& folder, const std::wstring& pattern = L"*") {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW((folder + L"\\" + pattern).c_str(), &found);
    for (BOOL more = search != INVALID_HANDLE_VALUE; more; more = FindNextFileW(search, &found)) {
        const std::wstring_view name = found.cFileName;
        if (name != L"." && name != L"..") names.emplace_back(name);
    }
    FindClose(search);
    return names;
}

// The same, for the message of a test that has failed.
inline std::wstring NamesIn(const std::wstring& folder) {
    std::wstring names;
    for (const std::wstring& name : FilesIn(folder)) names += L" " + name;
    return names;
}

// A new empty folder, removed with all it holds when the object goes. It is made beside the test program,
// not in the temporary folder: Verbatix treats the temporary folder specially.
class Folder {
  public:
    Folder() {
        // A process of another desktop's may have the same number.
        static int serial = 0;
        do {
            path_ = HelperPath(Format(L"folder-%lu-%d", GetCurrentProcessId(), ++serial));
        } while (!CreateDirectoryW(path_.c_str(), nullptr) && GetLastError() == ERROR_ALREADY_EXISTS);
    }
    ~Folder() { RemoveTree(path_); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    const std::wstring& Path() const { return path_; }
    // Full path of a file of that name in the folder.
    std::wstring File(std::wstring_view name) const { return path_ + L"\\" + std::wstring(name); }

    // Removes a folder with all it holds.
    static void RemoveTree(const std::wstring& path) {
        for (const std::wstring& name : FilesIn(path)) {
            const std::wstring child = path + L"\\" + name;
            SetFileAttributesW(child.c_str(), FILE_ATTRIBUTE_NORMAL);
            if (!DeleteFileW(child.c_str())) RemoveTree(child);
        }
        RemoveDirectoryW(path.c_str());
    }

  private:
    std::wstring path_;
};

// An existing file, open for reading; others may meanwhile do what `share` says.
inline UniqueFile OpenShared(const std::wstring& path, DWORD share) {
    return UniqueFile(CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr));
}

// The whole file as bytes; empty when it cannot be read.
inline std::string ReadBytes(const std::wstring& path) {
    // Whoever replaces the file meanwhile may.
    const UniqueFile file = OpenShared(path, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
    std::string bytes(file ? GetFileSize(file.Get(), nullptr) : 0, '\0');
    DWORD read = 0;
    if (file) ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
    return bytes.substr(0, read);
}

// Creates or replaces the file; false when that fails.
inline bool WriteBytes(const std::wstring& path, std::string_view bytes) {
    const UniqueFile file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    DWORD written = 0;
    return file &&
           WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
           written == bytes.size();
}

// `text` as UTF-16LE with byte-order mark: what a settings file looks like.
inline std::string Utf16File(std::wstring_view text) {
    return "\xff\xfe" + std::string(reinterpret_cast<const char*>(text.data()), 2 * text.size());
}

}  // namespace verbatix::test
