#include "paste/builtin/image_clipboard.h"

#include <windows.h>

#include <atomic>
#include <memory>
#include <utility>

#include "base/aside.h"
#include "base/handle.h"
#include "base/language.h"
#include "base/text.h"
#include "clipboard/clipboard_session.h"
#include "clipboard/saved_clipboard.h"
#include "hotkeys/foreground.h"
#include "hotkeys/key_simulation.h"
#include "hotkeys/stroke_target.h"
#include "paste/builtin/gdi_plus.h"

namespace verbatix {

const wchar_t* ImageFormatName(std::string_view bytes) {
    if (bytes.size() <= 3) return nullptr;
    // One fitting letter is enough, and GIF is asked first: a PNG file is found by its second byte, and a
    // stray "I" or "F" makes anything a GIF. Programs that paste look at the bytes again, and users'
    // pictures arrive as they always have.
    if (bytes[0] == 'G' || bytes[1] == 'I' || bytes[2] == 'F') return L"GIF";
    if (bytes[1] == 'P' || bytes[2] == 'N' || bytes[3] == 'G') return L"PNG";
    return L"JFIF";
}

namespace {

struct FileBytes {
    UniqueGlobal block;
    std::string start;  // as much as tells the format
    bool opened = false;
};

FileBytes ReadFileBytes(const std::wstring& path) {
    FileBytes file;
    const UniqueFile handle(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER size = {};
    if (!handle || !GetFileSizeEx(handle.Get(), &size)) return file;
    file.opened = true;
    if (size.QuadPart <= 0 || size.QuadPart > MAXDWORD) return file;
    const DWORD count = static_cast<DWORD>(size.QuadPart);
    UniqueGlobal block(GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, count));
    char* const bytes = block ? static_cast<char*>(GlobalLock(block.Get())) : nullptr;
    if (!bytes) return file;
    DWORD read = 0;
    if (ReadFile(handle.Get(), bytes, count, &read, nullptr) && read == count) {
        file.start.assign(bytes, count < 4 ? count : 4);
    }
    GlobalUnlock(block.Get());
    if (!file.start.empty()) file.block = std::move(block);
    return file;
}

struct Picture {
    UniqueGlobal dib;
    FileBytes file;
};

bool IsThere(const std::wstring& path) {
    constexpr DWORD kLongestWait = 10000;
    const auto attributes = std::make_shared<std::atomic<DWORD>>(INVALID_FILE_ATTRIBUTES);
    return DoAside([=] { *attributes = GetFileAttributesW(path.c_str()); }, kLongestWait) &&
           *attributes != INVALID_FILE_ATTRIBUTES;
}

// A file on a computer that does not answer, or one that is huge, takes its time; keys are served
// meanwhile.
Picture LoadPicture(const std::wstring& path) {
    constexpr DWORD kLongestWait = 60000;
    if (!IsThere(path)) return {};
    const auto picture = std::make_shared<Picture>();
    const auto load = [=] {
        picture->dib = LoadImageAsDib(path);
        if (picture->dib) picture->file = ReadFileBytes(path);
    };
    return DoAside(load, kLongestWait) ? std::move(*picture) : Picture();
}

// The picture itself, which may be huge: where another program took the clipboard over, none is left for a
// second attempt, and nothing is pasted.
bool GivePicture(Picture& picture) {
    if (!GiveToClipboard(CF_DIB, std::move(picture.dib))) return false;
    if (const wchar_t* const name = ImageFormatName(picture.file.start)) {
        GiveToClipboard(RegisterClipboardFormatW(name), std::move(picture.file.block));
    }
    return true;
}

}  // namespace

bool ImageFileToClipboard(std::wstring_view untrimmedPath) {
    const std::wstring path(TrimSpace(untrimmedPath));
    // Decoded before the clipboard is opened, so that no other program is locked out of it meanwhile.
    Picture picture = LoadPicture(path);
    const bool isPicture = static_cast<bool>(picture.dib);
    AwaitLastStroke();
    const unsigned before = ClipboardFills();
    if (!FillClipboard(kClipboardPatience, [&] { return !isPicture || GivePicture(picture); })) {
        WithholdStrokes();
        // What is there stays, unless it has gone all the same.
        keepClipboardOnce = ClipboardFills() == before;
        return true;
    }
    if (!isPicture) return false;
    if (!picture.file.opened) {
        ShowBoxInFront(nullptr, LanguageText(text::kCannotOpenFile) + L": " + path, L"", MB_ICONERROR);
    }
    SendPaste(20);
    keepClipboardOnce = true;
    return true;
}

}  // namespace verbatix
