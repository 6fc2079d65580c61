// The pure readers of clipboard data against damaged data: no read or write outside (the library's
// assertions are on and the data stands in blocks of its exact size), no hang, and results that lie inside.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <random>

#include "clipboard/clipboard_text.h"
#include "clipboard/html_format.h"
#include "clipboard/shell_id_list.h"

namespace verbatix {
namespace {

constexpr int kInputs = 60000;  // of each of the two kinds

// Damages a copy of `sample`: bytes and numbers changed, parts cut out, doubled, or moved.
std::string Damaged(const std::string& sample, std::mt19937& random) {
    static constexpr std::uint32_t kNumbers[] = {0,          1,          2,          0x7F,       0xFF,
                                                 0xFFFF,     0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0x3FFFFFFE,
                                                 0x40000000, 16,         20,         100};
    static constexpr const char* kWords[] = {
        "\r", "\n",           "-1", "99999999999", "StartFragment:", "00",
        "7",  "EndFragment:", "-",  "2147483647",  "\xff\xfe"};
    std::string data = sample;
    const auto below = [&](std::size_t limit) { return limit ? random() % limit : 0; };
    for (std::size_t changes = 1 + below(6); changes > 0; --changes) {
        const std::size_t at = below(data.size() + 1);
        switch (below(6)) {
            case 0:
                if (at < data.size()) data[at] = static_cast<char>(random());
                break;
            case 1: {
                const std::uint32_t number = kNumbers[below(std::size(kNumbers))];
                if (at + 4 <= data.size()) std::memcpy(data.data() + (at & ~std::size_t{3}), &number, 4);
                break;
            }
            case 2: data.resize(at); break;
            case 3: data.erase(at, below(12)); break;
            case 4: data.insert(at, kWords[below(std::size(kWords))]); break;
            default: data.insert(at, data.substr(below(data.size() + 1), below(40))); break;
        }
    }
    return data;
}

// The data in a block of exactly its size, so that a tool that watches memory sees the first byte beyond.
class ExactBlock {
  public:
    explicit ExactBlock(const std::string& data) : bytes_(new char[data.size()]), size_(data.size()) {
        std::memcpy(bytes_.get(), data.data(), size_);
    }
    std::string_view Bytes() const { return {bytes_.get(), size_}; }

  private:
    std::unique_ptr<char[]> bytes_;
    std::size_t size_;
};

TEST(DamagedData, HtmlReaderStaysInside) {
    std::mt19937 random(20240517);
    const std::string samples[] = {BuildHtmlData("<b>f\xc3\xbcnf</b>"),
                                   "Version:1.0\nStartHTML:-1\nStartFragment:0000000070\nEndFragment:"
                                   "0000000075\n<html>abcdefgh</html>"};
    int found = 0;
    for (int input = 0; input < kInputs; ++input) {
        const ExactBlock block(Damaged(samples[input % 2], random));
        const std::wstring raw = AnsiTextOf(block.Bytes());
        const std::string_view data = block.Bytes().substr(0, block.Bytes().find('\0'));
        if (const auto fragment = FindHtmlFragment(data, raw)) {
            ++found;
            ASSERT_GE(fragment->data(), data.data()) << input;
            ASSERT_LT(fragment->data() + fragment->size(), data.data() + data.size()) << input;
        }
        ASSERT_LE(WideTextOf(block.Bytes()).size(), block.Bytes().size() / 2 + 1) << input;
    }
    // The generator must neither break everything nor nothing.
    EXPECT_GT(found, kInputs / 50);
    EXPECT_LT(found, kInputs - kInputs / 50);
}

// Whether the list is a row of items that ends exactly at its end.
bool IsWhole(const std::string& list) {
    std::size_t at = 0;
    for (;;) {
        std::uint16_t size = 0;
        if (at + 2 > list.size()) return false;
        std::memcpy(&size, list.data() + at, 2);
        if (size == 0) return at + 2 == list.size();
        if (size < 2) return false;
        at += size;
    }
}

TEST(DamagedData, ShellListReaderStaysInside) {
    std::mt19937 random(987654321);
    // Count, three offsets, and lists of one, one and two items.
    const std::string sample(
        "\x02\0\0\0\x10\0\0\0\x18\0\0\0\x20\0\0\0"
        "\x06\0abcd\0\0\x06\0efgh\0\0\x05\0ijk\x04\0lm\0\0",
        16 + 8 + 8 + 11);
    ASSERT_TRUE(ReadShellIdLists(sample));
    int found = 0;
    for (int input = 0; input < kInputs; ++input) {
        const ExactBlock block(Damaged(sample, random));
        const auto lists = ReadShellIdLists(block.Bytes());
        if (!lists) continue;
        ++found;
        std::size_t total = lists->parent.size();
        ASSERT_TRUE(IsWhole(lists->parent)) << input;
        for (const std::string& item : lists->items) {
            ASSERT_TRUE(IsWhole(item)) << input;
            total += item.size();
        }
        ASSERT_LE(total, block.Bytes().size()) << input;
    }
    EXPECT_GT(found, kInputs / 50);
    EXPECT_LT(found, kInputs - kInputs / 50);
}

}  // namespace
}  // namespace verbatix
