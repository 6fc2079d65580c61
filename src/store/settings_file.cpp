#include "store/settings_file.h"

#include <windows.h>

#include <cstdint>

#include "base/debug.h"
#include "base/text.h"
#include "store/text_file.h"

namespace verbatix {

static constexpr std::int64_t kLargestFile = 64LL << 20;

bool IsProfilePath(const std::wstring& path) {
    return path.size() < MAX_PATH && path.find(L'\\') != std::wstring::npos &&
           path.find(L'\0') == std::wstring::npos;
}

ForeignSettingsFile::ForeignSettingsFile(const std::wstring& path) : path_(path) {
    const std::optional<std::string> bytes = ReadWholeFile(path, kLargestFile);
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

static bool IsLock(DWORD error) {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION;
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
        if (!IsLock(error) || GetTickCount64() >= deadline) {
            DebugLine(L"Read %ls: error %lu\n", path.c_str(), error);
            return std::nullopt;
        }
        Sleep(20);
    }
}

bool IsHeldByAnother(const std::wstring& path) {
    const UniqueFile file(CreateFileW(path.c_str(), GENERIC_READ | DELETE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
    char first;
    DWORD read = 0;
    return !(file && ReadFile(file.Get(), &first, 1, &read, nullptr)) && IsLock(GetLastError());
}

}  // namespace verbatix
