#include "clipboard/shell_paths.h"

#include <gtest/gtest.h>

#include <shlobj.h>

#include <cstring>

#include "base/handle.h"
#include "clipboard/clipboard_text.h"
#include "support/folder.h"
#include "support/foreign_clipboard.h"

namespace verbatix {
namespace {

using test::Folder;
using test::PutForeign;

UINT ShellFormat() {
    return RegisterClipboardFormatW(L"Shell IDList Array");
}

using UniqueIdList = UniqueHandle<PIDLIST_ABSOLUTE, ILFree>;

std::string BytesOf(PCUIDLIST_RELATIVE list) {
    return std::string(reinterpret_cast<const char*>(list), ILGetSize(list));
}

// What the shell puts on the clipboard for these items below that parent.
std::string ShellArray(const std::string& parent, const std::vector<std::string>& items) {
    std::vector<UINT> header = {static_cast<UINT>(items.size())};
    std::string lists = parent;
    header.push_back(static_cast<UINT>(4 * (items.size() + 2)));
    for (const std::string& item : items) {
        header.push_back(static_cast<UINT>(4 * (items.size() + 2) + lists.size()));
        lists += item;
    }
    return std::string(reinterpret_cast<const char*>(header.data()), header.size() * 4) + lists;
}

// The shell's own list for a file, relative to `parent`, the list of one of its folders.
std::string Below(const UniqueIdList& parent, const std::wstring& file) {
    const UniqueIdList whole(ILCreateFromPathW(file.c_str()));
    const PUIDLIST_RELATIVE child = whole ? ILFindChild(parent.Get(), whole.Get()) : nullptr;
    EXPECT_NE(child, nullptr) << "not below its folder";
    return child ? BytesOf(child) : std::string();
}

std::wstring FullPath(const std::wstring& path) {
    wchar_t full[MAX_PATH];
    GetFullPathNameW(path.c_str(), MAX_PATH, full, nullptr);
    return full;
}

class ShellPaths : public testing::Test {
  protected:
    void SetUp() override {
        CreateDirectoryW(folder.File(L"one").c_str(), nullptr);
        CreateDirectoryW(folder.File(L"two").c_str(), nullptr);
        for (const std::wstring& file : files) ASSERT_TRUE(test::WriteBytes(file, "x"));
        parent.Reset(ILCreateFromPathW(folder.Path().c_str()));
        ASSERT_TRUE(parent);
    }

    Folder folder;
    // Two folders' worth, with names that the ANSI code page cannot hold.
    std::vector<std::wstring> files = {FullPath(folder.File(L"one\\plain.txt")),
                                       FullPath(folder.File(L"one\\with blank.txt")),
                                       FullPath(folder.File(L"two\\\x4e2d\x6587 \x0416.txt"))};
    UniqueIdList parent;
};

TEST_F(ShellPaths, AppendsThePathOfEachItem) {
    std::vector<std::string> items;
    for (const std::wstring& file : files) items.push_back(Below(parent, file));
    ASSERT_TRUE(PutForeign({{ShellFormat(), ShellArray(BytesOf(parent.Get()), items)}}));
    std::wstring paths = L"before ";
    EXPECT_EQ(ClipboardGetShellPaths(paths), L"\x0001");
    EXPECT_EQ(paths, L"before " + files[0] + L"\r\n" + files[1] + L"\r\n" + files[2] + L"\r\n");

    pathQuote = L"\"";
    paths.clear();
    EXPECT_EQ(ClipboardGetShellPaths(paths), L"\x0001");
    EXPECT_EQ(paths.substr(0, files[0].size() + 4), L"\"" + files[0] + L"\"\r\n");
    pathQuote.clear();

    // The clipboard is closed, whatever the caller does next.
    EXPECT_FALSE(CloseClipboard());
    EXPECT_TRUE(ClipboardPutText(paths));
}

TEST_F(ShellPaths, ReadsAShellDataObject) {
    ASSERT_GE(OleInitialize(nullptr), S_OK);
    const UniqueIdList one(ILCreateFromPathW(folder.File(L"one").c_str()));
    const std::string first = Below(one, files[0]), second = Below(one, files[1]);
    PCUITEMID_CHILD children[] = {reinterpret_cast<PCUITEMID_CHILD>(first.data()),
                                  reinterpret_cast<PCUITEMID_CHILD>(second.data())};
    IDataObject* object = nullptr;
    ASSERT_GE(CIDLData_CreateFromIDArray(one.Get(), 2, children, &object), S_OK);
    ASSERT_GE(OleSetClipboard(object), S_OK);
    OleFlushClipboard();
    object->Release();
    std::wstring paths;
    EXPECT_EQ(ClipboardGetShellPaths(paths), L"\x0001");
    EXPECT_EQ(paths, files[0] + L"\r\n" + files[1] + L"\r\n");
    OleUninitialize();
}

TEST_F(ShellPaths, LeavesTheTextWithoutAUsableList) {
    const auto readsNothing = [] {
        std::wstring paths = L"before";
        return ClipboardGetShellPaths(paths) == L"before" && paths == L"before" && !CloseClipboard();
    };
    ASSERT_TRUE(ClipboardPutText(L"no list"));
    EXPECT_TRUE(readsNothing());
    std::string array = ShellArray(BytesOf(parent.Get()), {Below(parent, files[0])});
    std::memset(array.data(), 0xFF, 4);
    ASSERT_TRUE(PutForeign({{ShellFormat(), array}}));
    EXPECT_TRUE(readsNothing());
    array = ShellArray(BytesOf(parent.Get()), {Below(parent, files[0])});
    ASSERT_TRUE(PutForeign({{ShellFormat(), array.substr(0, array.size() - 6)}}));
    EXPECT_TRUE(readsNothing());
    ASSERT_TRUE(PutForeign({{ShellFormat(), array}}));
    {
        const test::Process holder = test::HoldClipboard();
        EXPECT_TRUE(readsNothing());
    }
    EXPECT_FALSE(readsNothing());
}

}  // namespace
}  // namespace verbatix
