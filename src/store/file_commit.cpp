#include "store/file_commit.h"

#include <array>

#include "base/debug.h"
#include "base/text.h"
#include "store/settings_path.h"
#include "store/text_file.h"

namespace verbatix {

namespace {

constexpr ULONGLONG kPatienceMilliseconds = 300;

// The error that has just been met; never 0, which would pass for success.
DWORD LastError() {
    const DWORD error = GetLastError();
    return error == ERROR_SUCCESS ? ERROR_GEN_FAILURE : error;
}

bool IsHeld(DWORD error) {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
           error == ERROR_UNABLE_TO_REMOVE_REPLACED;
}

UniqueFile OpenAlone(const std::wstring& path, DWORD disposition) {
    return UniqueFile(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, disposition,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
}

// Writes the whole file, flushes it and looks at what is in it then.
DWORD WriteChecked(const UniqueFile& file, std::string_view bytes) {
    const auto size = static_cast<DWORD>(bytes.size());
    DWORD count = 0;
    if (!WriteFile(file.Get(), bytes.data(), size, &count, nullptr)) return LastError();
    // A write that was cut short says so by its count alone.
    if (count != size) return ERROR_DISK_FULL;
    if (!SetEndOfFile(file.Get()) || !FlushFileBuffers(file.Get())) return LastError();
    SetFilePointer(file.Get(), 0, nullptr, FILE_BEGIN);
    std::array<char, 1 << 16> block;
    while (ReadFile(file.Get(), block.data(), static_cast<DWORD>(block.size()), &count, nullptr)) {
        if (bytes.substr(0, count) != std::string_view(block.data(), count)) return ERROR_WRITE_FAULT;
        if (count == 0) return bytes.empty() ? ERROR_SUCCESS : ERROR_WRITE_FAULT;
        bytes.remove_prefix(count);
    }
    return LastError();
}

DWORD WriteNew(const std::wstring& path, DWORD disposition, std::string_view bytes) {
    const UniqueFile file = OpenAlone(path, disposition);
    return file ? WriteChecked(file, bytes) : LastError();
}

// Gives the new file the rights and attributes of the old one. True also where the file system knows no
// rights.
bool CarryRights(const std::wstring& path, const std::wstring& fresh) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return true;
    SetFileAttributesW(fresh.c_str(), attributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                                                    FILE_ATTRIBUTE_ARCHIVE));
    DWORD size = 0;
    GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::string rights(size, '\0');
    if (size == 0 || !GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size))
        return true;
    return SetFileSecurityW(fresh.c_str(), DACL_SECURITY_INFORMATION, rights.data()) != 0;
}

// A rename is one step of the file system. ReplaceFileW is not: it moves the old file out of the way first,
// and a program that ends in between leaves none. It comes in where the rights cannot be carried over.
DWORD PutInPlace(const std::wstring& path, const std::wstring& fresh) {
    if (!CarryRights(path, fresh) && ReplaceFileW(path.c_str(), fresh.c_str(), nullptr,
                                                  REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr)) {
        return ERROR_SUCCESS;
    }
    return MoveFileExW(fresh.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)
               ? ERROR_SUCCESS
               : LastError();
}

