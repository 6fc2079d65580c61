// Pictures in files and on the clipboard.
#include "paste/builtin/image_clipboard.h"

#include <cstring>
#include <utility>

#include "base/text.h"
#include "image_samples.h"
#include "paste/builtin/builtin_commands.h"
#include "paste/builtin/clipboard_image.h"
#include "paste/builtin/gdi_plus.h"
#include "paste/selection_target.h"
#include "support/foreign_clipboard.h"
#include "support/message_box.h"

namespace verbatix {
namespace {

using namespace test;

TEST(ImageFiles, AreToldByAnyFittingLetterAndHaveALimit) {
    const std::pair<std::string_view, const wchar_t*> rows[] = {
        {"\xff\xd8\xff\xe0", L"JFIF"},
        {"BM--", L"JFIF"},
        {"GIF", L""},
        {"", L""},
        {"-PF-", L"GIF"},  // GIF is asked first
        {"---G", L"PNG"},
    };
    for (const auto& [bytes, name] : rows) {
        const wchar_t* const found = ImageFormatName(bytes);
        EXPECT_EQ(std::wstring(found ? found : L""), name) << bytes;
    }
    constexpr std::uint64_t kGigabyte = 1 << 30;
    EXPECT_TRUE(IsDecodableSize(20'000, 20'000, 5 * kGigabyte));
    EXPECT_FALSE(IsDecodableSize(20'000, 20'000, 4 * kGigabyte) ||
                 IsDecodableSize(30'000, 20'000, 100 * kGigabyte) ||
                 IsDecodableSize(UINT_MAX, UINT_MAX, UINT64_MAX) || IsDecodableSize(0, 5, kGigabyte));
}

struct ImageFileTest : SelectionTarget {
    std::wstring Write(std::wstring_view name, std::string_view bytes) const {
        WriteBytes(folder.File(name), bytes);
        return folder.File(name);
    }
    Folder folder;
};

// The pixels of a 32-bit bottom-up picture of 3 by 2, row by row from the top.
std::vector<DWORD> DibPixels(const std::string& dib) {
    BITMAPINFOHEADER header = {};
    DWORD pixels[6] = {};
    if (dib.size() < sizeof header + sizeof pixels) return {};
    std::memcpy(&header, dib.data(), sizeof header);
    std::memcpy(pixels, dib.data() + sizeof header, sizeof pixels);
    EXPECT_TRUE(header.biWidth == 3 && header.biHeight == 2 && header.biBitCount == 32);
    for (DWORD& pixel : pixels) pixel &= 0xFFFFFF;
    return {pixels[3], pixels[4], pixels[5], pixels[0], pixels[1], pixels[2]};
}

TEST_F(ImageFileTest, ArrivesAsBitmapAndAsItsOwnBytes) {
    const std::vector<DWORD> picture = {0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF, 0x000000, 0x102030};
    EXPECT_TRUE(ImageFileToClipboard(L" \t" + Write(L"a.png", kPng) + L"\r\n "));
    EXPECT_EQ(StrokesOf('V'), 1);
    EXPECT_TRUE(std::exchange(keepClipboardOnce, false));
    EXPECT_EQ(DibPixels(ReadForeign(CF_DIB)), picture);
    EXPECT_EQ(ReadForeign(RegisterClipboardFormatW(L"PNG")), kPng);
    for (const UINT other :
         {RegisterClipboardFormatW(L"GIF"), RegisterClipboardFormatW(L"JFIF"), UINT{CF_UNICODETEXT}})
        EXPECT_EQ(ReadForeign(other), "(absent)");
    // One pixel.
    const auto gif = "GIF89a\1\0\1\0\x80\0\0\0\0\0\xff\xff\xff,\0\0\0\0\1\0\1\0\0\2\2\x44\1\0;"sv;
    EXPECT_TRUE(ImageFileToClipboard(Write(L"b.gif", gif)));
    EXPECT_EQ(ReadForeign(RegisterClipboardFormatW(L"GIF")), gif);
}

std::string WithBytes(std::string_view file, std::size_t at, std::string_view bytes) {
    return std::string(file).replace(at, bytes.size(), bytes);
}

TEST_F(ImageFileTest, WhatIsNoImageLeavesTheClipboardEmptyAndClosed) {
    const std::pair<const wchar_t*, std::string> files[] = {
        {L"nothing.png", ""},
        {L"text.png", "This is no image."},
        {L"cut.png", std::string(kPng.substr(0, 60))},
        {L"wide.png", WithBytes(kPng, 16, "\x7F\xFF\xFF\xFF")},
        {L"large.png", WithBytes(kPng, 16, std::string_view("\x00\x00\xFF\xFF\x00\x00\xFF\xFF", 8))},
    };
    std::vector<std::wstring> paths = {folder.File(L"missing.png"), folder.Path(), L"", L"NUL",
                                       std::wstring(4096, L'x')};
    for (const auto& [name, bytes] : files) paths.push_back(Write(name, bytes));
    for (const std::wstring& path : paths) {
        ClipboardPutText(L"before");
        EXPECT_FALSE(ImageFileToClipboard(path)) << path;
        EXPECT_TRUE(ReadForeign().empty()) << path;
        EXPECT_FALSE(keepClipboardOnce);
    }
    EXPECT_EQ(StrokesOf('V'), 0);
}

struct ClipboardImageTest : SelectionTarget {
    // The target, which pastes, may have the clipboard open for a moment.
    static void Put(HBITMAP bitmap) {
        ASSERT_TRUE(WaitFor([] { return OpenClipboard(nullptr) != FALSE; }));
        EmptyClipboard();
        SetClipboardData(CF_BITMAP, bitmap);
        CloseClipboard();
    }
};

TEST_F(ClipboardImageTest, IsCroppedOrBecomesSource) {
    PixelImage sheet = {
        60, 40, std::vector<std::uint32_t>(std::size_t{60} * 40, 0xFFFFFF)};  // with a dark rectangle
    for (std::uint32_t y = 7; y < 19; ++y) {
        for (std::uint32_t x = 11; x < 31; ++x) sheet.pixels[y * 60 + x] = 0x400000 + x + y * 256;
    }
    Put(MakeBitmap(sheet).Release());
    RunBuiltinCommand(L"ClipboardImgCliper:3", nullptr);
    UniqueBitmap bitmap;
    EXPECT_TRUE(WaitFor([&] { return static_cast<bool>(bitmap = ClipboardGetBitmap()); }));
    PixelImage cropped = ReadPixels(bitmap.Get());
    for (std::uint32_t& pixel : cropped.pixels) pixel &= 0xFFFFFF;
    EXPECT_EQ(cropped.pixels, Crop(sheet, {8, 4, 34, 22}).pixels);
    EXPECT_EQ(StrokesOf('V'), 1);
    Put(MakeBitmap({2, 2, {0x00030201, 0x00060504, 0x00FF8000, 0}}).Release());
    RunBuiltinCommand(L"ClipboardImgRGBA", nullptr);
    const std::wstring source = ClipboardText();
    // The fourth byte of a pixel is whatever the screen's format leaves there.
    EXPECT_TRUE(source.starts_with(L"int xs=2;\r\nint ys=2;\r\nUCHAR img_data[]={\r\n1,2,3,")) << source;
    EXPECT_NE(source.find(L",0,128,255,"), std::wstring::npos);
    EXPECT_TRUE(keepClipboardOnce);
}

TEST_F(ClipboardImageTest, WhatIsBrokenOrTooLargeDoesNoHarm) {
    const UniqueBitmap larger(CreateBitmap(30'000, 20'000, 1, 1, nullptr));  // 2.4 GB in 32 bits
    EXPECT_TRUE(ReadPixels(larger.Get()).pixels.empty());
    EXPECT_TRUE(ReadPixels(nullptr).pixels.empty());
    // What the system makes of a broken header differs; a box comes only where it makes nothing.
    const BITMAPINFOHEADER header = {sizeof header, 0x7FFFFFFF, 0x7FFFFFFF, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    for (const wchar_t* const command : {L"ClipboardImgCliper", L"ClipboardImgRGBA"}) {
        ASSERT_TRUE(
            PutForeign({{CF_DIB, std::string(reinterpret_cast<const char*>(&header), sizeof header)}}));
        const MessageBoxAnswer box;
        EXPECT_EQ(RunBuiltinCommand(command, nullptr), 1);
    }
    EXPECT_TRUE(ClipboardPutText(L"closed"));
}

}  // namespace
}  // namespace verbatix
