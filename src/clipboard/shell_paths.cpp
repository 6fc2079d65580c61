#include "clipboard/shell_paths.h"

#include <windows.h>

#include <shlobj.h>
#include <shlwapi.h>

#include "clipboard/clipboard_session.h"
#include "clipboard/shell_id_list.h"

namespace verbatix {

std::wstring pathQuote;
const wchar_t kShellPathsRead[] = L"\x0001";

namespace {

void ReleaseFolder(IShellFolder* folder) {
    folder->Release();
}

using UniqueShellFolder = UniqueHandle<IShellFolder*, ReleaseFolder>;
using UniqueIdList = UniqueHandle<PIDLIST_ABSOLUTE, ILFree>;
using UniqueTaskText = UniqueHandle<LPWSTR, CoTaskMemFree>;

PCUIDLIST_RELATIVE AsIdList(const std::string& bytes) {
    return reinterpret_cast<PCUIDLIST_RELATIVE>(bytes.data());
}

// The list on the clipboard; it is open no longer on return, because the shell may take its time.
std::optional<ShellIdLists> CopiedItems() {
    static const UINT format = RegisterClipboardFormatW(L"Shell IDList Array");
    std::optional<ShellIdLists> lists;
    ReadClipboard([&] {
        lists = ReadShellIdLists(LockedBlock(GetClipboardData(format)).Bytes());
        return true;
    });
    return lists;
}

// The item's full path, or the shell's name for it; empty when it has none.
std::wstring ParsingName(IShellFolder& desktop, const ShellIdLists& lists, const std::string& item) {
    const UniqueIdList whole(
        ILCombine(reinterpret_cast<PCIDLIST_ABSOLUTE>(AsIdList(lists.parent)), AsIdList(item)));
    STRRET returned = {};
    if (!whole || FAILED(desktop.GetDisplayNameOf(reinterpret_cast<PCUITEMID_CHILD>(whole.Get()),
                                                  SHGDN_FORPARSING, &returned))) {
        return {};
    }
    LPWSTR text = nullptr;
    if (FAILED(StrRetToStrW(&returned, reinterpret_cast<PCUITEMID_CHILD>(whole.Get()), &text))) return {};
    return UniqueTaskText(text).Get();
}

}  // namespace

std::wstring ClipboardGetShellPaths(std::wstring& paths) {
    const std::optional<ShellIdLists> lists = CopiedItems();
    IShellFolder* folder = nullptr;
    if (!lists || FAILED(SHGetDesktopFolder(&folder))) return paths;
    const UniqueShellFolder desktop(folder);
    for (const std::string& item : lists->items) {
        const std::wstring path = ParsingName(*desktop.Get(), *lists, item);
        if (!path.empty()) paths.append(pathQuote).append(path).append(pathQuote).append(L"\r\n");
    }
    return kShellPathsRead;
}

}  // namespace verbatix
