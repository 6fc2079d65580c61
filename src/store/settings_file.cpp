#include "store/settings_file.h"

#include <windows.h>

#include <cstdint>

#include "base/debug.h"
#include "base/text.h"
#include "store/settings_path.h"
#include "store/text_file.h"

namespace verbatix {

namespace {

constexpr std::string_view kUtf16Mark = "\xff\xfe";
constexpr std::int64_t kLargestFile = 64LL << 20;

// The file that was begun last; empty once it is whole.
std::wstring begunPath;

std::optional<std::string> ReadAll(const std::wstring& path) {
    return ReadWholeFile(path, kLargestFile);
}

// Nothing when the file cannot be read: what is in it is then not known.
std::optional<Encoding> EncodingOfFile(const std::wstring& path) {
    const UniqueFile file = OpenForReading(path);
    char start[3];
    DWORD read = 0;
    if (!file || !ReadFile(file.Get(), start, sizeof start, &read, nullptr)) return std::nullopt;
    return EncodingByMark({start, read});
}

// A copy of the file as it was, in the backup folder, under the time and its own name.
bool KeepOriginal(const std::wstring& path) {
    const std::wstring folder = BackupFolderOf(path);
    CreateDirectoryW(folder.c_str(), nullptr);
    SYSTEMTIME now;
    GetLocalTime(&now);
    const std::wstring copy = Format(L"%ls\\%02d-%02d-%02d_%02d-%02d-%02d_before_unicode_%ls",
                                     folder.c_str(), now.wYear, now.wMonth, now.wDay, now.wHour,
                                     now.wMinute, now.wSecond, path.c_str() + path.rfind(L'\\') + 1);
    return CopyFileW(path.c_str(), copy.c_str(), FALSE) != 0;
}

bool RewriteAsUtf16(const std::wstring& path) {
    // The system may hold the file in its cache: what is there must be on the disk now, and be forgotten
    // before the other file takes its place.
    WritePrivateProfileStringW(nullptr, nullptr, nullptr, path.c_str());
    const std::optional<std::string> bytes = ReadAll(path);
    // Asked of the very bytes that would be decoded: another program may have been faster.
    if (bytes && EncodingByMark(*bytes) == Encoding::kUtf16) return true;
    wchar_t temporary[MAX_PATH];
    if (!bytes || !KeepOriginal(path) ||
        GetTempFileNameW(path.substr(0, path.rfind(L'\\') + 1).c_str(), L"vbx", 0, temporary) == 0) {
        DebugLine(L"Rewrite %ls as UTF-16: error %lu\n", path.c_str(), GetLastError());
        return false;
    }
    if (!WriteWholeFile(temporary, CREATE_ALWAYS, AsUtf16File(DecodeByMark(*bytes)))) {
        DebugLine(L"Write %ls: error %lu\n", temporary, GetLastError());
        DeleteFileW(temporary);
        return false;
    }
    return ReplaceSettingsFile(path, temporary);
}

bool Begin(const std::wstring& path, DWORD disposition) {
    if (!WriteWholeFile(path, disposition, kUtf16Mark)) return false;
    begunPath = path;
    return true;
}

}  // namespace

bool IsProfilePath(const std::wstring& path) {
    return path.size() < MAX_PATH && path.find(L'\\') != std::wstring::npos &&
           path.find(L'\0') == std::wstring::npos;
}

bool PrepareSettingsFile(const std::wstring& path, std::wstring_view text) {
    if (!IsProfilePath(path)) return false;
    WIN32_FILE_ATTRIBUTE_DATA file;
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &file)) {
        return Begin(path, CREATE_NEW) || GetLastError() == ERROR_FILE_EXISTS;
    }
    if (file.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) return false;
    if (file.nFileSizeLow == 0 && file.nFileSizeHigh == 0) return Begin(path, OPEN_EXISTING);
    const std::optional<Encoding> encoding = EncodingOfFile(path);
    if (!encoding) return false;
    if (*encoding == Encoding::kUtf16) return true;
    return (*encoding == Encoding::kAnsi && FitsAnsiCodePage(text)) || RewriteAsUtf16(path);
}

