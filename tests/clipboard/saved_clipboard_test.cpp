#include "clipboard/saved_clipboard.h"

#include <gtest/gtest.h>
#include <shlobj.h>

#include "clipboard/clipboard_bitmap.h"
#include "clipboard/clipboard_text.h"
#include "clipboard/named_format.h"
#include "support/debug_lines.h"
#include "support/foreign_clipboard.h"

// The import table's entry for GlobalAlloc: what the program calls, and what a test can have refused.
extern "C" {
extern decltype(&GlobalAlloc) __imp_GlobalAlloc;
}

namespace verbatix {
namespace {

using test::ClipboardRecordKind;
using test::ForeignFormat;
using test::HoldClipboard;
using test::PutForeign;
using test::ReadForeign;
using test::WideBytes;

UINT Registered(const wchar_t* name) {
    return RegisterClipboardFormatW(name);
}

std::string Dib() {
    BITMAPINFOHEADER header = {sizeof header, 2, 1, 1, 24, BI_RGB, 8, 0, 0, 0, 0};
    return std::string(reinterpret_cast<const char*>(&header), sizeof header) +
           std::string("\x01\x02\x03\x04\x05\x06\0\0", 8);
}

std::string FileList() {
    DROPFILES header = {sizeof header, {0, 0}, FALSE, TRUE};
    return std::string(reinterpret_cast<const char*>(&header), sizeof header) + WideBytes(L"C:\\one.txt") +
           WideBytes(L"C:\\\x4e2d.txt") + std::string(2, '\0');
}

// A clipboard as an office program fills it. No ANSI text and no locale: the system changes those.
std::vector<ForeignFormat> RichContent() {
    std::string everyByte;
    for (int byte = 0; byte < 256; ++byte) everyByte += static_cast<char>(byte);
    return {{CF_UNICODETEXT, WideBytes(L"t\x00e4xt\x4e2d")},
            {Registered(L"HTML Format"), "Version:0.9\r\n..."},
            {CF_DIB, Dib()},
            {CF_HDROP, FileList()},
            {CF_PRIVATEFIRST + 1, everyByte},
            {Registered(L"Somebody's own"), std::string(3, '\0') + everyByte + everyByte}};
}

void ExpectOnClipboard(const std::vector<ForeignFormat>& wanted) {
    const std::vector<ForeignFormat> found = ReadForeign();
    for (const ForeignFormat& format : wanted) {
        const auto same = std::find_if(found.begin(), found.end(), [&](const auto& candidate) {
            return candidate.format == format.format;
        });
        ASSERT_NE(same, found.end()) << "no format " << format.format;
        EXPECT_EQ(same->bytes, format.bytes) << "format " << format.format;
    }
}

TEST(SavedClipboard, GivesEveryFormatBackByteForByte) {
    ASSERT_TRUE(PutForeign(RichContent()));
    SavedClipboard store;
    const int saved = SaveClipboard(store);
    EXPECT_GE(saved, static_cast<int>(RichContent().size()));
    EXPECT_EQ(store.Count(), saved);
    EXPECT_EQ(store.entries[0].format, static_cast<UINT>(CF_UNICODETEXT));
    EXPECT_EQ(std::wstring(store.entries[0].name), L"UNICODE TEXT");
    EXPECT_EQ(store.entries[0].marker, 0xAFFEu);
    EXPECT_EQ(store.entries[0].size, RichContent()[0].bytes.size());

    // Restoring does not use the store up.
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(PutForeign({{Registered(L"Something else"), "x"}}));
        EXPECT_EQ(RestoreClipboard(store), saved);
        ExpectOnClipboard(RichContent());
        EXPECT_EQ(ReadForeign(Registered(L"Something else")), "(absent)");
    }
}

TEST(SavedClipboard, KeepsABitmapThroughItsMemoryFormats) {
    ASSERT_TRUE(PutForeign({{CF_BITMAP, "", ClipboardRecordKind::bitmap}}));
    SavedClipboard store;
    EXPECT_GE(SaveClipboard(store), 1);
    bool hasDib = false;
    for (const auto& [key, entry] : store.entries) {
        EXPECT_NE(entry.format, static_cast<UINT>(CF_BITMAP));
        hasDib = hasDib || entry.format == CF_DIB;
    }
    EXPECT_TRUE(hasDib);
    ASSERT_TRUE(ClipboardPutText(L"between"));
    RestoreClipboard(store);
    const UniqueBitmap bitmap = ClipboardGetBitmap();
    ASSERT_TRUE(bitmap);
    BITMAP shape = {};
    GetObjectW(bitmap.Get(), sizeof shape, &shape);
    EXPECT_EQ(shape.bmWidth, 3);
    EXPECT_EQ(shape.bmHeight, 2);
}

TEST(SavedClipboard, CountIsTheMostItEverHeld) {
    const UINT first = Registered(L"First"), second = Registered(L"Second"), third = Registered(L"Third");
    ASSERT_TRUE(PutForeign({{first, "1"}, {second, "22"}, {third, "333"}}));
    SavedClipboard store;
    test::DebugLines lines;
    EXPECT_EQ(SaveClipboard(store), 3);
    ASSERT_TRUE(PutForeign({{third, "4444"}}));
    EXPECT_EQ(SaveClipboard(store), 1);
    EXPECT_EQ(lines.Seen(), (std::vector<std::wstring>{L"Free\n", L"Free\n"}));
    EXPECT_EQ(store.Count(), 3);
    EXPECT_EQ(store.entries[0].format, third);
    for (const int key : {1, 2}) {
        EXPECT_EQ(store.entries[key].format, 0u);
        EXPECT_EQ(store.entries[key].size, 0u);
        EXPECT_FALSE(store.entries[key].data);
    }
    ASSERT_TRUE(ClipboardPutText(L"between"));
    EXPECT_EQ(RestoreClipboard(store), 3);
    const std::vector<ForeignFormat> found = ReadForeign();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].bytes, "4444");
}

