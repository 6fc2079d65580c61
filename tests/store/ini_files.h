// Settings files for tests: a folder with one, and seeded files as nobody would write them.
#pragma once

#include <windows.h>

#include <random>
#include <string>
#include <vector>

#include "base/text.h"
#include "store/list_file.h"
#include "store/settings_path.h"
#include "support/folder.h"

namespace verbatix::test {

// Points settingsPath at a file in a folder of its own; list numbers begin at 0.
class SettingsFolder {
  public:
    SettingsFolder() {
        settingsPath = folder_.File(L"Verbatix.ini");
        nextEntryNumber = 0;
    }
    ~SettingsFolder() { settingsPath.clear(); }
    SettingsFolder(const SettingsFolder&) = delete;
    SettingsFolder& operator=(const SettingsFolder&) = delete;

    std::wstring File(std::wstring_view name) const { return folder_.File(name); }
    const std::wstring& Path() const { return folder_.Path(); }
    // What the one file in the backup folder holds.
    std::string Kept() const {
        const auto names = FilesIn(File(L"Backup"));
        return names.size() == 1 ? ReadBytes(File(L"Backup\\" + names[0])) : "not one file";
    }

  private:
    Folder folder_;
};

// What a list's client was told and asked since it was made, and what it answers.
struct Asked {
    std::wstring calls;
    std::wstring message;
    UINT flags = 0;
    int answer = IDYES;
};
inline Asked asked;

inline ListClient Client(int answer = IDYES) {
    asked = {};
    asked.answer = answer;
    ListClient client;
    client.refreshViews = [](bool refresh) { asked.calls += refresh ? L"refresh." : L"views."; };
    client.classifyEntry = [](const wchar_t* text) {
        asked.calls += std::wstring(text) + L"?";
        return 5;
    };
    client.showMessage = [](HWND, const wchar_t* text, const wchar_t* caption, UINT flags) WINAPI {
        asked.message += Format(L"%ls|%ls|%u", text, caption, flags);
        asked.flags = flags;
        return asked.answer;
    };
    return client;
}

// Ordinary files, and what hands and other programs make of them, with keys in section S.
inline constexpr const wchar_t* kOddFiles[] = {
    L"",
    L"[S]",
    L"[S]\r\na=1\r\nb=2",
    L"[S]\na=1\nb=2\n",
    L"[S]\ra=1\rb=2\r",
    L"[other]\r\na=9\r\n\r\n; about S\r\n[S]\r\na=1\r\n\r\n\r\n[more]\r\nb=9\r\n",
    L"[S]\r\na=1\r\n[other]\r\n[S]\r\nb=2\r\na=3\r\n",
    L"[S]\r\na=1\r\nA=2\r\nz\r\n=c\r\n; a=7\r\n#b\r\nd=4;comment\r\n",
    L"[S]\r\na=\"1\"\r\nb='2'\r\nc=\"3'\r\nd=\"\r\n",
    L"[S]\r\na=  1  \r\n b = 2\r\nc\t=\t3\t\r\nd=\" x \"\r\n",
    L"[S]\r\na=\"x\r\nb=x\"\r\nc='x'y'\r\nd=\"\"x\"\"\r\n",
    L"[S]\r\na=12 4\r\nb= ' ' \r\nc=\t\"\tx\t\"\t\r\nd=\" \r\n",
    L"[S]\r\na=\"12\"\r\nb=\"123\"\r\nc='1234'\r\nd=\"12345\"\r\n",
    L"[S]\r\n\"a\"=1\r\n'b=2\r\nc\"=3\r\n a =4\r\nd=\"12345\r\n",
    L"[S]\r\na\r\nb=\r\n=c\r\na=1\r\n",
    L"a=0\r\n[S]\r\na=1\r\n",
    L" [ S ] \r\na=1\r\n",
    L"[S\r\na=1\r\n",
    L"[S]]\r\na=1\r\n[S] ; x\r\na=2\r\n",
    L"[s] ; ] x\r\na=1\r\n\x85[S]\r\n\xa0"
    L"a=1\r\n\x0b"
    L"b\x0b=2\x1a\r\n",
    L"[S]\r\na=\xe4\xf6\r\nb=\xa0x\xa0\r\n",
};

// Entries of texts and labels that reading a file could change: blanks and quotes at an end, what other
// lines of it look like, a character that ends a file or is half of one.
inline void AddOddEntries(EntryList& list) {
    for (const wchar_t* odd :
         {L" x ", L"\tx\t", L"'x'", L"\"x\"", L"\"x, 'y", L"\"", L"x;y", L";x", L"[list_label]", L"=",
          L"a=b=\\n", L"\x1ax", L"\xa0x\xa0", L"\xd83d", L"x\xd83d\xde00\x20ac"}) {
        const auto n = static_cast<unsigned>(list.size());
        AddEntry(list, odd, odd, 'A' + n, n % 10, -1, 7 - static_cast<int>(n));
    }
}

// The same file on every run for the same seed.
class HostileFiles {
  public:
    explicit HostileFiles(unsigned seed) : random_(seed) {}

