#include "store/word_list.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cwctype>

#include "base/product.h"
#include "base/text.h"
#include "store/settings_path.h"
#include "store/text_file.h"

namespace verbatix {

std::wstring WordFilePath() {
    return settingsPath.substr(0, settingsPath.rfind(L'\\') + 1) + kProductName + L"_words.txt";
}

bool FileHasWords(const std::wstring& path) {
    const UniqueFile file = OpenForReading(path);
    std::array<char, 4096> block;
    DWORD read = 0;
    bool isFirst = true;
    while (file && ReadFile(file.Get(), block.data(), block.size(), &read, nullptr) && read > 0) {
        std::string_view bytes(block.data(), read);
        // A mark is no word.
        if (isFirst && EncodingByMark(bytes) == Encoding::kUtf8) bytes.remove_prefix(3);
        if (isFirst && EncodingByMark(bytes) != Encoding::kAnsi) bytes.remove_prefix(2);
        isFirst = false;
        // In UTF-16 a blank and a line end are these bytes and zeros.
        if (std::any_of(bytes.begin(), bytes.end(), [](unsigned char byte) { return byte > 0x20; }))
            return true;
    }
    return false;
}

static bool Separates(wchar_t c) {
    return c <= L' ' || (c >= 0x80 && std::iswspace(c) != 0);
}

WordList MakeWordList(std::wstring_view text) {
    WordList list;
    list.words.reserve(text.size() + 2);
    list.words.push_back(L'\n');
    for (const wchar_t c : text) {
        const bool ends = Separates(c);
        if (!ends || list.words.back() != L'\n') list.words.push_back(ends ? L'\n' : c);
    }
    if (list.words.back() != L'\n') list.words.push_back(L'\n');
    list.folded = list.words;
    CharLowerBuffW(list.folded.data(), static_cast<DWORD>(list.folded.size()));
    return list;
}

WordList LoadWordList(const std::wstring& path) {
    constexpr std::int64_t kLargestFile = 32LL << 20;
    const std::optional<std::string> bytes = ReadWholeFile(path, kLargestFile);
    return MakeWordList(bytes ? DecodeText(*bytes) : std::wstring());
}

std::vector<std::wstring> SuggestWords(const WordList& list, std::wstring_view prefix, std::size_t most) {
    std::vector<std::wstring> words;
    if (prefix.empty()) return words;
    const std::wstring wanted = L'\n' + LowerCase(prefix);
    for (std::size_t at = list.folded.find(wanted); at != std::wstring::npos && words.size() < most;
         at = list.folded.find(wanted, at + 1)) {
        const std::wstring word = list.words.substr(at + 1, list.words.find(L'\n', at + 1) - at - 1);
        const bool isNew = std::find(words.begin(), words.end(), word) == words.end();
        if (word.size() > prefix.size() && isNew) words.push_back(word);
    }
    return words;
}

static bool IsWordCharacter(wchar_t c) {
    return IsCharAlphaNumericW(c) || c == L'_' || c == L'-';
}

std::size_t WordStart(std::wstring_view text, std::size_t caret) {
    if (caret > text.size() || (caret < text.size() && IsWordCharacter(text[caret]))) return caret;
    std::size_t start = caret;
    while (start > 0 && IsWordCharacter(text[start - 1])) --start;
    return start;
}

}  // namespace verbatix
