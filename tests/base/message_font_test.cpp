// The font of a dialog template.
#include "base/message_font.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace verbatix::test {
namespace {

// A DIALOGEX header with a menu by number, a class by name and a title, as words; `font` and one item
// follow.
std::vector<BYTE> Template(const std::vector<WORD>& font, WORD style = DS_SETFONT) {
    std::vector<WORD> words = {1, 0xFFFF, 0,  0,      0,  0,    style, 0,    1, 7,
                               7, 90,     50, 0xFFFF, 12, L'C', 0,     L'T', 0};
    words.insert(words.end(), font.begin(), font.end());
    if (words.size() % 2 != 0) words.push_back(0);
    words.insert(words.end(), {0xABCD, 0x1234});
    const auto* const bytes = reinterpret_cast<const BYTE*>(words.data());
    return {bytes, bytes + words.size() * sizeof(WORD)};
}

TEST(MessageFont, StandsInATemplateInPlaceOfItsOwn) {
    LOGFONTW font = {};
    font.lfWeight = FW_MEDIUM;
    font.lfItalic = 1;
    font.lfCharSet = 2;
    CopyText(font.lfFaceName, LF_FACESIZE, LF_FACESIZE, L"Ab");
    const std::vector<WORD> inside = {9, FW_MEDIUM, 0x0201, L'A', L'b', 0};
    for (const std::vector<WORD>& own :
         {std::vector<WORD>{8, 400, 0, L'M', L'S', L' ', L'X', 0}, {8, 400, 0, L'M', 0}, {8, 400, 0, 0}}) {
        EXPECT_EQ(WithFont(Template(own), font, 9), Template(inside)) << own.size();
    }
    EXPECT_TRUE(WithFont(Template({}, 0), font, 9).empty());
    // Cut off anywhere, it is none.
    const std::vector<BYTE> whole = Template({8, 400, 0, L'M', 0});
    for (std::size_t size = 0; size <= whole.size() - 4; ++size) {
        EXPECT_TRUE(WithFont({whole.data(), size}, font, 9).empty()) << size;
    }
}

}  // namespace
}  // namespace verbatix::test