TEST(SavedClipboard, AnEmptyClipboardLeavesTheStoreAsItWas) {
    ASSERT_TRUE(ClipboardPutText(L"kept"));
    SavedClipboard store;
    const int saved = SaveClipboard(store);
    ASSERT_TRUE(PutForeign({}));
    test::DebugLines lines;
    EXPECT_EQ(SaveClipboard(store), 0);
    EXPECT_TRUE(lines.Seen().empty());
    EXPECT_EQ(RestoreClipboard(store), saved);
    std::wstring text;
    EXPECT_TRUE(ClipboardGetText(text));
    EXPECT_EQ(text, L"kept");
}

TEST(SavedClipboard, AStoreNeverSavedLeavesTheClipboardAsItIs) {
    ASSERT_TRUE(ClipboardPutText(L"theirs"));
    SavedClipboard store;
    EXPECT_EQ(RestoreClipboard(store), 0);
    EXPECT_EQ(ReleaseSavedData(store), 0);
    std::wstring text;
    EXPECT_TRUE(ClipboardGetText(text));
    EXPECT_EQ(text, L"theirs");
}

TEST(SavedClipboard, AReleasedStoreEmptiesTheClipboard) {
    ASSERT_TRUE(PutForeign({{Registered(L"First"), "1"}}));
    SavedClipboard store;
    SaveClipboard(store);
    EXPECT_EQ(ReleaseSavedData(store), 1);
    EXPECT_EQ(RestoreClipboard(store), 1);
    EXPECT_EQ(CountClipboardFormats(), 0);
}

TEST(SavedClipboard, ABusyClipboardChangesNothing) {
    const UINT first = Registered(L"First");
    ASSERT_TRUE(PutForeign({{first, "before"}}));
    SavedClipboard store;
    ASSERT_EQ(SaveClipboard(store), 1);
    ASSERT_TRUE(PutForeign({{first, "theirs"}}));
    {
        const test::Process holder = HoldClipboard();
        EXPECT_EQ(SaveClipboard(store), 0);
        EXPECT_EQ(RestoreClipboard(store), 1);
        EXPECT_EQ(ClipboardReadNamedFormat(L"First"), L"");
        EXPECT_FALSE(ClipboardGetBitmap());
    }
    EXPECT_EQ(ReadForeign(first), "theirs");
    EXPECT_EQ(std::string(static_cast<char*>(store.entries[0].data.Get()), store.entries[0].size),
              "before");
}

