#include "app/language_default.h"

#include <gtest/gtest.h>

#include "app/system_version.h"

namespace verbatix {
namespace {

TEST(DefaultLanguageNumber, FollowsTheUsersLanguage) {
    const struct {
        unsigned short languageId;
        int number;
    } rows[] = {
        {0x0407, 0},  {0x0C07, 0},  // German, Germany and Austria
        {0x0409, 1},  {0x0410, 2},  {0x041D, 3},  {0x041A, 4},  {0x0408, 5},
        {0x0418, 6},  {0x0419, 7},  {0x0413, 8},  {0x0813, 18},  // Dutch, Belgium
        {0x0403, 9},  {0x0C0A, 10}, {0x0429, 11}, {0x0421, 12}, {0x0804, 13},
        {0x0404, 15}, {0x0C04, 13},  // Chinese: simplified, traditional, Hong Kong
        {0x0416, 14}, {0x040C, 16}, {0x042A, 17}, {0x0412, 19}, {0x0415, 20},
        {0x041F, 21}, {0x040E, 22}, {0x0405, 23}, {0x0401, 24}, {0x0411, 25},
        {0x0406, 1},  {0x0000, 1},  {0xFFFF, 1},  // Danish, neutral, nonsense
    };
    for (const auto& row : rows) {
        EXPECT_EQ(DefaultLanguageNumber(row.languageId), row.number) << std::hex << row.languageId;
        EXPECT_EQ(IsGerman(row.languageId), row.number == 0);
    }
}

TEST(CurrentSystemVersion, TellsTheRunningSystem) {
    const SystemVersion& version = CurrentSystemVersion();
    EXPECT_GE(version.major, 6U);
    EXPECT_GT(version.build, 7000U);
    EXPECT_EQ(version.combined, version.major * 65536 + version.minor);
}

}  // namespace
}  // namespace verbatix
