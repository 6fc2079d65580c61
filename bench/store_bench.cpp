#include "bench/store_bench.h"

#include <windows.h>

#include <cstdio>

#include "store/entry_syntax.h"
#include "store/ini_files.h"
#include "store/list_exchange.h"
#include "store/list_file.h"
#include "store/profile.h"

namespace verbatix::bench {

namespace {

double Milliseconds(const auto& work) {
    LARGE_INTEGER frequency;
    LARGE_INTEGER start;
    LARGE_INTEGER end;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&start);
    work();
    QueryPerformanceCounter(&end);
    return 1000.0 * static_cast<double>(end.QuadPart - start.QuadPart) /
           static_cast<double>(frequency.QuadPart);
}

void Row(const char* name, double value) {
    std::printf("%-44s  %10.1f  ms\n", name, value);
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

    const std::wstring other = settingsPath;
    settingsPath = folder.File(L"merged.ini");
    EntryList merged = MakeList(0);
    Row("merge 1000 entries (at most 1000)", Milliseconds([&] { ImportListFile(merged, Client(), other); }));
}

}  // namespace verbatix::bench
