#include "paste/clipboard_image.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "clipboard/clipboard_text.h"
#include "clipboard/saved_clipboard.h"
#include "paste/builtin_commands.h"
#include "support/desktop.h"
#include "support/foreign_clipboard.h"
#include "support/message_box.h"

namespace verbatix {
namespace {

using namespace test;

class ClipboardImageTest : public testing::Test {
  protected:
    ClipboardImageTest() {
        WaitForClipboard();
        keepClipboardOnce = false;
    }

    static void Put(HBITMAP bitmap) {
        ASSERT_TRUE(OpenClipboard(nullptr));
        EmptyClipboard();
        SetClipboardData(CF_BITMAP, bitmap);
        CloseClipboard();
    }

    static void ExpectBox(const wchar_t* command, const wchar_t* text) {
        MessageBoxAnswer box;
        EXPECT_EQ(RunBuiltinCommand(command, nullptr), 1);
        ASSERT_TRUE(box.Seen()) << command;
        EXPECT_EQ(box.Text(), text);
        EXPECT_EQ(box.Caption(), L"");
        EXPECT_FALSE(box.HasOwner());
    }
};

// A white picture with a dark rectangle in it.
PixelImage Sheet(int width, int height, PixelArea dark) {
    PixelImage image = {width, height, {}};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const bool inside = x >= dark.left && x < dark.right && y >= dark.top && y < dark.bottom;
            image.pixels.push_back(static_cast<std::uint32_t>(inside ? 0x400000 + x + y * 256 : 0xFFFFFF));
        }
    }
    return image;
}

PixelImage WithoutAlpha(PixelImage image) {
    for (std::uint32_t& pixel : image.pixels) pixel &= 0xFFFFFF;
    return image;
}

TEST_F(ClipboardImageTest, IsCroppedToItsContent) {
    const PixelImage sheet = Sheet(60, 40, {11, 7, 31, 19});
    struct Case {
        const wchar_t* command;
        PixelArea area;
    };
    for (const Case& c :
         {Case{L"ClipboardImgCliper", {11, 7, 31, 19}}, Case{L"ClipboardImgCliper:3", {8, 4, 34, 22}}}) {
        Put(MakeBitmap(sheet).Release());
        RunBuiltinCommand(c.command, nullptr);
        const PixelImage cropped = WithoutAlpha(ReadPixels(ClipboardGetBitmap().Get()));
        const PixelImage expected = Crop(sheet, c.area);
        EXPECT_EQ(cropped.width, expected.width);
        EXPECT_EQ(cropped.height, expected.height);
        EXPECT_EQ(cropped.pixels, expected.pixels);
    }
}

TEST_F(ClipboardImageTest, BecomesSource) {
    Put(MakeBitmap({2, 2, {0x00030201, 0x00060504, 0x00FF8000, 0}}).Release());
    RunBuiltinCommand(L"ClipboardImgRGBA", nullptr);
    std::wstring source;
    ClipboardGetText(source);
    // The fourth byte of a pixel is whatever the screen's format leaves there.
    EXPECT_TRUE(source.starts_with(L"int xs=2;\r\nint ys=2;\r\nUCHAR img_data[]={\r\n1,2,3,")) << source;
    EXPECT_NE(source.find(L",0,128,255,"), std::wstring::npos);
    EXPECT_TRUE(source.ends_with(L",\r\n0};\r\n"));
    EXPECT_TRUE(keepClipboardOnce);
}

TEST_F(ClipboardImageTest, WhatIsMissingIsTold) {
    ClipboardPutText(L"no picture");
    ExpectBox(L"ClipboardImgCliper", L"No-HBitmap");
    ExpectBox(L"ClipboardImgRGBA", L"No HBITMAP");
    EXPECT_FALSE(keepClipboardOnce);
    Put(CreateBitmap(5, 5, 1, 1, nullptr));
    ExpectBox(L"ClipboardImgCliper", L"Bitmap 32 Bit ?");
}

TEST_F(ClipboardImageTest, WithABrokenHeaderDoesNoHarm) {
    const BITMAPINFOHEADER header = {sizeof header, 0x7FFFFFFF, 0x7FFFFFFF, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    const std::string bytes(reinterpret_cast<const char*>(&header), sizeof header);
    for (const std::string& dib : {bytes, bytes.substr(0, 20), std::string("x")}) {
        for (const wchar_t* const command : {L"ClipboardImgCliper", L"ClipboardImgRGBA"}) {
            ASSERT_TRUE(PutForeign({{CF_DIB, dib}}));
            // What the system makes of it, a small bitmap or none, differs; a box comes only with none.
            MessageBoxAnswer box;
            EXPECT_EQ(RunBuiltinCommand(command, nullptr), 1);
        }
    }
    EXPECT_TRUE(ClipboardPutText(L"closed"));
}

TEST(ReadPixels, OfNoBitmapAreNone) {
    EXPECT_TRUE(ReadPixels(nullptr).pixels.empty());
    EXPECT_TRUE(ReadPixels(reinterpret_cast<HBITMAP>(GetStockObject(WHITE_BRUSH))).pixels.empty());
}

}  // namespace
}  // namespace verbatix
