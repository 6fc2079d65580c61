#include "store/settings_path.h"

#include "base/product.h"
#include "base/text.h"

namespace verbatix {

std::wstring settingsPath;

std::wstring BackupFolderOf(const std::wstring& path) {
    const std::size_t end = path.rfind(L'\\');
    return end == std::wstring::npos ? std::wstring() : path.substr(0, end) + L"\\Backup";
}

std::wstring FileNameOf(const std::wstring& path) {
    return path.substr(path.rfind(L'\\') + 1);
}

std::wstring BackupFileName(const SYSTEMTIME& time) {
    return Format(L"%02d-%02d-%02d_%02d-%02d-%02d_%ls.ini", time.wYear, time.wMonth, time.wDay, time.wHour,
                  time.wMinute, time.wSecond, kProductName);
}

}  // namespace verbatix