bool IsSettingsFileLost(const std::wstring& path) {
    if (begunPath == path) return true;
    WIN32_FILE_ATTRIBUTE_DATA file;
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &file)) {
        return GetLastError() == ERROR_FILE_NOT_FOUND;
    }
    return !(file.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) && file.nFileSizeLow == 0 &&
           file.nFileSizeHigh == 0;
}

void SettingsFileIsWhole() {
    begunPath.clear();
}

bool ReplaceSettingsFile(const std::wstring& path, const std::wstring& replacement) {
    // ReplaceFileW keeps access rights and attributes; file systems that cannot do it can still rename.
    if (ReplaceFileW(path.c_str(), replacement.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr,
                     nullptr) ||
        MoveFileExW(replacement.c_str(), path.c_str(),
                    MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        return true;
    }
    DebugLine(L"Replace %ls: error %lu\n", path.c_str(), GetLastError());
    // ReplaceFileW may fail half way, with the old file already gone or under another name.
    if (GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES) DeleteFileW(replacement.c_str());
    return false;
}

std::optional<std::wstring> ReadSettingsFile(const std::wstring& path) {
    const std::optional<std::string> bytes = ReadAll(path);
    if (!bytes) return std::nullopt;
    const Encoding encoding = EncodingByMark(*bytes);
    if (encoding == Encoding::kUtf8 || encoding == Encoding::kUtf16BigEndian) return std::nullopt;
    if (encoding == Encoding::kUtf16) {
        if (bytes->size() % sizeof(wchar_t) != 0) return std::nullopt;
        std::wstring text(bytes->size() / sizeof(wchar_t) - 1, L'\0');
        if (!text.empty())
            bytes->copy(reinterpret_cast<char*>(text.data()), text.size() * sizeof(wchar_t), 2);
        return text;
    }
    std::wstring text = FromBytes(*bytes, CP_ACP);
    if (ToBytes(text, CP_ACP) != *bytes) return std::nullopt;
    return text;
}

ForeignSettingsFile::ForeignSettingsFile(const std::wstring& path) : path_(path) {
    const std::optional<std::string> bytes = ReadAll(path);
    if (!bytes) return;
    const Encoding encoding = EncodingByMark(*bytes);
    const bool isUnmarkedUtf8 = IsUtf8WithoutMark(*bytes);
    if (encoding == Encoding::kUtf16 || (encoding == Encoding::kAnsi && !isUnmarkedUtf8)) return;
    wchar_t folder[MAX_PATH + 1];
    wchar_t temporary[MAX_PATH];
    if (GetTempPathW(MAX_PATH + 1, folder) == 0 || GetTempFileNameW(folder, L"vbx", 0, temporary) == 0) {
        DebugLine(L"Temporary copy of %ls: error %lu\n", path.c_str(), GetLastError());
        return;
    }
    copy_ = temporary;
    if (WriteWholeFile(copy_, CREATE_ALWAYS, AsUtf16File(DecodeText(*bytes)))) path_ = copy_;
}

ForeignSettingsFile::~ForeignSettingsFile() {
    if (!copy_.empty()) DeleteFileW(copy_.c_str());
}

std::optional<UniqueFile> KeepReadable(const std::wstring& path, unsigned milliseconds) {
    if (!IsProfilePath(path)) return UniqueFile();
    const ULONGLONG deadline = GetTickCount64() + milliseconds;
    for (;;) {
        UniqueFile file = OpenForReading(path);
        char first;
        DWORD read = 0;
        if (file && ReadFile(file.Get(), &first, 1, &read, nullptr)) return file;
        const DWORD error = GetLastError();
        if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) return UniqueFile();
        const bool isLocked = error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION;
        if (!isLocked || GetTickCount64() >= deadline) {
            DebugLine(L"Read %ls: error %lu\n", path.c_str(), error);
            return std::nullopt;
        }
        Sleep(20);
    }
}

}  // namespace verbatix
