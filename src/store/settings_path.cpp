#include "store/settings_path.h"

namespace verbatix {

std::wstring settingsPath;

std::wstring BackupFolderOf(const std::wstring& path) {
    const std::size_t end = path.rfind(L'\\');
    return end == std::wstring::npos ? std::wstring() : path.substr(0, end) + L"\\Backup";
}

}  // namespace verbatix
