#include "paste/image_clipboard.h"

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

#include "base/text.h"
#include "clipboard/clipboard_text.h"
#include "clipboard/saved_clipboard.h"
#include "hotkeys/key_watch.h"
#include "image_samples.h"
#include "paste/gdi_plus.h"
#include "support/desktop.h"
#include "support/folder.h"
#include "support/foreign_clipboard.h"
#include "support/message_box.h"

namespace verbatix {
namespace {

using namespace test;

TEST(ImageFormatName, IsFoundByAnyFittingLetter) {
    struct Case {
        std::string_view bytes;
        const wchar_t* name;
    };
    const Case cases[] = {
        {kGif, L"GIF"},    {kPng, L"PNG"},   {kJpeg, L"JFIF"}, {"G---", L"GIF"},
        {"-I--", L"GIF"},                     // "RIFF" and "II*" among them
        {"--F-", L"GIF"},  {"-PF-", L"GIF"},  // GIF is asked first
        {"-P--", L"PNG"},  {"--N-", L"PNG"}, {"---G", L"PNG"}, {"I--F", L"JFIF"},
        {"BM--", L"JFIF"}, {"GIF", nullptr}, {"", nullptr},
    };
    for (const Case& c : cases) {
        const wchar_t* const name = ImageFormatName(c.bytes);
        EXPECT_EQ(std::wstring(name ? name : L""), c.name ? c.name : L"") << c.bytes;
    }
}

TEST(IsDecodableSize, EndsAtTheLimitWithoutOverflow) {
    EXPECT_TRUE(IsDecodableSize(1, 1));
    EXPECT_TRUE(IsDecodableSize(10'000, 10'000));
    EXPECT_FALSE(IsDecodableSize(10'001, 10'000));
    EXPECT_FALSE(IsDecodableSize(0x10000, 0x10000));
    EXPECT_FALSE(IsDecodableSize(UINT_MAX, UINT_MAX));
    EXPECT_FALSE(IsDecodableSize(0, 5));
    EXPECT_FALSE(IsDecodableSize(5, 0));
}

class ImageFileTest : public testing::Test {
  protected:
    ImageFileTest() {
        WaitForClipboard();
        ClipboardPutText(L"before");
        keepClipboardOnce = false;
    }

    std::wstring Write(std::wstring_view name, std::string_view bytes) {
        WriteBytes(folder.File(name), bytes);
        return folder.File(name);
    }

    // Whether a paste stroke was sent since the last call.
    static bool Pasted() {
        return KeyWatch::Take() == std::vector<SeenKey>{{VK_LCONTROL, false, 444},
                                                        {'V', false, 444},
                                                        {'V', true, 444},
                                                        {VK_LCONTROL, true, 444}};
    }

    static std::string Foreign(const wchar_t* name) { return ReadForeign(RegisterClipboardFormatW(name)); }