    // Random lines of an INI file in one of the encodings, or just bytes.
    std::string Next() {
        switch (Below(8)) {
            case 0: return RandomBytes(Below(2000));
            // Of an odd last byte the system reads the other half from nowhere: other results on each run.
            case 1: return "\xff\xfe" + RandomBytes(2 * Below(1000));
            case 2: return "\xef\xbb\xbf" + ToBytes(RandomLines(), 65001);
            case 3:
            case 4: return ToBytes(RandomLines(), 0);
            default: return Utf16File(RandomLines());
        }
    }

    std::wstring RandomLines() {
        std::wstring text;
        for (unsigned lines = Below(40); lines > 0; --lines)
            text += RandomLine() + Pick({L"\r\n", L"\r\n", L"\r\n", L"\n", L"\r"});
        if (Below(4) == 0 && !text.empty()) text.resize(text.size() - 1 - Below(2) % text.size());
        return text;
    }

    unsigned Below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }

    std::wstring Pick(std::initializer_list<const wchar_t*> from) {
        return from.begin()[Below(static_cast<unsigned>(from.size()))];
    }

    std::wstring RandomKey() {
        return Pick({L"text_000", L"text_001", L"text_002", L"TEXT_001", L"text_003", L"text_1000",
                     L"text_7", L"topmost", L"listcmd_count", L"WinRC", L"use_menu_sort", L"", L" ",
                     L";text_002", L"m_disables_keys"});
    }

    std::wstring RandomValue() {
        std::wstring value =
            Pick({L"", L"Ctrl+A=", L"R-Win+F5=", L"-5", L"300000000", L"7", L"\"", L"'", L" ", L"Ctrl+"});
        for (unsigned pieces = Below(4); pieces > 0; --pieces) {
            value +=
                Pick({L"text", L" ", L"\t", L"\"", L"'", L"=", L"<E<N<D|", L"\x416", L"\x20ac", L"\xd83d",
                      L"\xd83d\xde00", L";", L"[list_text]", L"\\n", L"|", L"\xa0", L"\x1a", L"Ctrl+A|"});
        }
        if (Below(50) == 0) value += std::wstring(Below(9000), L'x');
        if (Below(40) == 0) value.push_back(L'\0');
        return value;
    }

  private:
    std::wstring RandomLine() {
        switch (Below(10)) {
            case 0:
            case 1:
                return Pick({L"[list_text]", L"[list_label]", L"[list_order]", L"[Program]", L"[LIST_TEXT]",
                             L"[Verbatix]", L"[list_text", L" [list_text] ", L"[]", L"[list_text]]",
                             L"[other]"});
            case 2: return Pick({L"", L"; comment", L"text_001", L"=", L"  ", L"#x=y"});
            default:
                return Pick({L"", L"", L"", L" "}) + RandomKey() + Pick({L"=", L"=", L"=", L" = ", L"=="}) +
                       RandomValue();
        }
    }

    std::string RandomBytes(unsigned count) {
        std::string bytes(count, '\0');
        for (char& byte : bytes) byte = static_cast<char>(random_());
        return bytes;
    }

    std::mt19937 random_;
};

}  // namespace verbatix::test
