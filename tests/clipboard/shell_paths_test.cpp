#include "clipboard/shell_paths.h"

#include <gtest/gtest.h>

#include <shlobj.h>

#include "base/handle.h"
#include "clipboard/clipboard_text.h"
#include "support/folder.h"
#include "support/foreign_clipboard.h"

namespace verbatix {
namespace {

using test::PutForeign;
using UniqueIdList = UniqueHandle<PIDLIST_ABSOLUTE, ILFree>;

std::string BytesOf(PCUIDLIST_RELATIVE list) {
    return std::string(reinterpret_cast<const char*>(list), ILGetSize(list));
}

// What the shell puts on the clipboard for these items below that parent.
std::string ShellArray(const std::string& parent, const std::vector<std::string>& items) {
    std::vector<UINT> header = {static_cast<UINT>(items.size()), static_cast<UINT>(4 * (items.size() + 2))};
    std::string lists = parent;
    for (const std::string& item : items) {
        header.push_back(static_cast<UINT>(4 * (items.size() + 2) + lists.size()));
        lists += item;
    }
    return std::string(reinterpret_cast<const char*>(header.data()), header.size() * 4) + lists;
}

// The shell's own list for a file, relative to the list of one of its folders.
std::string Below(const UniqueIdList& parent, const std::wstring& file) {
    const UniqueIdList whole(ILCreateFromPathW(file.c_str()));
    const PUIDLIST_RELATIVE child = whole ? ILFindChild(parent.Get(), whole.Get()) : nullptr;
    EXPECT_NE(child, nullptr) << "not below its folder";
    return child ? BytesOf(child) : std::string();
}

TEST(ShellPaths, AreReadFromListsAndDataObjects) {
    const test::Folder folder;
    CreateDirectoryW(folder.File(L"one").c_str(), nullptr);
    CreateDirectoryW(folder.File(L"two").c_str(), nullptr);
    // Two folders' worth, with names that the ANSI code page cannot hold.
    std::vector<std::wstring> files;
    for (const wchar_t* name :
         {L"one\\plain.txt", L"one\\with blank.txt", L"two\\\x4e2d\x6587 \x0416.txt"}) {
        wchar_t full[MAX_PATH];
        GetFullPathNameW(folder.File(name).c_str(), MAX_PATH, full, nullptr);
        files.emplace_back(full);
        ASSERT_TRUE(test::WriteBytes(full, "x"));
    }
    const UINT format = RegisterClipboardFormatW(L"Shell IDList Array");
    const UniqueIdList parent(ILCreateFromPathW(folder.Path().c_str()));
    const std::string array = ShellArray(
        BytesOf(parent.Get()), {Below(parent, files[0]), Below(parent, files[1]), Below(parent, files[2])});

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
        const test::Process holder = test::HoldClipboard();
        EXPECT_TRUE(readsNothing());
    }
    for (const std::string& broken :
         {"\xff\xff\xff\xff" + array.substr(4), array.substr(0, array.size() - 6)}) {
        ASSERT_TRUE(PutForeign({{format, broken}}));
        EXPECT_TRUE(readsNothing());
    }
    ASSERT_TRUE(ClipboardPutText(L"no list"));
    EXPECT_TRUE(readsNothing());

    ASSERT_GE(OleInitialize(nullptr), S_OK);
    const UniqueIdList one(ILCreateFromPathW(folder.File(L"one").c_str()));
    const std::string first = Below(one, files[0]);
    PCUITEMID_CHILD child = reinterpret_cast<PCUITEMID_CHILD>(first.data());
    IDataObject* object = nullptr;
    ASSERT_GE(CIDLData_CreateFromIDArray(one.Get(), 1, &child, &object), S_OK);
    ASSERT_GE(OleSetClipboard(object), S_OK);
    OleFlushClipboard();
    object->Release();
    paths.clear();
    EXPECT_EQ(ClipboardGetShellPaths(paths), L"\x0001");
    EXPECT_EQ(paths, files[0] + L"\r\n");
    OleUninitialize();
}

}  // namespace
}  // namespace verbatix
