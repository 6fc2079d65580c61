// The words that the editor suggests: a text file of the user's beside the settings file, in any encoding
// that editors write. Words stand between white space, in the order in which they are to be suggested.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace verbatix {

// Where that file lies.
std::wstring WordFilePath();

// Whether there is a file with any word in it. Reads no further than the first one, so that the size of the
// file costs nothing at start.
bool FileHasWords(const std::wstring& path);

// Every word between line feeds, as written and in lower case: one search through ten megabytes takes a few
// milliseconds, and nothing has to be sorted.
struct WordList {
    std::wstring words;
    std::wstring folded;  // the same places
};

WordList MakeWordList(std::wstring_view text);

// The file's words; none when it cannot be read or is larger than 32 MB.
WordList LoadWordList(const std::wstring& path);

// The first words, at most `most` and no two alike, that are longer than `prefix` and begin with it, in
// capitals or small letters.
std::vector<std::wstring> SuggestWords(const WordList& list, std::wstring_view prefix, std::size_t most);

// Where the word begins that ends at `caret`; `caret` itself when there is none, or when the word goes on
// behind it.
std::size_t WordStart(std::wstring_view text, std::size_t caret);

}  // namespace verbatix
