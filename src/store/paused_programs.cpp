#include "store/paused_programs.h"

#include "base/text.h"
#include "store/profile.h"
#include "store/settings_commit.h"

namespace verbatix {

static constexpr const wchar_t* kSection = L"paused_programs";
static constexpr const wchar_t* kKey = L"programs";

std::wstring FormatProgramNames(const ProgramNames& programs) {
    std::wstring value;
    for (const std::wstring& program : programs) value += (value.empty() ? L"" : L"|") + program;
    return value;
}

ProgramNames ParseProgramNames(std::wstring_view value) {
    ProgramNames programs;
    for (const std::wstring_view piece : Split(value, L'|')) {
        const std::wstring_view name = TrimBlanks(piece);
        // One that comes twice would take itself out again.
        if (!HasProgram(programs, name)) ToggleProgram(programs, name);
    }
    return programs;
}

ProgramNames LoadPausedPrograms() {
    constexpr std::size_t kSize = kMostProgramNames * MAX_PATH;
    return ParseProgramNames(ReadProfileText(kSection, kKey, kSize));
}

void SavePausedPrograms(const ProgramNames& programs) {
    WriteProfileText(kSection, kKey, FormatProgramNames(programs));
}

}  // namespace verbatix
