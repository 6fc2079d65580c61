// What the built-in commands decide without the system.
#include <gtest/gtest.h>

#include "paste/bitmap_source.h"
#include "paste/image_crop.h"
#include "paste/type_text.h"

namespace verbatix {
namespace {

constexpr DWORD kUp = KEYEVENTF_KEYUP;
constexpr DWORD kExtended = KEYEVENTF_EXTENDEDKEY;

TEST(StrokesForKeyScan, HoldWhatTheShiftStateNames) {
    struct Case {
        int shiftState;
        std::vector<KeyStroke> down;
        std::vector<KeyStroke> up;
    };
    const Case cases[] = {
        {0, {}, {}},
        {1, {{VK_SHIFT, 0}}, {{VK_SHIFT, kUp}}},
        {2, {{VK_CONTROL, 0}}, {{VK_CONTROL, kUp}}},
        {3, {{VK_SHIFT, 0}, {VK_CONTROL, 0}}, {{VK_CONTROL, kUp}, {VK_SHIFT, kUp}}},
        {4, {{VK_LMENU, 0}}, {{VK_LMENU, kUp}}},
        {5, {{VK_SHIFT, 0}, {VK_LMENU, 0}}, {{VK_LMENU, kUp}, {VK_SHIFT, kUp}}},
        // AltGr, and only when nothing else is asked for.
        {6, {{VK_RMENU, kExtended}}, {{VK_RMENU, kExtended | kUp}}},
        {7,
         {{VK_SHIFT, 0}, {VK_CONTROL, 0}, {VK_LMENU, 0}},
         {{VK_LMENU, kUp}, {VK_CONTROL, kUp}, {VK_SHIFT, kUp}}},
        {8, {}, {}},  // a bit for keyboards of other countries, with no key of its own here
    };
    for (const Case& c : cases) {
        std::vector<KeyStroke> expected = c.down;
        expected.push_back({'Q', 0});
        expected.push_back({'Q', kUp});
        expected.insert(expected.end(), c.up.begin(), c.up.end());
        EXPECT_EQ(StrokesForKeyScan(static_cast<SHORT>(c.shiftState << 8 | 'Q')), expected) << c.shiftState;
    }
}

TEST(StrokesForKeyScan, SendACharacterWithoutKeyWithEveryModifier) {
    EXPECT_EQ(StrokesForKeyScan(-1), (std::vector<KeyStroke>{{VK_SHIFT, 0},
                                                             {VK_CONTROL, 0},
                                                             {VK_LMENU, 0},
                                                             {0xFF, 0},
                                                             {0xFF, kUp},
                                                             {VK_LMENU, kUp},
                                                             {VK_CONTROL, kUp},
                                                             {VK_SHIFT, kUp}}));
}

TEST(BitmapSourceText, IsAnArrayOfTheBytes) {
    const std::uint8_t bytes[] = {0, 9, 10, 255};
    EXPECT_EQ(BitmapSourceText(1, -2, bytes),
              L"int xs=1;\r\nint ys=-2;\r\nUCHAR img_data[]={\r\n0,9,10,255,\r\n0};\r\n");
    EXPECT_EQ(BitmapSourceText(0, 0, {}), L"int xs=0;\r\nint ys=0;\r\nUCHAR img_data[]={\r\n0};\r\n");
}

TEST(BitmapSourceText, BreaksTheLineAfterAFixedCount) {
    const std::vector<std::uint8_t> bytes(kSourceBytesPerLine * 2 + 1, 7);
    std::wstring line;
    for (int i = 0; i < kSourceBytesPerLine; ++i) line += L"7,";
    EXPECT_EQ(BitmapSourceText(1, 1, bytes), L"int xs=1;\r\nint ys=1;\r\nUCHAR img_data[]={\r\n" + line +
                                                 L"\r\n" + line + L"\r\n7,\r\n0};\r\n");
}

// A picture drawn with characters: each has a grey of its own.
PixelImage Draw(const std::vector<std::string>& rows) {
    PixelImage image = {
        static_cast<int>(rows.empty() ? 0 : rows[0].size()), static_cast<int>(rows.size()), {}};
    for (const std::string& row : rows) {
        for (const char c : row) {
            image.pixels.push_back(c == ' '   ? 0xFFFFFFFF
                                   : c == '.' ? 0xFF808080
                                   : c == '~' ? 0xFFFEFEFE
                                              : 0xFF000000);
        }
    }
    return image;
}

TEST(FindContent, LeavesThePlainBorderOut) {
    struct Case {
        const char* why;
        std::vector<std::string> rows;
        int margin;
        PixelArea area;
    };
    const Case cases[] = {
        {"border on all sides", {"     ", "  #  ", " ##  ", "     ", "     "}, 0, {1, 1, 3, 3}},
        {"margin", {"     ", "  #  ", " ##  ", "     ", "     "}, 1, {0, 0, 4, 4}},
        {"margin beyond the picture", {"     ", "  #  ", " ##  ", "     "}, INT_MAX, {0, 0, 5, 4}},
        {"negative margin", {"   ", " # ", "   "}, -5, {1, 1, 2, 2}},
        {"content touches the left and the top", {"##  ", "#   ", "    "}, 0, {0, 0, 2, 2}},
        {"content touches the right and the bottom", {"    ", "   #", "  ##"}, 0, {2, 1, 4, 3}},
        {"no border", {"# ", " #"}, 0, {0, 0, 2, 2}},
        {"content in a corner", {" ###", "   #", "    "}, 0, {1, 0, 4, 2}},
        {"a side of another grey is content", {"   .", " # .", "   .", "   ."}, 0, {1, 0, 4, 4}},
        {"a line through the whole width", {"   ", "###", "   "}, 0, {0, 1, 3, 2}},
        {"a line through the whole height", {" # ", " # ", " # "}, 0, {1, 0, 2, 3}},
        {"noise in the border", {"~ ~ ", " #~ ", "~  ~"}, 0, {1, 1, 2, 2}},
        {"one grey", {"###", "###"}, 0, {0, 0, 3, 2}},
        {"two halves", {"  ", "##"}, 0, {0, 1, 2, 2}},
        {"one pixel", {"#"}, 0, {0, 0, 1, 1}},
        {"nothing", {}, 3, {0, 0, 0, 0}},
    };
    for (const Case& c : cases) EXPECT_EQ(FindContent(Draw(c.rows), c.margin), c.area) << c.why;
}

TEST(CoarseGrey, IsWeightedAndTruncated) {
    EXPECT_EQ(CoarseGrey(0xFF000000), 0);
    EXPECT_EQ(CoarseGrey(0x00FFFFFF), 30);  // 30.6
    EXPECT_EQ(CoarseGrey(0x00FF0000), 9);   // 9.18
    EXPECT_EQ(CoarseGrey(0x0000FF00), 18);  // 18.054
    EXPECT_EQ(CoarseGrey(0x000000FF), 3);   // 3.366
}

TEST(Crop, TakesTheAreaOut) {
    const PixelImage part = Crop({3, 3, {1, 2, 3, 4, 5, 6, 7, 8, 9}}, {1, 1, 3, 3});
    EXPECT_EQ(part.width, 2);
    EXPECT_EQ(part.height, 2);
    EXPECT_EQ(part.pixels, (std::vector<std::uint32_t>{5, 6, 8, 9}));
}

}  // namespace
}  // namespace verbatix
