#include "store/settings_file.h"

#include <windows.h>

#include <algorithm>

#include "base/debug.h"
#include "base/text.h"
#include "store/settings_path.h"

namespace verbatix {

namespace {

constexpr std::string_view kUtf16Mark = "\xff\xfe";
constexpr std::string_view kUtf16BigEndianMark = "\xfe\xff";
constexpr std::string_view kUtf8Mark = "\xef\xbb\xbf";
constexpr LONGLONG kLargestFile = 64LL << 20;

UniqueFile OpenForReading(const std::wstring& path) {
    return UniqueFile(CreateFileW(path.c_str(), GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, 0, nullptr));
}

std::optional<std::string> ReadAll(const std::wstring& path) {
    const UniqueFile file = OpenForReading(path);
    LARGE_INTEGER size;
    if (!file || !GetFileSizeEx(file.Get(), &size) || size.QuadPart > kLargestFile) return std::nullopt;
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD read = 0;
    if (!ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr) ||
        read != bytes.size()) {
        return std::nullopt;
    }
    return bytes;
}

enum class Encoding { kUtf16, kUtf16BigEndian, kUtf8, kAnsi };

// By the mark at the beginning of `bytes`.
Encoding EncodingOf(std::string_view bytes) {
    if (bytes.starts_with(kUtf16Mark)) return Encoding::kUtf16;
    if (bytes.starts_with(kUtf16BigEndianMark)) return Encoding::kUtf16BigEndian;
    return bytes.starts_with(kUtf8Mark) ? Encoding::kUtf8 : Encoding::kAnsi;
}

// Nothing when the file cannot be read: what is in it is then not known.
std::optional<Encoding> EncodingOfFile(const std::wstring& path) {
    const UniqueFile file = OpenForReading(path);
    char start[3];
    DWORD read = 0;
    if (!file || !ReadFile(file.Get(), start, sizeof start, &read, nullptr)) return std::nullopt;
    return EncodingOf({start, read});
}

bool WriteAll(const std::wstring& path, DWORD disposition, std::string_view bytes) {
    const UniqueFile file(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, disposition,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    return file &&
           WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
           written == bytes.size() && FlushFileBuffers(file.Get());
}

std::wstring FromBigEndian(std::string_view bytes) {
    std::wstring text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        text += static_cast<wchar_t>(static_cast<unsigned char>(bytes[i]) << 8 |
                                     static_cast<unsigned char>(bytes[i + 1]));
    }
    return text;
}

std::wstring Decode(std::string_view bytes) {
    switch (EncodingOf(bytes)) {
        case Encoding::kUtf16BigEndian: return FromBigEndian(bytes.substr(kUtf16BigEndianMark.size()));
        case Encoding::kUtf8: return FromBytes(bytes.substr(kUtf8Mark.size()), CP_UTF8);
        default: return FromBytes(bytes, CP_ACP);
    }
}

std::string AsUtf16File(std::wstring_view text) {
    return std::string(kUtf16Mark)
        .append(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t));
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
    if (bytes && EncodingOf(*bytes) == Encoding::kUtf16) return true;
    wchar_t temporary[MAX_PATH];
    if (!bytes || !KeepOriginal(path) ||
        GetTempFileNameW(path.substr(0, path.rfind(L'\\') + 1).c_str(), L"vbx", 0, temporary) == 0) {
        DebugLine(L"Rewrite %ls as UTF-16: error %lu\n", path.c_str(), GetLastError());
        return false;
    }
    if (!WriteAll(temporary, CREATE_ALWAYS, AsUtf16File(Decode(*bytes)))) {
        DebugLine(L"Write %ls: error %lu\n", temporary, GetLastError());
        DeleteFileW(temporary);
        return false;
    }
    return ReplaceSettingsFile(path, temporary);
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
        return WriteAll(path, CREATE_NEW, kUtf16Mark) || GetLastError() == ERROR_FILE_EXISTS;
    }
    if (file.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) return false;
    if (file.nFileSizeLow == 0 && file.nFileSizeHigh == 0) return WriteAll(path, OPEN_EXISTING, kUtf16Mark);
    const std::optional<Encoding> encoding = EncodingOfFile(path);
    if (!encoding) return false;
    if (*encoding == Encoding::kUtf16) return true;
    return (*encoding == Encoding::kAnsi && FitsAnsiCodePage(text)) || RewriteAsUtf16(path);
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
    const Encoding encoding = EncodingOf(*bytes);
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

// Valid UTF-8 that is not also plain ASCII: a text in any other code page hardly ever looks so.
static bool IsUtf8Text(std::string_view bytes) {
    const bool isAscii = std::all_of(bytes.begin(), bytes.end(),
                                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    return !isAscii && MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(),
                                           static_cast<int>(bytes.size()), nullptr, 0) > 0;
}

ForeignSettingsFile::ForeignSettingsFile(const std::wstring& path) : path_(path) {
    const std::optional<std::string> bytes = ReadAll(path);
    if (!bytes) return;
    const Encoding encoding = EncodingOf(*bytes);
    const bool isUnmarkedUtf8 = encoding == Encoding::kAnsi && IsUtf8Text(*bytes);
    if (encoding == Encoding::kUtf16 || (encoding == Encoding::kAnsi && !isUnmarkedUtf8)) return;
    wchar_t folder[MAX_PATH + 1];
    wchar_t temporary[MAX_PATH];
    if (GetTempPathW(MAX_PATH + 1, folder) == 0 || GetTempFileNameW(folder, L"vbx", 0, temporary) == 0) {
        DebugLine(L"Temporary copy of %ls: error %lu\n", path.c_str(), GetLastError());
        return;
    }
    copy_ = temporary;
    const std::wstring text = isUnmarkedUtf8 ? FromBytes(*bytes, CP_UTF8) : Decode(*bytes);
    if (WriteAll(copy_, CREATE_ALWAYS, AsUtf16File(text))) path_ = copy_;
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