TEST(SavedClipboard, LeavesOutAFormatWithoutData) {
    const UINT first = Registered(L"First"), promised = Registered(L"Promised"), last = Registered(L"Last");
    const test::Process owner = test::PutForeignAndStay(
        {{first, "1"}, {promised, "", ClipboardRecordKind::announced}, {last, "333"}});
    SavedClipboard store;
    EXPECT_EQ(SaveClipboard(store), 2);
    EXPECT_EQ(store.entries[0].format, first);
    EXPECT_EQ(store.entries[1].format, last);
    EXPECT_EQ(store.entries[1].size, 3u);
    EXPECT_FALSE(CloseClipboard()) << "left open";
}

// Has every GlobalAlloc of the program refused that asks for exactly this size, for as long as it lives.
class Refusal {
  public:
    explicit Refusal(SIZE_T size) {
        refusedSize = size;
        real = __imp_GlobalAlloc;
        Patch([](UINT flags, SIZE_T bytes) __attribute__((ms_abi))->HGLOBAL {
            return bytes == refusedSize ? nullptr : real(flags, bytes);
        });
    }
    ~Refusal() { Patch(real); }
    Refusal(const Refusal&) = delete;
    Refusal& operator=(const Refusal&) = delete;

  private:
    static void Patch(decltype(&GlobalAlloc) function) {
        DWORD protection = 0;
        VirtualProtect(&__imp_GlobalAlloc, sizeof __imp_GlobalAlloc, PAGE_READWRITE, &protection);
        __imp_GlobalAlloc = function;
        VirtualProtect(&__imp_GlobalAlloc, sizeof __imp_GlobalAlloc, protection, &protection);
    }

    static inline SIZE_T refusedSize;
    static inline decltype(&GlobalAlloc) real;
};

TEST(SavedClipboard, SavesAndRestoresTheOthersWhenOneCannotBeAllocated) {
    const UINT first = Registered(L"First"), middle = Registered(L"Middle"), last = Registered(L"Last");
    const std::string big(7777, 'm');
    ASSERT_TRUE(PutForeign({{first, "1"}, {middle, big}, {last, "333"}}));
    SavedClipboard whole;
    ASSERT_EQ(SaveClipboard(whole), 3);
    SavedClipboard part;
    {
        const Refusal refusal(big.size());
        EXPECT_EQ(SaveClipboard(part), 2);
        EXPECT_FALSE(CloseClipboard()) << "left open";
        EXPECT_EQ(part.entries[1].format, last);
        EXPECT_EQ(RestoreClipboard(whole), 3);
        EXPECT_FALSE(CloseClipboard()) << "left open";
    }
    EXPECT_EQ(ReadForeign(first), "1");
    EXPECT_EQ(ReadForeign(middle), "(absent)");
    EXPECT_EQ(ReadForeign(last), "333");
}

TEST(ClipboardText, LeavesTheClipboardEmptyWhenTheTextCannotBeAllocated) {
    ASSERT_TRUE(ClipboardPutText(L"old"));
    const std::wstring text(1234, L'x');
    const Refusal refusal(text.size() * 2 + 4);
    EXPECT_TRUE(ClipboardPutText(text));
    EXPECT_EQ(CountClipboardFormats(), 0);
}

TEST(ClipboardReadNamedFormat, TakesTheLastOfThatExactName) {
    ASSERT_TRUE(PutForeign({{Registered(L"FileNameW"), WideBytes(L"C:\\\x4e2d.png") + WideBytes(L"rest")},
                            {Registered(L"Odd"), std::string("a\0b", 3)},
                            // Two formats without a name of their own.
                            {CF_PRIVATEFIRST + 1, WideBytes(L"one")},
                            {CF_PRIVATEFIRST + 2, WideBytes(L"two")}}));
    EXPECT_EQ(ClipboardReadNamedFormat(L"FileNameW"), L"C:\\\x4e2d.png");
    EXPECT_EQ(ClipboardReadNamedFormat(L"filenamew"), L"");
    EXPECT_EQ(ClipboardReadNamedFormat(L"Odd"), L"ab");
    EXPECT_EQ(ClipboardReadNamedFormat(L""), L"two");
}

TEST(ClipboardGetBitmap, IsNoneWithoutAPicture) {
    ASSERT_TRUE(ClipboardPutText(L"text"));
    EXPECT_FALSE(ClipboardGetBitmap());
}

}  // namespace
}  // namespace verbatix
