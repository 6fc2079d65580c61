#include "clipboard/saved_clipboard.h"

#include <gtest/gtest.h>
#include <shlobj.h>

#include "clipboard/clipboard_bitmap.h"
#include "clipboard/clipboard_session.h"
#include "clipboard/clipboard_text.h"
#include "clipboard/named_format.h"
#include "support/foreign_clipboard.h"
#include "support/import_patch.h"

// The import table's entry for GlobalAlloc: what the program calls, and what a test can have refused.
extern "C" {
extern decltype(&CloseClipboard) __imp_CloseClipboard;
extern decltype(&GlobalAlloc) __imp_GlobalAlloc;
}

namespace verbatix {
namespace {

using test::ClipboardRecordKind;
using test::ClipboardText;
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

int closes;
const decltype(&CloseClipboard) realClose = __imp_CloseClipboard;

BOOL WINAPI CountedClose() {
    ++closes;
    return realClose();
}

TEST(SavedClipboard, GivesEveryFormatBackByteForByte) {
    ASSERT_TRUE(PutForeign(RichContent()));
    SavedClipboard store;
    const int saved = SaveClipboard(store);
    EXPECT_EQ(store.Count(), saved);
    EXPECT_EQ(std::wstring(store.entries[0].name), L"UNICODE TEXT");
    EXPECT_EQ(store.entries[0].size, RichContent()[0].bytes.size());
    for (int round = 0; round < 2; ++round) {  // restoring does not use the store up
        ASSERT_TRUE(PutForeign({{Registered(L"Something else"), "x"}}));
        closes = 0;
        {
            const test::ImportPatch patch(__imp_CloseClipboard, CountedClose);
            EXPECT_EQ(RestoreClipboard(store), saved);
        }
        EXPECT_EQ(closes, 1) << "others saw it empty in between";
        for (const ForeignFormat& format : RichContent()) {
            EXPECT_EQ(ReadForeign(format.format), format.bytes) << format.format;
        }
        EXPECT_EQ(ReadForeign(Registered(L"Something else")), "(absent)");
    }
}

TEST(SavedClipboard, LeavesOutWhatIsNoMemoryOfItsOwn) {
    ASSERT_TRUE(PutForeign({{CF_BITMAP, "", ClipboardRecordKind::bitmap}}));
    SavedClipboard store;
    EXPECT_GE(SaveClipboard(store), 1);
    for (const auto& [key, entry] : store.entries) EXPECT_NE(entry.format, static_cast<UINT>(CF_BITMAP));
    ASSERT_TRUE(ClipboardPutText(L"between"));
    EXPECT_FALSE(ClipboardGetBitmap());
    RestoreClipboard(store);  // the system makes the bitmap of its memory formats again
    BITMAP shape = {};
    GetObjectW(ClipboardGetBitmap().Get(), sizeof shape, &shape);
    EXPECT_TRUE(shape.bmWidth == 3 && shape.bmHeight == 2);
    // A format that is promised and never comes.
    const UINT first = Registered(L"First"), promised = Registered(L"Promised"), last = Registered(L"Last");
    const test::Process owner = test::PutForeignAndStay(
        {{first, "1"}, {promised, "", ClipboardRecordKind::announced}, {last, "333"}});
    SavedClipboard partly;
    EXPECT_EQ(SaveClipboard(partly), 2);
    EXPECT_EQ(partly.entries[0].format, first);
    EXPECT_EQ(partly.entries[1].format, last);
    EXPECT_EQ(partly.entries[1].size, 3u);
    EXPECT_FALSE(CloseClipboard()) << "left open";
    // A metafile picture is memory that holds a handle, which is gone with the clipboard's content.
    const METAFILEPICT picture = {MM_TEXT, 1, 1, CloseMetaFile(CreateMetaFileW(nullptr))};
    {
        const ClipboardSession clipboard;
        EmptyClipboard();
        const std::string_view bytes(reinterpret_cast<const char*>(&picture), sizeof picture);
        ASSERT_TRUE(GiveToClipboard(CF_METAFILEPICT, MakeClipboardBlock(bytes, bytes.size())));
    }
    SavedClipboard none;
    EXPECT_EQ(SaveClipboard(none), 0);
}

TEST(SavedClipboard, CountIsTheMostItEverHeld) {
    const UINT first = Registered(L"First"), second = Registered(L"Second"), third = Registered(L"Third");
    SavedClipboard store;
    ASSERT_TRUE(ClipboardPutText(L"theirs"));
    EXPECT_EQ(RestoreClipboard(store), 0);  // never saved: the clipboard stays
    EXPECT_EQ(ClipboardText(), L"theirs");
    ASSERT_TRUE(PutForeign({{first, "1"}, {second, "22"}, {third, "333"}}));
    EXPECT_EQ(SaveClipboard(store), 3);
    ASSERT_TRUE(PutForeign({{third, "4444"}}));
    EXPECT_EQ(SaveClipboard(store), 1);
    ASSERT_TRUE(PutForeign({}));
    EXPECT_EQ(SaveClipboard(store), 0);  // an empty clipboard leaves the store as it was
    for (const int key : {1, 2}) {
        EXPECT_TRUE(store.entries[key].format == 0 && store.entries[key].size == 0 &&
                    !store.entries[key].data);
    }
    {
        const test::Process holder = HoldClipboard();
        EXPECT_EQ(SaveClipboard(store), 0);
        EXPECT_EQ(RestoreClipboard(store), 3);
        EXPECT_EQ(ClipboardReadNamedFormat(L"Third"), L"");
    }
    EXPECT_EQ(CountClipboardFormats(), 0);
    EXPECT_EQ(RestoreClipboard(store), 3);
    const std::vector<ForeignFormat> found = ReadForeign();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].bytes, "4444");
    EXPECT_EQ(ReleaseSavedData(store), 3);
    EXPECT_EQ(RestoreClipboard(store), 3);  // released: the clipboard is emptied
    EXPECT_EQ(CountClipboardFormats(), 0);
}

// Has every GlobalAlloc of the program refused that asks for exactly this size, for as long as it lives.
class Refusal {
  public:
    explicit Refusal(SIZE_T size) { refusedSize = size; }

  private:
    static HGLOBAL WINAPI Allocate(UINT flags, SIZE_T bytes) {
        return bytes == refusedSize ? nullptr : real(flags, bytes);
    }

    static inline SIZE_T refusedSize;
    static inline const decltype(&GlobalAlloc) real = __imp_GlobalAlloc;
    const test::ImportPatch<decltype(&GlobalAlloc)> patch_{__imp_GlobalAlloc, Allocate};
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
    const Refusal refusal(1234 * 2 + 4);
    EXPECT_TRUE(ClipboardPutText(std::wstring(1234, L'x')));
    EXPECT_EQ(CountClipboardFormats(), 0);
}

BOOL WINAPI CloseTooLate() {
    return FALSE;
}

TEST(SavedClipboard, KeepsWhatItHasWhereAnotherTakesTheClipboardOver) {
    ASSERT_TRUE(ClipboardPutText(L"kept"));
    SavedClipboard store;
    ASSERT_GT(SaveClipboard(store), 0);
    ASSERT_TRUE(ClipboardPutText(L"another's"));
    {
        const test::ImportPatch patch(__imp_CloseClipboard, CloseTooLate);
        EXPECT_EQ(SaveClipboard(store), 0);
    }
    CloseClipboard();
    RestoreClipboard(store);
    EXPECT_EQ(ClipboardText(), L"kept");
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

}  // namespace
}  // namespace verbatix
