#include "bench/store_bench.h"

#include <windows.h>

#include <cstdio>

#include "bench/measure.h"
#include "store/entry_syntax.h"
#include "store/ini_files.h"
#include "store/list_exchange.h"
#include "store/list_file.h"
#include "store/profile.h"
#include "store/text_file.h"

namespace verbatix::bench {

namespace {

double Milliseconds(const auto& work) {
    const double start = Now();
    work();
    return Now() - start;
}

void Row(const char* name, double value) {
    bench::Row(name, value, "ms");
}

ListClient Client() {
    ListClient client;
    client.showMessage = [](HWND, const wchar_t*, const wchar_t*, UINT) WINAPI { return IDYES; };
    return client;
}

EntryList MakeList(unsigned count) {
    nextEntryNumber = 0;
    EntryList list;
    for (unsigned i = 0; i < count; ++i) {
        AddEntry(list,
                 Format(L"Text number %u of the list, with some words and a %%date%%\\nsecond line", i),
                 Format(L"Group/Label %u", i), 'A' + i % 26, i % 10, -1, static_cast<int>(i));
    }
    return list;
}

double LoadTime() {
    nextEntryNumber = 0;
    EntryList list;
    return Milliseconds([&] { LoadList(list, Client()); });
}

// As it would be with a profile call for each value.
double LoadTimeByKey(unsigned count) {
    nextEntryNumber = 0;
    EntryList list;
    return Milliseconds([&] {
        for (unsigned i = 0; i < count; ++i) {
            const std::wstring key = EntryKey(i);
            const std::wstring value = ReadProfileText(L"list_text", key.c_str(), 4096);
            const std::wstring label = ReadProfileText(L"list_label", key.c_str(), 256);
            ParseStoredEntry(list, value, label, ReadProfileNumber(L"list_order", key.c_str(), 0));
        }
    });
}

// Like a save with nothing around it: the same bytes into a new file, flushed.
double PlainWrite(const test::SettingsFolder& folder) {
    const std::string bytes = test::ReadBytes(settingsPath);
    const std::wstring path = folder.File(L"plain.bin");
    return MedianTime(9, [&] { WriteWholeFile(path, CREATE_ALWAYS, bytes); });
}

void CompareRow(const char* name, double time, double plain) {
    std::printf("%-58s %12.3f ms, %.2f times one plain write and flush\n", name, time, time / plain);
}

// As a hand leaves a file: a comment and a blank line between sections.
void AddCommentsAndBlankLines() {
    std::wstring text = DecodeByMark(test::ReadBytes(settingsPath));
    ReplaceAll(text, L"[list_", L"\r\n; the next section\r\n\r\n[list_");
    test::WriteBytes(settingsPath, AsUtf16File(text));
}

double SaveOneTime(EntryList& list) {
    return MedianTime(9, [&] {
        wchar_t& first = list.at(500).current.text[0];
        first = first == L'X' ? L'Y' : L'X';
        SaveList(list, Client(), false, true);
    });
}

double SaveAllTime(EntryList& list) {
    return MedianTime(9, [&] {
        wchar_t& first = list.at(500).current.text[0];
        first = first == L'X' ? L'Y' : L'X';
        SaveList(list, Client(), false, false);
    });
}

void BenchCommits(const test::SettingsFolder& folder) {
    settingsPath = folder.File(L"thousand.ini");
    EntryList list = MakeList(1000);
    SaveList(list, Client(), false, false);
    const double plain = PlainWrite(folder);
    Row("plain write and flush of 1000 entries", plain);
    CompareRow("commit of 1000 entries (at most 100 ms)", SaveAllTime(list), plain);
    AddCommentsAndBlankLines();
    CompareRow("the same with comments and blank lines", SaveAllTime(list), plain);
    CompareRow("commit of 1 changed entry of 1000", SaveOneTime(list), plain);

    settingsPath = folder.File(L"ten thousand.ini");
    EntryList large = MakeList(10000);
    SaveList(large, Client(), false, false);
    const double plainLarge = PlainWrite(folder);
    Row("plain write and flush of 10,000 entries", plainLarge);
    CompareRow("commit of 1 of 10,000 (at most 30 ms)", SaveOneTime(large), plainLarge);
}

}  // namespace

void BenchStore() {
    const test::SettingsFolder folder;
    EntryList few = MakeList(10);
    SaveList(few, Client(), false, false);
    const double loadOfFew = LoadTime();
    Row("load 10 entries", loadOfFew);

    settingsPath = folder.File(L"many.ini");
    EntryList many = MakeList(1000);
    Row("save 1000 entries into a new file", Milliseconds([&] { SaveList(many, Client(), false, false); }));
    Row("save 1000 entries over themselves", Milliseconds([&] { SaveList(many, Client(), false, false); }));
    const double loadOfMany = LoadTime();
    Row("load 1000 entries", loadOfMany);
    Row("load 1000 more than 10 entries (at most 300)", loadOfMany - loadOfFew);
    Row("load 1000 entries with a call for each value", LoadTimeByKey(1000));

    many.at(500).current.text[0] = L'X';
    Row("save 1 changed entry of 1000", Milliseconds([&] { SaveList(many, Client(), false, true); }));
    BenchCommits(folder);

    settingsPath = folder.File(L"many.ini");
    const std::wstring other = settingsPath;
    settingsPath = folder.File(L"merged.ini");
    EntryList merged = MakeList(0);
    Row("merge 1000 entries (at most 1000)",
        Milliseconds([&] { ImportListFile(merged, Client(), other); }));
}

}  // namespace verbatix::bench
