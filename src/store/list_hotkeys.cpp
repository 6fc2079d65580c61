#include "store/list_hotkeys.h"

#include "store/profile.h"
#include "store/settings_commit.h"

namespace verbatix {

static constexpr const wchar_t* kDisabledKey = L"m_disables_keys";

DisabledHotkeys LoadDisabledHotkeys() {
    return ParseDisabledHotkeys(ReadProgramText(kDisabledKey, kDisabledHotkeysSize));
}

bool SaveDisabledHotkeys(const DisabledHotkeys& disabled) {
    return WriteProgramText(kDisabledKey, FormatDisabledHotkeys(disabled));
}

}  // namespace verbatix
