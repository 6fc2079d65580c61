// Text on the clipboard, the opened clipboard and its blocks, and names of formats.
#include "clipboard/clipboard_text.h"

#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <thread>

#include "base/text.h"
#include "clipboard/clipboard_session.h"
#include "clipboard/format_names.h"
#include "clipboard/saved_clipboard.h"
#include "support/foreign_clipboard.h"

namespace verbatix {
namespace {

using test::HoldClipboard;
using test::PutForeign;
using test::ReadForeign;
using test::WideBytes;

TEST(ClipboardSession, IsClosedOnceAndKeepsNothingThatIsRefused) {
    ClipboardSession session;
    EXPECT_TRUE(session.Close());
    EXPECT_FALSE(session.Close());
    {
        const test::Process holder = HoldClipboard();
        EXPECT_FALSE(ClipboardSession());
    }
    EXPECT_FALSE(GiveToClipboard(CF_UNICODETEXT, MakeClipboardBlock("", 2)));  // the clipboard is not open
    {
        const ClipboardSession clipboard;
        ASSERT_TRUE(clipboard);
        EmptyClipboard();
        EXPECT_FALSE(GiveToClipboard(0, MakeClipboardBlock("x", 1)));
        EXPECT_FALSE(GiveToClipboard(CF_TEXT, UniqueGlobal()));
        EXPECT_EQ(CountClipboardFormats(), 0);
    }
    EXPECT_FALSE(CloseClipboard()) << "left open";
    EXPECT_FALSE(MakeClipboardBlock("abc", SIZE_MAX / 2));
    EXPECT_FALSE(LockedBlock(nullptr));
}

TEST(ClipboardText, ComesBackAsItWasPutAndReplacesEveryFormat) {
    const UINT other = RegisterClipboardFormatW(L"Somebody's");
    ASSERT_TRUE(PutForeign({{other, "data"}}));
    for (const std::wstring& text :
         {std::wstring(), std::wstring(L"two\r\nlines\t"), std::wstring(L"\x00fc\x20ac\x4e2d\xd83d\xde00"),
          std::wstring(300000, L'x')}) {
        ASSERT_TRUE(ClipboardPutText(text));
        // One character of zeros follows the terminator.
        EXPECT_EQ(ReadForeign(CF_UNICODETEXT), WideBytes(text) + std::string(2, '\0'));
        std::wstring read = L"before";
        EXPECT_TRUE(ClipboardGetText(read));
        EXPECT_EQ(read, text);
    }
    EXPECT_EQ(ReadForeign(other), "(absent)");
    const std::tuple<UINT, std::string, std::wstring> foreign[] = {
        {CF_UNICODETEXT, WideBytes(L"one") + WideBytes(L"two"), L"one"},
        {CF_TEXT, std::string("only ANSI\0rest", 14), L"only ANSI"},
    };
    for (const auto& [format, bytes, text] : foreign) {
        ASSERT_TRUE(PutForeign({{format, bytes}}));
        std::wstring read;
        EXPECT_TRUE(ClipboardGetText(read));
        EXPECT_EQ(read, text);
    }
}

TEST(ClipboardText, IsNeitherReadNorChangedWhereThatCannotBe) {
    const auto readsNothing = [] {
        std::wstring text = L"before";
        return !ClipboardGetText(text) && text == L"before";
    };
    ASSERT_TRUE(PutForeign({{CF_DIB, std::string(44, '\0')}}));
    EXPECT_TRUE(readsNothing());
    ASSERT_TRUE(ClipboardPutText(L"old"));
    EXPECT_TRUE(ClearClipboard());
    EXPECT_TRUE(readsNothing());
    // Announced without data.
    EXPECT_TRUE(IsClipboardFormatAvailable(CF_TEXT));
    EXPECT_EQ(ReadForeign(CF_UNICODETEXT), "");
    {
        const test::Process owner = test::PutForeignAndStay(
            {{CF_UNICODETEXT, "", test::ClipboardRecordKind::announced}, {CF_TEXT, "never read"}});
        EXPECT_TRUE(readsNothing());
    }
    ASSERT_TRUE(ClipboardPutText(L"theirs"));
    {
        const test::Process holder = HoldClipboard();
        EXPECT_FALSE(ClipboardPutText(L"mine"));
        EXPECT_FALSE(ClearClipboard());
        EXPECT_TRUE(readsNothing());
    }
    EXPECT_EQ(ReadForeign(CF_UNICODETEXT).substr(0, 14), WideBytes(L"theirs"));
}

// Windows lets everybody who opens it without a window take it over from whoever did so before.
TEST(ClipboardSession, WhatAnotherOneTakesOverIsDoneAgain) {
    const auto takeOver = [] {
        std::thread([] {
            EXPECT_TRUE(OpenClipboard(nullptr) && EmptyClipboard() && CloseClipboard());
        }).join();
    };
    for (const int takenOver : {0, 1, 5}) {
        int times = 0;
        EXPECT_TRUE(WithClipboard(20000, [&] {
            EmptyClipboard();
            GiveToClipboard(CF_UNICODETEXT, MakeClipboardBlock(WideBytes(L"text"), 10));
            if (times++ < takenOver) takeOver();
            return true;
        }));
        EXPECT_EQ(times, takenOver + 1);
        std::wstring text;
        EXPECT_TRUE(ClipboardGetText(text) && text == L"text");
    }
    EXPECT_FALSE(WithClipboard(40, [&] { return takeOver(), true; }));
    // And they do take it over in the middle of whatever is done with it.
    SavedClipboard saved;
    std::atomic<int> taken = 0;
    const std::jthread other([&](const std::stop_token& stop) {
        for (; !stop.stop_requested(); Sleep(20)) taken += OpenClipboard(nullptr) && CloseClipboard();
    });
    for (int times = 0; times < 200 || taken < 10; ++times) {
        const std::wstring text = Format(L"text %d", times);
        std::wstring read;
        ASSERT_TRUE(ClipboardPutText(text) && ClipboardGetText(read)) << times;
        ASSERT_EQ(read, text);
        ASSERT_EQ(SaveClipboard(saved), 4) << times;  // the system makes three more of it
        ASSERT_TRUE(ClearClipboard() && PutSavedClipboard(saved, kClipboardPatience)) << times;
    }
}

TEST(ClipboardFormatName, NamesAFormatAndFindsItByName) {
    UINT count = 0;
    std::map<UINT, std::wstring> formats = {{128, L"OWNER DISPLAY"},
                                            {129, L"PRIVATE TEXT"},
                                            {130, L"PRIVATE BITMAP"},
                                            {131, L"PRIVATE METAFILE PICTURE"},
                                            {142, L"PRIVATE ENHANCED METAFILE"},
                                            {512, L"PRIVATE FIRST"},
                                            {767, L"PRIVATE LAST"},
                                            {768, L"GDI OBJECT FIRST"},
                                            {1023, L"GDI OBJECT LAST"}};
    for (const wchar_t* text :
         {L"TEXT", L"BITMAP", L"METAFILE PICTURE", L"SYLK", L"DIF", L"TIFF", L"OEM TEXT", L"DIB",
          L"PALETTE", L"PEN DATA", L"RIFF", L"WAVE DATA", L"UNICODE TEXT", L"ENHANCED METAFILE",
          L"DROP FILE LIST", L"LOCALE", L"DIBV5", L"MAX"}) {
        formats[++count] = text;
    }
    wchar_t name[kFormatNameCapacity];
    for (const auto& [format, text] : formats) {
        EXPECT_EQ(ClipboardFormatName(format, name), 0u);
        EXPECT_EQ(name, text);
        CopyText(name, LowerCase(text));
        EXPECT_EQ(ClipboardFormatName(0, name), format) << text;
    }
    const UINT own = RegisterClipboardFormatW(L"Somebody's own");
    EXPECT_EQ(ClipboardFormatName(own, name), 0u);
    EXPECT_STREQ(name, L"Somebody's own");
    EXPECT_EQ(ClipboardFormatName(0, name), 0u) << "registered names are not searched";
    EXPECT_EQ(ClipboardFormatName(600, name), 0u);
    EXPECT_STREQ(name, L"");
    EXPECT_EQ(ClipboardFormatName(0, name), 0u);
}

}  // namespace
}  // namespace verbatix
