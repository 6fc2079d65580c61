#include "paste/builtin/image_clipboard.h"

#include <windows.h>

#include "base/handle.h"
#include "base/language.h"
#include "base/text.h"
#include "clipboard/clipboard_session.h"
#include "clipboard/saved_clipboard.h"
#include "hotkeys/foreground.h"
#include "hotkeys/key_simulation.h"
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
    if (size.QuadPart <= 0 || static_cast<unsigned long long>(size.QuadPart) > kMaxImageFileBytes)
        return file;
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

bool IsSmallEnough(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) return false;
    return (static_cast<unsigned long long>(data.nFileSizeHigh) << 32 | data.nFileSizeLow) <=
           kMaxImageFileBytes;
}

void GiveFileBytes(FileBytes file) {
    if (const wchar_t* const name = ImageFormatName(file.start)) {
        GiveToClipboard(RegisterClipboardFormatW(name), std::move(file.block));
    }
}

}  // namespace

bool ImageFileToClipboard(std::wstring_view untrimmedPath) {
    const std::wstring path(TrimSpace(untrimmedPath));
    // Decoded before the clipboard is opened, so that no other program is locked out of it meanwhile.
    UniqueGlobal dib = IsSmallEnough(path) ? LoadImageAsDib(path) : UniqueGlobal();
    FileBytes file = dib ? ReadFileBytes(path) : FileBytes();
    const bool opened = file.opened;
    {
        const ClipboardSession session;
        if (!session) {
            WithholdStrokes();
            keepClipboardOnce = true;
            return true;
        }
        EmptyClipboard();
        if (!dib) return false;
        GiveToClipboard(CF_DIB, std::move(dib));
        GiveFileBytes(std::move(file));
    }
    if (!opened) {
        ShowBoxInFront(nullptr, LanguageText(text::kCannotOpenFile) + L": " + path, L"", MB_ICONERROR);
    }
    SendPaste(20);
    keepClipboardOnce = true;
    return true;
}

}  // namespace verbatix
