#include "store/settings_commit.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <utility>

#include "base/debug.h"
#include "base/text.h"
#include "store/file_commit.h"
#include "store/list_damage.h"
#include "store/profile.h"
#include "store/profile_section.h"
#include "store/settings_file.h"
#include "store/settings_merge.h"
#include "store/settings_path.h"
#include "store/text_file.h"

namespace verbatix {

StoreNotices storeNotices;

namespace {

constexpr std::int64_t kLargestFile = 64LL << 20;

// Of the file at settingsPath; all of it is forgotten when that becomes another one.
struct SettingsState {
    std::wstring path;
    std::optional<std::string> known;  // what it held when it was last read or written
    bool isDoubtful = true;            // that may be read differently (see IsDoubtfulIni)
    bool isGenerationKept = false;
    IniValues waiting;
};

SettingsState state;
int openBatches = 0;

SettingsState& State() {
    if (state.path != settingsPath) state = {settingsPath, {}, true, false, {}};
    return state;
}

// What the file holds; no content where there is none. 0 or the error that kept it from being read.
DWORD ReadNow(std::optional<std::string>& content) {
    content = ReadWholeFile(settingsPath, kLargestFile);
    if (content) return ERROR_SUCCESS;
    const DWORD error = GetLastError();
    return error == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS
           : error == ERROR_SUCCESS      ? ERROR_READ_FAULT
                                         : error;
}

bool IsNothing(const std::optional<std::string>& content) {
    return !content || content->empty();
}

std::optional<std::wstring> TextOf(const std::optional<std::string>& content) {
    if (IsNothing(content)) return std::nullopt;
    return DecodeSettings(*content).text;
}

// The first commit of a run leaves the content so far beside the file, unless that has come to harm and the
// one that is there is the better one.
void KeepGeneration(const std::optional<std::string>& content) {
    if (std::exchange(State().isGenerationKept, true) || IsNothing(content)) return;
    if (const ListDamage* damage = FoundDamage(); damage && damage->path == settingsPath) return;
    CommitFile(GenerationPath(settingsPath), *content);
}

// The values as the system's own functions find them in a file with these bytes. Where they do not find
// what was written, they write it themselves. Nothing when there is no room for such a file.
std::optional<std::string> WrittenBySystem(const std::string& bytes, const IniValues& values) {
    const std::wstring copy = settingsPath + L".try";
    if (!IsProfilePath(copy) || !WriteWholeFile(copy, CREATE_ALWAYS, bytes)) return std::nullopt;
    std::map<std::wstring, ProfileSection> sections;
    for (const IniValue& value : values) {
        const auto [section, isNew] = sections.try_emplace(value.section);
        if (isNew) section->second = ReadSection(copy, value.section);
        const auto line = section->second.values.find(FoldKey(value.key));
        if (line != section->second.values.end() && line->second == TrimBlanks(value.value)) continue;
        WritePrivateProfileStringW(value.section.c_str(), value.key.c_str(), value.value.c_str(),
                                   copy.c_str());
    }
    // The system may hold the file in its cache.
    WritePrivateProfileStringW(nullptr, nullptr, nullptr, copy.c_str());
    std::optional<std::string> written = ReadWholeFile(copy, kLargestFile);
    DeleteFileW(copy.c_str());
    return written;
}

// What the file is to hold once `values` are in it.
struct NewContent {
    std::string bytes;
    bool isDoubtful = false;
    const wchar_t* keepOld = nullptr;  // why the old content is kept in the backup folder
    bool isListReplaced = false;
};

bool HasControls(const IniValues& values) {
    return std::any_of(values.begin(), values.end(), [](const IniValue& value) {
        return std::any_of(value.value.begin(), value.value.end(), [](wchar_t c) { return c < L' '; });
    });
}

NewContent MakeContent(const std::optional<std::string>& found, const IniValues& values) {
    NewContent content;
    const std::optional<std::string>& known = State().known;
    const bool isAsKnown = known && found && *known == *found;
    SettingsText old;
    if (!IsNothing(found)) old = DecodeSettings(*found);
    const bool isConverted = old.encoding == Encoding::kUtf8 || old.encoding == Encoding::kUtf16BigEndian;
    if (!isAsKnown) {
        const auto foundText = IsNothing(found) ? std::nullopt : std::optional(std::move(old.text));
        MergedText merged = MergeSettings(TextOf(known), foundText);
        old.text = std::move(merged.text);
        content.isListReplaced = merged.isListReplaced;
    }
    const std::wstring text = SetIniValues(old.text, values);
    const SettingsBytes written = EncodeSettings(text, old.encoding);
    content.bytes = written.bytes;
    // Values that are put into a plain text leave it plain.
    content.isDoubtful = (!isAsKnown || State().isDoubtful || HasControls(values)) && IsDoubtfulIni(text);
    if (content.isDoubtful) content.bytes = WrittenBySystem(content.bytes, values).value_or(content.bytes);
    if (content.isListReplaced) {
        content.keepOld = L"other_list";
    } else if (isConverted || !old.isExact || (old.encoding == Encoding::kAnsi && !written.isAnsi)) {
        content.keepOld = L"before_unicode";
    }
    return content;
}

DWORD Commit(const IniValues& values) {
    if (!IsProfilePath(settingsPath)) return ERROR_BAD_PATHNAME;
    std::optional<std::string> found;
    if (const DWORD error = ReadNow(found)) return error;
    ExamineSettingsFile(found);
    NewContent content = MakeContent(found, values);
    SettingsState& file = State();
    if (found && *found == content.bytes) {
        file.known = std::move(content.bytes);
        return ERROR_SUCCESS;
    }
    std::wstring kept;
    if (content.keepOld && !IsNothing(found)) {
        kept = KeepCopy(settingsPath, *found, content.keepOld);
        if (kept.empty()) return ERROR_CANNOT_MAKE;
    }
    KeepGeneration(found);
    const DWORD error = CommitFile(settingsPath, content.bytes, InPlace::kAfterCopy);
    if (error != ERROR_SUCCESS) {
        // It would be kept once more at every try.
        if (!kept.empty()) DeleteFileW(kept.c_str());
        return error;
    }
    file.known = std::move(content.bytes);
    file.isDoubtful = content.isDoubtful;
    if (content.isListReplaced && storeNotices.otherListKept) storeNotices.otherListKept(kept);
    return ERROR_SUCCESS;
}

bool CommitAndTell(const IniValues& values) {
    const DWORD error = Commit(values);
    if (error == ERROR_SUCCESS) {
        if (storeNotices.written) storeNotices.written();
        return true;
    }
    DebugLine(L"Settings not written: error %lu\n", error);
    if (storeNotices.notWritten) storeNotices.notWritten(error);
    return false;
}

bool WriteWaiting() {
    SettingsState& file = State();
    if (file.waiting.empty()) return true;
    if (!CommitAndTell(file.waiting)) return false;
    file.waiting.clear();
    return true;
}

}  // namespace

bool WriteProfileText(const wchar_t* section, const wchar_t* key, std::wstring_view value) {
    IniValues& waiting = State().waiting;
    // What waits for long is written once: the last value of a key counts.
    std::erase_if(waiting, [&](const IniValue& old) { return old.section == section && old.key == key; });
    waiting.push_back({section, key, ProfileLine(value)});
    return openBatches > 0 || WriteWaiting();
}

bool WriteProfileNumber(const wchar_t* section, const wchar_t* key, int value) {
    return WriteProfileText(section, key, std::to_wstring(value));
}

bool WriteProgramText(const wchar_t* key, std::wstring_view value) {
    return WriteProfileText(kProgramSection, key, value);
}

bool WriteProgramNumber(const wchar_t* key, int value) {
    return WriteProfileNumber(kProgramSection, key, value);
}

bool WriteSettingsTogether(IniValues values) {
    IniValues& waiting = State().waiting;
    for (IniValue& value : values) value.value = ProfileLine(value.value);
    values.insert(values.begin(), waiting.begin(), waiting.end());
    if (!CommitAndTell(values)) return false;
    State().waiting.clear();
    return true;
}

bool HasWaitingSettings(bool (*isMeant)(const IniValue& value)) {
    const IniValues& waiting = State().waiting;
    return std::any_of(waiting.begin(), waiting.end(), isMeant);
}

SettingsBatch::SettingsBatch() {
    ++openBatches;
}

SettingsBatch::~SettingsBatch() {
    if (--openBatches == 0) WriteWaiting();
}

void RememberSettingsFile() {
    ReadNow(State().known);
    State().isDoubtful = true;
    ExamineSettingsFile(State().known);
}

bool IsSettingsFileLost() {
    if (IsNothing(State().known)) return false;
    WIN32_FILE_ATTRIBUTE_DATA file;
    if (!GetFileAttributesExW(settingsPath.c_str(), GetFileExInfoStandard, &file)) {
        return GetLastError() == ERROR_FILE_NOT_FOUND;
    }
    return !(file.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) && file.nFileSizeLow == 0 &&
           file.nFileSizeHigh == 0;
}

bool PrepareSettingsFile() {
    return CommitAndTell({});
}

DWORD ReplaceSettings(std::string_view bytes) {
    const DWORD error = CommitFile(settingsPath, bytes, InPlace::kAfterCopy);
    if (error != ERROR_SUCCESS) return error;
    State().known = bytes;
    State().isDoubtful = true;
    return error;
}

}  // namespace verbatix
