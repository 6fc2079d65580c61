#include "store/settings_path.h"

namespace verbatix {

std::wstring settingsPath;

}  // namespace verbatix
