// Somebody else's program at the clipboard. Arguments, first the deed, then the file:
//     put FILE    replaces the content by what the file lists and ends
//     keep FILE   the same, but stays: formats announced without data keep their owner
//     hold        opens the clipboard and stays, so that nobody else can open it
//     stay        stays and does nothing
//     read FILE   writes what it finds into the file and ends
// Staying is told by a hidden window of class VerbatixClipboardReady. The exit code is 0 when all went
// well. The file is a row of records, see tests/support/foreign_clipboard.cpp.
#include <windows.h>

#include <cstring>
#include <string>

#include "../support/clipboard_record.h"

using verbatix::test::ClipboardRecordHeader;
using verbatix::test::ClipboardRecordKind;

static bool OpenPatiently(HWND owner) {
    for (int attempt = 0; attempt < 500; ++attempt) {
        if (OpenClipboard(owner)) return true;
        Sleep(10);
    }
    return false;
}

static HWND MakeWindow(const wchar_t* className) {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = className;
    RegisterClassW(&windowClass);
    return CreateWindowExW(0, className, L"", WS_OVERLAPPEDWINDOW, 0, 0, 10, 10, nullptr, nullptr,
                           windowClass.hInstance, nullptr);
}

static int Stay() {
    MakeWindow(L"VerbatixClipboardReady");
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    return 0;
}

static HBITMAP MakeBitmap() {
    // 3 by 2 pixels, 32 bits each.
    static const DWORD pixels[6] = {0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF, 0x000000, 0x808080};
    const HDC screen = GetDC(nullptr);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, 3, 2);
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof info.bmiHeader, 3, -2, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    SetDIBits(screen, bitmap, 0, 2, pixels, &info, DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
    return bitmap;
}

static bool PutRecord(const ClipboardRecordHeader& header, const char* bytes) {
    if (header.kind == ClipboardRecordKind::bitmap) {
        return SetClipboardData(header.format, MakeBitmap()) != nullptr;
    }
    if (header.kind == ClipboardRecordKind::announced) {
        SetClipboardData(header.format, nullptr);
        return true;
    }
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, header.size);
    if (header.size > 0) {
        std::memcpy(GlobalLock(block), bytes, header.size);
        GlobalUnlock(block);
    }
    return SetClipboardData(header.format, block) != nullptr;
}

static std::string ReadWhole(const wchar_t* path) {
    const HANDLE file =
        CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    std::string bytes(file == INVALID_HANDLE_VALUE ? 0 : GetFileSize(file, nullptr), '\0');
    DWORD read = 0;
    ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
    CloseHandle(file);
    return bytes;
}

static int Put(const wchar_t* path, HWND owner) {
    const std::string file = ReadWhole(path);
    if (!OpenPatiently(owner)) return 2;
    EmptyClipboard();
    bool good = true;
    for (std::size_t at = 0; at + sizeof(ClipboardRecordHeader) <= file.size();) {
        ClipboardRecordHeader header;
        std::memcpy(&header, file.data() + at, sizeof header);
        at += sizeof header;
        good = PutRecord(header, file.data() + at) && good;
        at += header.size;
    }
    CloseClipboard();
    return good ? 0 : 3;
}

static int Read(const wchar_t* path) {
    if (!OpenPatiently(nullptr)) return 2;
    const HANDLE file = CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    for (UINT format = EnumClipboardFormats(0); format; format = EnumClipboardFormats(format)) {
        const HANDLE data = GetClipboardData(format);
        const bool isBitmap = format == CF_BITMAP;
        const void* bytes = data && !isBitmap ? GlobalLock(data) : nullptr;
        const ClipboardRecordHeader header = {format,
                                              isBitmap ? ClipboardRecordKind::bitmap
                                              : bytes  ? ClipboardRecordKind::bytes
                                                       : ClipboardRecordKind::announced,
                                              bytes ? static_cast<DWORD>(GlobalSize(data)) : 0};
        DWORD written = 0;
        WriteFile(file, &header, sizeof header, &written, nullptr);
        if (header.size > 0) WriteFile(file, bytes, header.size, &written, nullptr);
        if (bytes) GlobalUnlock(data);
    }
    CloseHandle(file);
    CloseClipboard();
    return 0;
}

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR commandLine, int) {
    const std::wstring line(commandLine);
    const std::wstring deed = line.substr(0, line.find(L' '));
    const std::wstring path = line.substr(std::min(line.size(), deed.size() + 1));
    const HWND owner = MakeWindow(L"VerbatixClipboardOwner");
    if (deed == L"put") return Put(path.c_str(), owner);
    if (deed == L"read") return Read(path.c_str());
    if (deed == L"keep") {
        const int failure = Put(path.c_str(), owner);
        return failure ? failure : Stay();
    }
    if (deed == L"stay") return Stay();
    if (deed == L"hold") return OpenPatiently(owner) ? Stay() : 2;
    return 1;
}
