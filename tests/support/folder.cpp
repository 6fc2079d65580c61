#include "support/folder.h"

#include <windows.h>

#include <atomic>

#include "base/handle.h"
#include "base/text.h"

namespace verbatix::test {

static std::wstring OwnFolder() {
    wchar_t path[MAX_PATH];
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring_view module(path, length);
    return std::wstring(module.substr(0, module.rfind(L'\\')));
}

static void RemoveTree(const std::wstring& path) {
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW((path + L"\\*").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            const std::wstring_view name = found.cFileName;
            if (name == L"." || name == L"..") continue;
            const std::wstring child = path + L"\\" + std::wstring(name);
            SetFileAttributesW(child.c_str(), FILE_ATTRIBUTE_NORMAL);
            if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
                RemoveTree(child);
            } else {
                DeleteFileW(child.c_str());
            }
        } while (FindNextFileW(search, &found));
        FindClose(search);
    }
    RemoveDirectoryW(path.c_str());
}

Folder::Folder() {
    static std::atomic<int> serial = 0;
    path_ = Format(L"%ls\\folder-%lu-%d", OwnFolder().c_str(), GetCurrentProcessId(), ++serial);
    CreateDirectoryW(path_.c_str(), nullptr);
}

Folder::~Folder() {
    RemoveTree(path_);
}

std::string ReadBytes(const std::wstring& path) {
    const UniqueFile file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, OPEN_EXISTING, 0, nullptr));
    if (!file) return {};
    std::string bytes(GetFileSize(file.Get(), nullptr), '\0');
    DWORD read = 0;
    ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
    bytes.resize(read);
    return bytes;
}

bool WriteBytes(const std::wstring& path, std::string_view bytes) {
    const UniqueFile file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    DWORD written = 0;
    return file &&
           WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
           written == bytes.size();
}

std::string Utf16File(std::wstring_view text) {
    std::string bytes = "\xff\xfe";
    bytes.append(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t));
    return bytes;
}

std::wstring HelperPath(std::wstring_view name) {
    return OwnFolder() + L"\\" + std::wstring(name);
}

std::wstring ProgramPath() {
    return OwnFolder() + L"\\..\\Verbatix.exe";
}

}  // namespace verbatix::test
