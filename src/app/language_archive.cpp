#include "app/language_archive.h"

#include <windows.h>

#include <algorithm>
#include <optional>

#include "app/language_default.h"
#include "base/handle.h"
#include "base/text.h"

namespace verbatix {

static constexpr int kMaxNumber = 99999;
static constexpr std::size_t kMaxLanguages = 100;
static constexpr std::size_t kMaxTexts = 10000;  // of one language
static constexpr std::size_t kMaxUserFiles = 64;
static constexpr DWORD kMaxFileBytes = 1 << 20;

static LoadedLanguages loaded;

// Takes one line, without its line end, off the front of `text`.
static std::wstring_view TakeLine(std::wstring_view& text) {
    const std::size_t end = text.find(L'\n');
    std::wstring_view line = text.substr(0, end);
    text.remove_prefix(end == std::wstring_view::npos ? text.size() : end + 1);
    if (line.ends_with(L'\r')) line.remove_suffix(1);
    return line;
}

// A number written in decimal digits and nothing else.
static std::optional<int> PlainNumber(std::wstring_view text) {
    if (text.empty() || text.size() > 5) return std::nullopt;
    if (!std::all_of(text.begin(), text.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; }))
        return std::nullopt;
    const int number = ToInt(text);
    return number <= kMaxNumber ? std::optional(number) : std::nullopt;
}

static std::wstring Unescape(std::wstring_view text) {
    std::wstring result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t next = text[i] == L'\\' && i + 1 < text.size() ? text[i + 1] : L'\0';
        if (next == L'n' || next == L't' || next == L'\\') {
            result += next == L'n' ? L'\n' : next == L't' ? L'\t' : L'\\';
            ++i;
        } else {
            result += text[i];
        }
    }
    return result;
}

// "[language 16 Français]"; `number` stays without value when the line is another heading.
struct Heading {
    std::optional<int> number;
    std::wstring_view name;
};

static Heading ParseHeading(std::wstring_view line) {
    constexpr std::wstring_view kStart = L"[language ";
    if (!line.starts_with(kStart) || !line.ends_with(L']')) return {};
    line.remove_prefix(kStart.size());
    line.remove_suffix(1);
    const std::size_t blank = std::min(line.find(L' '), line.size());
    return {PlainNumber(line.substr(0, blank)), TrimBlanks(line.substr(blank))};
}

static Language* FindLanguage(int number, std::map<int, Language>& languages) {
    if (number < 0 || (languages.size() >= kMaxLanguages && !languages.contains(number))) return nullptr;
    return &languages[number];
}

void ReadLanguageLines(std::wstring_view text, int defaultLanguage, std::map<int, Language>& languages) {
    // Made only when a line needs it: a file without texts adds no language.
    int number = defaultLanguage;
    while (!text.empty()) {
        const std::wstring_view line = TakeLine(text);
        if (line.empty() || line.front() == L';') continue;
        if (line.front() == L'[') {
            const Heading heading = ParseHeading(TrimBlanks(line));
            number = heading.number.value_or(-1);
            Language* const language = FindLanguage(number, languages);
            if (language && !heading.name.empty()) language->name = heading.name;
            continue;
        }
        const std::size_t equals = line.find(L'=');
        if (equals == std::wstring_view::npos) continue;
        const std::optional<int> textNumber = PlainNumber(TrimBlanks(line.substr(0, equals)));
        Language* const language = textNumber ? FindLanguage(number, languages) : nullptr;
        if (!language) continue;
        if (language->texts.size() >= kMaxTexts && !language->texts.contains(*textNumber)) continue;
        language->texts[*textNumber] = Unescape(line.substr(equals + 1));
    }
}

LanguageArchive ParseLanguageArchive(std::wstring_view text) {
    LanguageArchive archive;
    std::wstring_view rest = text;
    std::size_t firstBlock = text.size();
    while (!rest.empty()) {
        const std::size_t lineStart = text.size() - rest.size();
        if (TakeLine(rest) == L"\f") {
            firstBlock = lineStart;
            break;
        }
    }
    ReadLanguageLines(text.substr(0, firstBlock), -1, archive.languages);
    while (!rest.empty()) {
        const std::wstring_view line = TakeLine(rest);
        if (line == L"\f") break;
        archive.firstRunList.append(line).append(L"\r\n");
    }
    return archive;
}

std::wstring DecodeTextFile(std::string_view bytes) {
    const bool littleEndian = bytes.starts_with("\xFF\xFE");
    if (!littleEndian && !bytes.starts_with("\xFE\xFF")) {
        if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
        return FromBytes(bytes, CP_UTF8);
    }
    std::wstring text;
    text.reserve(bytes.size() / 2);
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        text += static_cast<wchar_t>(littleEndian ? first | second << 8 : first << 8 | second);
    }
    return text;
}

static std::string ReadSmallFile(const std::wstring& path) {
    const UniqueFile file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, OPEN_EXISTING, 0, nullptr));
    LARGE_INTEGER size;
    if (!file || !GetFileSizeEx(file.Get(), &size) || size.QuadPart > kMaxFileBytes) return {};
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD read = 0;
    if (!ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) return {};
    bytes.resize(read);
    return bytes;
}

void AddTranslateFiles(const std::wstring& folder, int activeLanguage, std::map<int, Language>& languages) {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW((folder + L"\\translate_*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) names.emplace_back(found.cFileName);
    } while (names.size() < kMaxUserFiles && FindNextFileW(search, &found));
    FindClose(search);
    std::sort(names.begin(), names.end());
    for (const std::wstring& name : names) {
        const std::wstring path = Format(L"%ls\\%ls", folder.c_str(), name.c_str());
        const int defaultLanguage = languages.contains(activeLanguage) ? activeLanguage : kLanguageEnglish;
        ReadLanguageLines(DecodeTextFile(ReadSmallFile(path)), defaultLanguage, languages);
    }
}

static std::string_view ArchiveResource() {
    const HRSRC resource = FindResourceW(nullptr, L"AAAA_UNICODE.TMP", L"PNG");
    const HGLOBAL block = resource ? LoadResource(nullptr, resource) : nullptr;
    const void* const bytes = block ? LockResource(block) : nullptr;
    if (!bytes) return {};
    return {static_cast<const char*>(bytes), SizeofResource(nullptr, resource)};
}

static std::wstring ProgramFolder() {
    std::wstring path(0x8000, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    path.resize(std::min(path.rfind(L'\\'), path.size()));
    return path;
}

bool LoadLanguageArchive(int languageNumber) {
    LanguageArchive archive = ParseLanguageArchive(FromBytes(ArchiveResource(), CP_UTF8));
    if (archive.languages.empty()) return false;
    AddTranslateFiles(ProgramFolder(), languageNumber, archive.languages);
    loaded = {};
    loaded.active = archive.languages.contains(languageNumber) ? languageNumber : kLanguageEnglish;
    loaded.firstRunList = std::move(archive.firstRunList);
    for (const auto& [number, language] : archive.languages) loaded.names[number] = language.name;
    SetLanguageTexts(archive.languages[loaded.active].texts, archive.languages[kLanguageEnglish].texts);
    return true;
}

const LoadedLanguages& CurrentLanguages() {
    return loaded;
}

}  // namespace verbatix
