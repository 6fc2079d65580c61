// What the built-in commands decide without the system.
#include <gtest/gtest.h>

#include "paste/builtin/image_crop.h"
#include "paste/steps/type_text.h"

namespace verbatix {
namespace {

TEST(StrokesForKeyScan, HoldWhatTheShiftStateNames) {
    constexpr DWORD kUp = KEYEVENTF_KEYUP;
    const auto strokes = [](std::initializer_list<BYTE> modifiers, BYTE key, DWORD flags = 0) {
        std::vector<KeyStroke> all = {{key, 0}, {key, kUp}};
        for (const BYTE modifier : modifiers) {  // the innermost first
            all.insert(all.begin(), {modifier, flags});
            all.push_back({modifier, flags | kUp});
        }
        return all;
    };
    const std::pair<int, std::vector<KeyStroke>> rows[] = {
        {'Q', strokes({}, 'Q')},
        {0x100 | 'Q', strokes({VK_SHIFT}, 'Q')},
        {0x500 | 'Q', strokes({VK_LMENU, VK_SHIFT}, 'Q')},
        {0x600 | 'Q', strokes({VK_RMENU}, 'Q', KEYEVENTF_EXTENDEDKEY)},  // AltGr, only when it is all
        {0x700 | 'Q', strokes({VK_LMENU, VK_CONTROL, VK_SHIFT}, 'Q')},
        {0x800 | 'Q', strokes({}, 'Q')},  // a bit for keyboards of other countries, with no key here
        {-1, strokes({VK_LMENU, VK_CONTROL, VK_SHIFT}, 0xFF)},  // no key: sent as it comes
    };
    for (const auto& [scan, expected] : rows) {
        EXPECT_EQ(StrokesForKeyScan(static_cast<SHORT>(scan)), expected) << scan;
    }
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
    const std::tuple<std::vector<std::string>, int, PixelArea> cases[] = {
        {{"     ", "  #  ", " ##  ", "     ", "     "}, 0, {1, 1, 3, 3}},
        {{"     ", "  #  ", " ##  ", "     ", "     "}, 1, {0, 0, 4, 4}},
        {{"##  ", "#   ", "    "}, 0, {0, 0, 2, 2}},          // content touches two sides
        {{"   .", " # .", "   .", "   ."}, 0, {1, 0, 4, 4}},  // a side of another grey is content
        {{"~ ~ ", " #~ ", "~  ~"}, 0, {1, 1, 2, 2}},          // noise in the border
        {{"###", "###"}, 0, {0, 0, 3, 2}},                    // one grey has no content
        {{}, 3, {0, 0, 0, 0}},
    };
    for (const auto& [rows, margin, area] : cases) {
        EXPECT_EQ(FindContent(Draw(rows), margin), area) << testing::PrintToString(rows);
    }
    EXPECT_EQ(Crop({3, 3, {1, 2, 3, 4, 5, 6, 7, 8, 9}}, {1, 1, 3, 3}).pixels,
              (std::vector<std::uint32_t>{5, 6, 8, 9}));
}

}  // namespace
}  // namespace verbatix
