// Lists of the shell on the clipboard, good, hostile and damaged.
#include "clipboard/shell_id_list.h"

#include <gtest/gtest.h>

#include <shlobj.h>

#include <cstdint>

#include "base/handle.h"
#include "clipboard/clipboard_text.h"
#include "clipboard/shell_paths.h"
#include "support/desktop.h"
#include "support/folder.h"
#include "support/foreign_clipboard.h"

namespace verbatix::test {
namespace {

// Every test of this room uses the clipboard, so none begins before the desktop has let go of it.
struct ClipboardEnvironment : testing::Environment {
    void SetUp() override { WaitForClipboard(); }
};
[[maybe_unused]] const auto* const environment =
    testing::AddGlobalTestEnvironment(new ClipboardEnvironment);

std::string Number(std::uint32_t value) {
    return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}

// A list of items with these contents.
std::string List(const std::vector<std::string>& items) {
    std::string list;
    for (const std::string& item : items) {
        list += Number(static_cast<std::uint32_t>(item.size() + 2)).substr(0, 2) + item;
    }
    return list + std::string(2, '\0');
}

// A block whose first list is the parent.
std::string Block(const std::vector<std::string>& lists) {
    std::string block = Number(static_cast<std::uint32_t>(lists.size()) - 1);
    std::string data;
    for (const std::string& list : lists) {
        block += Number(static_cast<std::uint32_t>(4 * (lists.size() + 1) + data.size()));
        data += list;
    }
    return block + data;
}

const std::string kGood = Block({List({"drive", "folder"}), List({"one"}), List({"sub", "two"}), List({})});

TEST(ReadShellIdLists, YieldsListsOrNothing) {
    const auto lists = ReadShellIdLists(kGood + "padding");
    ASSERT_TRUE(lists);
    EXPECT_EQ(lists->parent, List({"drive", "folder"}));
    EXPECT_EQ(lists->items, (std::vector<std::string>{List({"one"}), List({"sub", "two"}), List({})}));
    EXPECT_TRUE(ReadShellIdLists(Block({List({"folder"})})) && ReadShellIdLists(Block({List({})})));
    std::vector<std::string> longest(8, std::string(65533, 'x'));
    longest.push_back("1234");  // 512 KB with all sizes and the terminator
    EXPECT_TRUE(ReadShellIdLists(Block({List(longest)})));
    longest.back() += '5';
    EXPECT_FALSE(ReadShellIdLists(Block({List(longest)})));

    const auto with = [&](std::size_t number, std::size_t value) {
        return std::string(kGood).replace(number * 4, 4, Number(static_cast<std::uint32_t>(value)));
    };
    std::string shared = Number(100000);  // items that all name one list: 6 GB of copies
    for (int index = 0; index <= 100000; ++index) shared += Number(4 * 100002);
    const std::pair<const char*, std::string> rows[] = {
        {"empty", ""},
        {"count of 4 billion", with(0, 0xFFFFFFFF)},
        {"count whose offsets wrap around", with(0, 0x3FFFFFFF)},
        {"count that takes lists for offsets", with(0, 4)},
        {"parent at the header", with(1, 0)},
        {"item in the zeros of an offset", with(2, 6)},
        {"item at the end", with(2, kGood.size())},
        {"item on the last byte", with(3, kGood.size() - 1)},
        {"half a terminator", kGood.substr(0, kGood.size() - 1)},
        {"an item of one byte", Block({List({}), std::string("\1\0\0\0", 4)})},
        {"one list over and over", shared + List({std::string(60000, 'x')})},
    };
    for (const auto& [what, block] : rows) EXPECT_FALSE(ReadShellIdLists(block)) << what;
}

using UniqueIdList = UniqueHandle<PIDLIST_ABSOLUTE, ILFree>;

std::string BytesOf(PCUIDLIST_RELATIVE list) {
    return std::string(reinterpret_cast<const char*>(list), ILGetSize(list));
}

// The shell's own list for a file, relative to the list of one of its folders.
std::string Below(const UniqueIdList& parent, const std::wstring& file) {
    const UniqueIdList whole(ILCreateFromPathW(file.c_str()));
    const PUIDLIST_RELATIVE child = whole ? ILFindChild(parent.Get(), whole.Get()) : nullptr;
    EXPECT_NE(child, nullptr) << "not below its folder";
    return child ? BytesOf(child) : std::string();
}

TEST(ShellPaths, AreReadFromLists) {
    const Folder folder;
    CreateDirectoryW(folder.File(L"one").c_str(), nullptr);
    CreateDirectoryW(folder.File(L"two").c_str(), nullptr);
    // Two folders' worth, with names that the ANSI code page cannot hold.
    std::vector<std::wstring> files;
    for (const wchar_t* name :
         {L"one\\plain.txt", L"one\\with blank.txt", L"two\\\x4e2d\x6587 \x0416.txt"}) {
        wchar_t full[MAX_PATH];
        GetFullPathNameW(folder.File(name).c_str(), MAX_PATH, full, nullptr);
        files.emplace_back(full);
        ASSERT_TRUE(WriteBytes(full, "x"));
    }
    const UINT format = RegisterClipboardFormatW(L"Shell IDList Array");
    const UniqueIdList parent(ILCreateFromPathW(folder.Path().c_str()));
    const std::string array = Block(
        {BytesOf(parent.Get()), Below(parent, files[0]), Below(parent, files[1]), Below(parent, files[2])});

    ASSERT_TRUE(PutForeign({{format, array}}));
    std::wstring paths = L"before ";
    EXPECT_EQ(ClipboardGetShellPaths(paths), L"\x0001");
    EXPECT_EQ(paths, L"before " + files[0] + L"\r\n" + files[1] + L"\r\n" + files[2] + L"\r\n");
    pathQuote = L"\"";
    paths.clear();
    EXPECT_EQ(ClipboardGetShellPaths(paths), L"\x0001");
    EXPECT_EQ(paths.substr(0, files[0].size() + 4), L"\"" + files[0] + L"\"\r\n");
    pathQuote.clear();
    EXPECT_FALSE(CloseClipboard()) << "left open";

    const auto readsNothing = [] {
        std::wstring text = L"before";
        return ClipboardGetShellPaths(text) == L"before" && text == L"before" && !CloseClipboard();
    };
    {
        const Process holder = HoldClipboard();
        EXPECT_TRUE(readsNothing());
    }
    for (const std::string& broken :
         {"\xff\xff\xff\xff" + array.substr(4), array.substr(0, array.size() - 6)}) {
        ASSERT_TRUE(PutForeign({{format, broken}}));
        EXPECT_TRUE(readsNothing());
    }
    ASSERT_TRUE(ClipboardPutText(L"no list"));
    EXPECT_TRUE(readsNothing());
}

}  // namespace
}  // namespace verbatix::test
