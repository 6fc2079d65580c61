#include "ui/views/entry_pictures.h"

#include <commctrl.h>
#include <shellapi.h>

#include <array>
#include <utility>

#include "base/common_controls.h"
#include "base/handle.h"
#include "base/screen_scale.h"
#include "store/settings.h"
#include "ui/look/view_look.h"
#include "ui/state/main_window.h"

namespace verbatix {

namespace {

// A part of a picture, in sixteenths of its edge.
struct Block {
    EntryKind kind;
    int left, top, right, bottom;
    DWORD color;
};

constexpr DWORD kInk = 0xff5a6b7c;
constexpr DWORD kPaper = 0xfff4f7fa;
constexpr DWORD kBlue = 0xff2f7fd6;
constexpr DWORD kGreen = 0xff3f9a4f;
constexpr DWORD kYellow = 0xfff0b840;
constexpr DWORD kBrown = 0xffc98a20;

constexpr auto kText = EntryKind::kText;
constexpr auto kCommand = EntryKind::kCommand;
constexpr auto kPicture = EntryKind::kPicture;
constexpr auto kCharacters = EntryKind::kCharacters;
constexpr auto kGroup = EntryKind::kGroup;
constexpr auto kHotkey = EntryKind::kHotkey;

// What comes later stands before what came first.
constexpr Block kBlocks[] = {
    // A page with lines of writing.
    {kText, 2, 1, 14, 15, kInk},
    {kText, 3, 2, 13, 14, kPaper},
    {kText, 5, 4, 11, 5, kBlue},
    {kText, 5, 7, 11, 8, kBlue},
    {kText, 5, 10, 9, 11, kBlue},
    // A window with a prompt.
    {kCommand, 1, 2, 15, 14, kInk},
    {kCommand, 2, 5, 14, 13, kPaper},
    {kCommand, 4, 7, 6, 8, kGreen},
    {kCommand, 5, 8, 7, 10, kGreen},
    {kCommand, 4, 10, 6, 11, kGreen},
    {kCommand, 8, 11, 12, 12, kGreen},
    // A landscape.
    {kPicture, 1, 2, 15, 14, kInk},
    {kPicture, 2, 3, 14, 13, 0xffbfe0f8},
    {kPicture, 10, 4, 12, 6, kYellow},
    {kPicture, 5, 7, 7, 13, kGreen},
    {kPicture, 3, 9, 9, 13, kGreen},
    {kPicture, 2, 11, 14, 13, kGreen},
    // Keys of several letters.
    {kCharacters, 1, 1, 8, 8, kInk},
    {kCharacters, 8, 1, 15, 8, kInk},
    {kCharacters, 1, 8, 8, 15, kInk},
    {kCharacters, 8, 8, 15, 15, kInk},
    {kCharacters, 2, 2, 7, 7, kPaper},
    {kCharacters, 9, 2, 14, 7, kPaper},
    {kCharacters, 2, 9, 7, 14, kPaper},
    {kCharacters, 9, 9, 14, 14, kBlue},
    // A folder.
    {kGroup, 1, 3, 7, 6, kBrown},
    {kGroup, 1, 5, 15, 14, kBrown},
    {kGroup, 2, 6, 14, 13, kYellow},
    // A keyboard.
    {kHotkey, 0, 4, 16, 13, kInk},
    {kHotkey, 2, 6, 4, 8, kPaper},
    {kHotkey, 5, 6, 7, 8, kPaper},
    {kHotkey, 8, 6, 10, 8, kPaper},
    {kHotkey, 11, 6, 14, 8, kPaper},
    {kHotkey, 4, 9, 12, 11, kPaper},
};

// A file of the kind that Windows has a picture for; our own where that is null.
struct SystemPicture {
    const wchar_t* name;
    DWORD attributes;
};

constexpr SystemPicture kSystemPictures[kEntryKinds] = {
    {L".txt", FILE_ATTRIBUTE_NORMAL},      {L".exe", FILE_ATTRIBUTE_NORMAL},
    {L".bmp", FILE_ATTRIBUTE_NORMAL},      {L".ttf", FILE_ATTRIBUTE_NORMAL},
    {L"folder", FILE_ATTRIBUTE_DIRECTORY}, {nullptr, 0}};

SHFILEINFOW AskShell(const wchar_t* name, DWORD attributes, UINT wanted) {
    SHFILEINFOW info = {};
    SHGetFileInfoW(name, attributes, &info, sizeof info, wanted | SHGFI_USEFILEATTRIBUTES);
    return info;
}

// None where Windows has only the picture of any unknown file.
UniqueIcon SystemIcon(EntryKind kind, int edge) {
    const SystemPicture& picture = kSystemPictures[static_cast<std::size_t>(kind)];
    if (!picture.name) return {};
    const UINT size = edge > GetSystemMetrics(SM_CXSMICON) ? SHGFI_LARGEICON : SHGFI_SMALLICON;
    const int unknown = AskShell(L".unknown-kind", FILE_ATTRIBUTE_NORMAL, SHGFI_SYSICONINDEX | size).iIcon;
    const SHFILEINFOW found = AskShell(picture.name, picture.attributes, SHGFI_ICON | size);
    UniqueIcon icon(found.hIcon);
    return found.iIcon == unknown ? UniqueIcon() : std::move(icon);
}

using UniqueBitmap = UniqueHandle<HBITMAP, DeleteObject>;

UniqueIcon OwnIcon(EntryKind kind, int edge) {
    const std::vector<DWORD> pixels = DrawEntryPicture(kind, edge);
    // Rows of the mask are whole words.
    const std::vector<BYTE> nothing(static_cast<std::size_t>((edge + 15) / 16 * 2 * edge), 0);
    const UniqueBitmap color(CreateBitmap(edge, edge, 1, 32, pixels.data()));
    const UniqueBitmap mask(CreateBitmap(edge, edge, 1, 1, nothing.data()));
    ICONINFO info = {TRUE, 0, 0, mask.Get(), color.Get()};
    return UniqueIcon(color && mask ? CreateIconIndirect(&info) : nullptr);
}

}  // namespace

std::vector<DWORD> DrawEntryPicture(EntryKind kind, int edge) {
    std::vector<DWORD> pixels(static_cast<std::size_t>(edge) * static_cast<std::size_t>(edge), 0);
    for (const Block& block : kBlocks) {
        if (block.kind != kind) continue;
        for (int y = block.top * edge / 16; y < block.bottom * edge / 16; ++y) {
            for (int x = block.left * edge / 16; x < block.right * edge / 16; ++x) {
                pixels[static_cast<std::size_t>(y * edge + x)] = block.color;
            }
        }
    }
    return pixels;
}

void ShowEntryPictures() {
    static UniqueImageList shown;
    const int edge = MetricAt(SM_CXSMICON, mainWindow.dpi) * ViewSizePercent() / 100;
    UniqueImageList pictures = MakeImageList(edge, kEntryKinds);
    for (int index = 0; index < kEntryKinds; ++index) {
        const auto kind = static_cast<EntryKind>(index);
        UniqueIcon icon = settings.useSystemIcons ? SystemIcon(kind, edge) : UniqueIcon();
        if (!icon) icon = OwnIcon(kind, edge);
        AddPicture(pictures.Get(), icon.Get());
    }
    ListView_SetImageList(mainWindow.list, pictures.Get(), LVSIL_SMALL);
    TreeView_SetImageList(mainWindow.tree, pictures.Get(), TVSIL_NORMAL);
    // Only now: until then the views draw with those before.
    shown = std::move(pictures);
}

}  // namespace verbatix