// Where a link leads; a rename would put a file in the place of the link.
std::wstring Target(const std::wstring& path, DWORD attributes) {
    if (!(attributes & FILE_ATTRIBUTE_REPARSE_POINT)) return path;
    const UniqueFile file(CreateFileW(path.c_str(), 0,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    std::array<wchar_t, 0x400> target = {};
    const DWORD length =
        file ? GetFinalPathNameByHandleW(file.Get(), target.data(), static_cast<DWORD>(target.size()), 0)
             : 0;
    return length == 0 || length >= target.size() ? path : std::wstring(target.data(), length);
}

bool IsThere(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

DWORD CommitBeside(const std::wstring& path, std::string_view bytes) {
    const std::wstring fresh = path + L".new";
    DWORD error = WriteNew(fresh, CREATE_ALWAYS, bytes);
    const bool isWritten = error == ERROR_SUCCESS;
    if (isWritten) error = PutInPlace(path, fresh);
    // A replacement may fail half way, with the old file already gone: the new one is then all there is.
    if (error != ERROR_SUCCESS && !(isWritten && !IsThere(path))) DeleteFileW(fresh.c_str());
    return error;
}

DWORD CommitInPlace(const std::wstring& path, std::string_view bytes) {
    // First of all: a file that another program holds is neither to be copied nor written.
    const UniqueFile file = OpenAlone(path, OPEN_EXISTING);
    LARGE_INTEGER size;
    if (!file || !GetFileSizeEx(file.Get(), &size)) return LastError();
    std::string old(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD count = 0;
    if (!ReadFile(file.Get(), old.data(), static_cast<DWORD>(old.size()), &count, nullptr))
        return LastError();
    if (KeepCopy(path, old, L"before_write").empty()) return ERROR_CANNOT_MAKE;
    SetFilePointer(file.Get(), 0, nullptr, FILE_BEGIN);
    return WriteChecked(file, bytes);
}

DWORD TryToCommit(const std::wstring& path, std::string_view bytes, InPlace inPlace) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    const bool isOld = attributes != INVALID_FILE_ATTRIBUTES;
    // A rename would go through all the same on some file systems, and take the mark away.
    if (isOld && (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)))
        return ERROR_ACCESS_DENIED;
    const DWORD error = CommitBeside(isOld ? Target(path, attributes) : path, bytes);
    const bool isRefused = error == ERROR_ACCESS_DENIED && isOld && inPlace == InPlace::kAfterCopy;
    return isRefused ? CommitInPlace(path, bytes) : error;
}

std::wstring TemporaryFolder() {
    std::array<wchar_t, MAX_PATH + 1> folder = {};
    const DWORD length = GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
    return length == 0 || length >= folder.size() ? std::wstring()
                                                  : std::wstring(folder.data(), length - 1);
}

// A name that is not taken, where there is one; empty when the folder takes no file.
std::wstring KeepIn(const std::wstring& folder, const std::wstring& name, std::string_view bytes) {
    constexpr int kMostOfASecond = 100;
    for (int i = 1; i <= kMostOfASecond; ++i) {
        const std::wstring path =
            folder + L"\\" + (i == 1 ? std::wstring() : std::to_wstring(i) + L"_") + name;
        const DWORD error = WriteNew(path, CREATE_NEW, bytes);
        if (error == ERROR_SUCCESS) return path;
        if (error == ERROR_FILE_EXISTS) continue;
        // What could not be written whole is no copy.
        DeleteFileW(path.c_str());
        return {};
    }
    return {};
}

}  // namespace

DWORD CommitFile(const std::wstring& path, std::string_view bytes, InPlace inPlace) {
    const ULONGLONG deadline = GetTickCount64() + kPatienceMilliseconds;
    for (;;) {
        const DWORD error = TryToCommit(path, bytes, inPlace);
        if (error == ERROR_SUCCESS) return error;
        if (!IsHeld(error) || GetTickCount64() >= deadline) {
            DebugLine(L"Commit %ls: error %lu\n", path.c_str(), error);
            return error;
        }
        Sleep(10);
    }
}

std::wstring KeepCopy(const std::wstring& path, std::string_view bytes, const wchar_t* reason) {
    SYSTEMTIME now;
    GetLocalTime(&now);
    const std::size_t folderEnd = path.rfind(L'\\');
    const std::wstring name =
        Format(L"%02d-%02d-%02d_%02d-%02d-%02d_%ls_%ls", now.wYear, now.wMonth, now.wDay, now.wHour,
               now.wMinute, now.wSecond, reason, path.c_str() + folderEnd + 1);
    const std::wstring backups = BackupFolderOf(path);
    CreateDirectoryW(backups.c_str(), nullptr);
    for (const std::wstring& folder : {backups, path.substr(0, folderEnd), TemporaryFolder()}) {
        if (folder.empty()) continue;
        const std::wstring copy = KeepIn(folder, name, bytes);
        if (!copy.empty()) return copy;
    }
    DebugLine(L"No copy of %ls could be kept: error %lu\n", path.c_str(), GetLastError());
    return {};
}

bool IsSameFile(const std::wstring& a, const std::wstring& b) {
    BY_HANDLE_FILE_INFORMATION found[2] = {};
    const std::wstring* const paths[] = {&a, &b};
    for (int i = 0; i < 2; ++i) {
        const UniqueFile file(CreateFileW(paths[i]->c_str(), 0,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                          OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
        if (!file || !GetFileInformationByHandle(file.Get(), &found[i])) return false;
    }
    return found[0].dwVolumeSerialNumber == found[1].dwVolumeSerialNumber &&
           found[0].nFileIndexHigh == found[1].nFileIndexHigh &&
           found[0].nFileIndexLow == found[1].nFileIndexLow;
}

}  // namespace verbatix
