#include "bench/expansion_bench.h"

#include <windows.h>

#include <clocale>
#include <string>

#include "base/text.h"
#include "bench/measure.h"
#include "paste/text/placeholders.h"

namespace verbatix::bench {

// A code every twenty characters: printing ones, names and variables in turn.
static std::wstring TextWithCodes(std::size_t length) {
    static constexpr const wchar_t* kCodes[] = {L"%DD%",   L"%MMMM%", L"%YYYY%",    L"%hh%",
                                                L"%d+3%",  L"%TAB%",  L"%mlwd%",    L"%CW%",
                                                L"%DDDD%", L"%LDF%",  L"%lwdim:5%", L"%user_name%"};
    std::wstring text;
    for (std::size_t i = 0; text.size() < length; ++i) {
        std::wstring piece = kCodes[i % std::size(kCodes)];
        piece.resize(20, L'x');
        text += piece;
    }
    text.resize(length);
    return text;
}

static void BenchTexts() {
    KnownFacts facts;
    facts.userName = L"user";
    GetLocalTime(&facts.dates.now);
    for (const std::size_t length : {1000u, 2000u, 4000u, 64000u}) {
        const std::wstring text = TextWithCodes(length);
        const double time = MedianTime(101, [&] {
            std::wstring expanded = text;
            ReplaceKnown(expanded, facts);
        });
        const std::wstring name = Format(L"expansion: %d characters, %d codes", static_cast<int>(length),
                                         static_cast<int>(length / 20));
        Row(ToBytes(name, CP_UTF8).c_str(), time, "ms");
    }
}

static void BenchSelection() {
    std::wstring selection;
    while (selection.size() < 524288) selection += L"A Megabyte of text, ÄÖÜ and Жук in it.\r\n";
    std::wstring tokens;
    for (const wchar_t* token : Placeholders()) {
        if (std::wstring_view(token).starts_with(L"%copy_text")) tokens += token;
    }
    const double time = MedianTime(11, [&] {
        std::wstring text = tokens;
        ReplaceCopiedText(text, selection);
    });
    Row("expansion: 1 MB selection, all nine transforms (at most 100)", time, "ms");
}

void BenchExpansion() {
    std::setlocale(LC_ALL, "");
    BenchTexts();
    BenchSelection();
}

}  // namespace verbatix::bench
