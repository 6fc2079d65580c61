#include "store/list_damage.h"

#include <windows.h>

#include <algorithm>
#include <cstdint>

#include "base/product.h"
#include "base/text.h"
#include "store/entry_syntax.h"
#include "store/file_commit.h"
#include "store/ini_text.h"
#include "store/settings_merge.h"
#include "store/settings_path.h"
#include "store/stored_texts.h"
#include "store/text_file.h"

namespace verbatix {

namespace {

constexpr std::int64_t kLargestFile = 64LL << 20;

std::wstring examinedPath;
std::optional<ListDamage> damage;

std::optional<std::string> Read(const std::wstring& path) {
    return path.empty() ? std::nullopt : ReadWholeFile(path, kLargestFile);
}

// By their names, which begin with the time; copies that were kept for a reason have longer ones.
std::wstring LatestBackup() {
    const std::wstring folder = BackupFolderOf(settingsPath) + L"\\";
    const std::size_t length = BackupFileName(SYSTEMTIME{2000, 1, 6, 1, 0, 0, 0, 0}).size();
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW((folder + L"*_" + kProductName + L".ini").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return {};
    std::wstring latest;
    do {
        const std::wstring name = found.cFileName;
        if (name.size() == length) latest = std::max(latest, name);
    } while (FindNextFileW(search, &found));
    FindClose(search);
    return latest.empty() ? std::wstring() : folder + latest;
}

std::vector<ListSource> BetterSources(const ListShape& shape) {
    std::vector<ListSource> sources;
    for (const std::wstring& path : {GenerationPath(settingsPath), LatestBackup()}) {
        const std::optional<std::string> bytes = Read(path);
        if (!bytes) continue;
        const ListShape copy = ShapeOfList(DecodeSettings(*bytes).text);
        if (HoldsMore(copy, shape)) sources.push_back({path, copy.texts});
    }
    return sources;
}

// A number in a key like "text_007"; -1 for any other key.
int NumberOf(std::wstring_view key) {
    constexpr std::size_t kPrefix = 5;
    const bool isNumbered = key.size() > kPrefix && key[kPrefix] >= L'0' && key[kPrefix] <= L'9';
    return isNumbered ? ToInt(key.substr(kPrefix)) : -1;
}

}  // namespace

ListShape ShapeOfList(std::wstring_view text) {
    ListShape shape;
    std::vector<int> numbers[3];
    std::vector<int>* section = nullptr;
    bool isProgram = false;
    for (std::size_t at = 0; at < text.size();) {
        const IniLine line = ReadIniLine(text, at);
        at = line.next;
        if (line.kind == IniLine::kBlank) continue;
        shape.isEmpty = false;
        if (line.kind == IniLine::kSection) {
            const std::wstring name = FoldKey(line.name);
            isProgram = name == L"program";
            section = name == kTextSection    ? &numbers[0]
                      : name == kLabelSection ? &numbers[1]
                      : name == kOrderSection ? &numbers[2]
                                              : nullptr;
        } else if (section && line.hasValue) {
            section->push_back(NumberOf(line.name));
        } else if (isProgram && shape.count < 0 && FoldKey(line.name) == kCountKey) {
            shape.count = ToInt(line.value);
        }
    }
    shape.endsWhole = !text.empty() && (text.back() == L'\n' || text.back() == L'\r');
    int* const counts[] = {&shape.texts, &shape.labels, &shape.orders};
    for (int i = 0; i < 3; ++i) {
        *counts[i] = static_cast<int>(std::count_if(numbers[i].begin(), numbers[i].end(), [&](int number) {
            return number >= 0 && (shape.count < 0 || number < shape.count);
        }));
    }
    return shape;
}

bool LooksDamaged(const ListShape& shape) {
    return shape.isEmpty || !shape.endsWhole || shape.texts < shape.count || shape.labels < shape.texts ||
           shape.orders < shape.texts;
}

bool HoldsMore(const ListShape& copy, const ListShape& shape) {
    if (copy.texts != shape.texts) return copy.texts > shape.texts;
    return copy.texts > 0 && copy.labels + copy.orders > shape.labels + shape.orders;
}

// If the question is never answered, the next run's first commit takes the place beside the file.
static void KeepAmongBackups(const std::wstring& path) {
    const std::wstring folder = BackupFolderOf(settingsPath);
    CreateDirectoryW(folder.c_str(), nullptr);
    SYSTEMTIME now;
    GetLocalTime(&now);
    if (const std::optional<std::string> bytes = Read(path))
        CommitFile(folder + L"\\" + BackupFileName(now), *bytes);
}

void ExamineSettingsFile(const std::optional<std::string>& content) {
    if (examinedPath == settingsPath) return;
    examinedPath = settingsPath;
    damage.reset();
    const ListShape shape = content ? ShapeOfList(DecodeSettings(*content).text) : ListShape();
    if (!LooksDamaged(shape)) return;
    std::vector<ListSource> sources = BetterSources(shape);
    if (sources.empty()) return;
    damage = ListDamage{settingsPath, {}, shape.texts, std::move(sources)};
    if (content && !content->empty()) damage->keptIn = KeepCopy(settingsPath, *content, L"damaged");
    const std::wstring& best = damage->sources.front().path;
    if (best == GenerationPath(settingsPath)) KeepAmongBackups(best);
}

const ListDamage* FoundDamage() {
    return damage && damage->path == settingsPath ? &*damage : nullptr;
}

void ForgetDamage() {
    damage.reset();
}

std::wstring GenerationPath(const std::wstring& path) {
    return path + L".bak";
}

}  // namespace verbatix