    Folder folder;
    KeyWatch watch;
};

// The pixels of a 32-bit bottom-up picture of that size, row by row from the top.
std::vector<DWORD> DibPixels(const std::string& dib, LONG width, LONG height) {
    BITMAPINFOHEADER header = {};
    const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    if (dib.size() < sizeof header + count * 4) return {};
    std::memcpy(&header, dib.data(), sizeof header);
    EXPECT_EQ(header.biSize, sizeof header);
    EXPECT_EQ(header.biWidth, width);
    EXPECT_EQ(header.biHeight, height);
    EXPECT_EQ(header.biBitCount, 32);
    std::vector<DWORD> pixels;
    for (LONG y = height - 1; y >= 0; --y) {
        for (LONG x = 0; x < width; ++x) {
            DWORD pixel = 0;
            std::memcpy(&pixel, dib.data() + sizeof header + static_cast<std::size_t>(y * width + x) * 4,
                        4);
            pixels.push_back(pixel & 0xFFFFFF);
        }
    }
    return pixels;
}

TEST_F(ImageFileTest, ArrivesAsBitmapAndAsItsOwnBytes) {
    const std::vector<DWORD> picture = {0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF, 0x000000, 0x102030};
    struct Case {
        const wchar_t* file;
        std::string_view bytes;
        const wchar_t* format;
        bool exact;
    };
    const Case cases[] = {
        {L"a.png", kPng, L"PNG", true}, {L"b.gif", kGif, L"GIF", true}, {L"c.jpg", kJpeg, L"JFIF", false}};
    for (const Case& c : cases) {
        EXPECT_TRUE(ImageFileToClipboard(L" \t" + Write(c.file, c.bytes) + L"\r\n "));
        EXPECT_TRUE(Pasted());
        EXPECT_TRUE(std::exchange(keepClipboardOnce, false));
        const std::vector<DWORD> pixels = DibPixels(ReadForeign(CF_DIB), 3, 2);
        if (c.exact) {
            EXPECT_EQ(pixels, picture) << c.file;
        } else {
            for (const DWORD pixel : pixels) EXPECT_NEAR(pixel >> 8 & 0xFF, 0x60, 3);
        }
        for (const wchar_t* const format : {L"PNG", L"GIF", L"JFIF"}) {
            const std::string expected(format == std::wstring_view(c.format) ? c.bytes : "(absent)");
            EXPECT_EQ(Foreign(format), expected) << c.file;
        }
        EXPECT_EQ(ReadForeign(CF_UNICODETEXT), "(absent)");
    }
}

std::string WithBytes(std::string_view file, std::size_t at, std::string_view bytes) {
    return std::string(file).replace(at, bytes.size(), bytes);
}

TEST_F(ImageFileTest, WhatIsNoImageLeavesTheClipboardEmptyAndClosed) {
    const std::pair<const wchar_t*, std::string> files[] = {
        {L"nothing.png", ""},
        {L"text.png", "This is no image."},
        {L"short.png", "\x89PNG"},
        {L"header.png", std::string(kPng.substr(0, 30))},
        {L"cut.png", std::string(kPng.substr(0, 60))},
        {L"wide.png", WithBytes(kPng, 16, "\x7F\xFF\xFF\xFF")},
        {L"large.png", WithBytes(kPng, 16, std::string_view("\x00\x00\xFF\xFF\x00\x00\xFF\xFF", 8))},
        {L"negative.png", WithBytes(kPng, 16, "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF")},
        {L"flat.png", WithBytes(kPng, 20, std::string_view("\0\0\0\0", 4))},
        {L"large.gif", WithBytes(WithBytes(kGif, 6, "\xFF\xFF\xFF\xFF"), 50, "\xFF\xFF\xFF\xFF")},
        {L"large.jpg", WithBytes(kJpeg, kJpeg.find("\xFF\xC0") + 5, "\xFF\xFF\xFF\xFF")},
        {L"cut.jpg", std::string(kJpeg.substr(0, 100))},
        {L"noise.bmp", "BM" + std::string(4000, '\xFF')},
        {L"noise.tif", "II*" + std::string(4000, '\x01')},
    };
    for (const auto& [name, bytes] : files) {
        ClipboardPutText(L"before");
        EXPECT_FALSE(ImageFileToClipboard(Write(name, bytes))) << ToBytes(name, CP_ACP);
        EXPECT_TRUE(ReadForeign().empty()) << ToBytes(name, CP_ACP);
        EXPECT_TRUE(KeyWatch::Take().empty());
        EXPECT_FALSE(keepClipboardOnce);
    }
}

TEST_F(ImageFileTest, WhatIsNoFileOfOrdinarySizeIsNoImage) {
    const std::wstring huge = folder.File(L"huge.png");
    {
        const UniqueFile file(
            CreateFileW(huge.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
        DWORD written = 0;
        WriteFile(file.Get(), kPng.data(), 20, &written, nullptr);
        SetFilePointer(file.Get(), 200 << 20, nullptr, FILE_BEGIN);
        SetEndOfFile(file.Get());
    }
    for (const std::wstring& path :
         {huge, folder.File(L"missing.png"), folder.Path(), std::wstring(), std::wstring(L" \t"),
          std::wstring(L"NUL"), std::wstring(L"\\\\.\\pipe\\nobody"), std::wstring(4096, L'x'),
          std::wstring(L"C:\\<>|\"?*")}) {
        ClipboardPutText(L"before");
        const ULONGLONG start = GetTickCount64();
        EXPECT_FALSE(ImageFileToClipboard(path)) << path.size();
        EXPECT_LT(GetTickCount64() - start, 10000u);
        EXPECT_TRUE(ReadForeign().empty()) << path.size();
    }
    EXPECT_TRUE(KeyWatch::Take().empty());
}

TEST_F(ImageFileTest, ABusyClipboardOnlyKeepsTheOldOneFromComingBack) {
    const std::wstring path = Write(L"a.png", kPng);
    {
        const Process holder = HoldClipboard();
        EXPECT_TRUE(ImageFileToClipboard(path));
    }
    EXPECT_TRUE(keepClipboardOnce);
    EXPECT_TRUE(KeyWatch::Take().empty());
    EXPECT_TRUE(ReadForeign(CF_UNICODETEXT).starts_with(WideBytes(L"before")));
}

}  // namespace
}  // namespace verbatix
