// Somebody else's program at the clipboard. Arguments, first the deed, then the file:
//     put FILE    replaces the content by what the file lists and ends
//     keep FILE   the same, but stays: formats announced without data keep their owner
//     hang FILE   the same, but takes no messages any more
//     hold        opens the clipboard and stays, so that nobody else can open it
//     read FILE   writes what it finds into the file and ends
// Staying is told by a hidden window of class VerbatixClipboardReady. The exit code is 0 when all went
// well. The file is a row of records, see tests/support/foreign_clipboard.cpp.
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <functional>

#include "support/folder.h"
#include "support/foreign_clipboard.h"

using verbatix::test::ClipboardRecordKind;
using verbatix::test::ForeignFormat;

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

static int Stay(bool hangs = false) {
    MakeWindow(L"VerbatixClipboardReady");
    if (hangs) Sleep(INFINITE);
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

static bool PutRecord(const ForeignFormat& record) {
    if (record.kind == ClipboardRecordKind::bitmap) {
        return SetClipboardData(record.format, MakeBitmap()) != nullptr;
    }
    if (record.kind == ClipboardRecordKind::announced) {
        SetClipboardData(record.format, nullptr);
        return true;
    }
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, record.bytes.size());
    if (!record.bytes.empty()) {
        std::memcpy(GlobalLock(block), record.bytes.data(), record.bytes.size());
        GlobalUnlock(block);
    }
    return SetClipboardData(record.format, block) != nullptr;
}

static int Put(const std::wstring& path, HWND owner) {
    const auto records = verbatix::test::ParseRecords(verbatix::test::ReadBytes(path));
    if (!OpenPatiently(owner)) return 2;
    EmptyClipboard();
    const auto failures = std::count_if(records.begin(), records.end(), std::not_fn(PutRecord));
    CloseClipboard();
    return failures == 0 ? 0 : 3;
}

static int Read(const std::wstring& path) {
    if (!OpenPatiently(nullptr)) return 2;
    std::vector<ForeignFormat> records;
    for (UINT format = EnumClipboardFormats(0); format; format = EnumClipboardFormats(format)) {
        ForeignFormat record = {format, {}, ClipboardRecordKind::bitmap};
        const HANDLE data = GetClipboardData(format);
        if (format != CF_BITMAP) {
            const void* bytes = data ? GlobalLock(data) : nullptr;
            record.kind = bytes ? ClipboardRecordKind::bytes : ClipboardRecordKind::announced;
            if (bytes) record.bytes.assign(static_cast<const char*>(bytes), GlobalSize(data));
            if (bytes) GlobalUnlock(data);
        }
        records.push_back(record);
    }
    CloseClipboard();
    return verbatix::test::WriteBytes(path, verbatix::test::FormatRecords(records)) ? 0 : 3;
}

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR commandLine, int) {
    const std::wstring line(commandLine);
    const std::wstring deed = line.substr(0, line.find(L' '));
    const std::wstring path = line.substr(std::min(line.size(), deed.size() + 1));
    const HWND owner = MakeWindow(L"VerbatixClipboardOwner");
    if (deed == L"put") return Put(path, owner);
    if (deed == L"read") return Read(path);
    if (deed == L"keep" || deed == L"hang") {
        const int failure = Put(path, owner);
        return failure ? failure : Stay(deed == L"hang");
    }
    if (deed == L"hold") return OpenPatiently(owner) ? Stay() : 2;
    return 1;
}
