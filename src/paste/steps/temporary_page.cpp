#include "paste/steps/temporary_page.h"

#include <windows.h>

#include "base/handle.h"
#include "base/text.h"
#include "paste/steps/launcher.h"

namespace verbatix {

namespace {

bool Write(HANDLE file, const void* bytes, std::size_t size) {
    DWORD written = 0;
    return WriteFile(file, bytes, static_cast<DWORD>(size), &written, nullptr) && written == size;
}

}  // namespace

void (*openPage)(const std::wstring& path) = [](const std::wstring& path) { OpenWithShell(path); };

std::wstring PageFromText(std::wstring text) {
    ReplaceAll(text, L"\r\n", L"<br>");
    ReplaceAll(text, L"\r", L"<br>");
    ReplaceAll(text, L"\n", L"<br>");
    return text;
}

std::wstring TemporaryFolder() {
    wchar_t folder[MAX_PATH + 1] = {};
    const DWORD length = GetTempPathW(MAX_PATH, folder);
    return std::wstring(folder, length < MAX_PATH ? length : 0);
}

std::wstring TemporaryPagePath() {
    const std::wstring folder = TemporaryFolder();
    return folder.empty() ? folder : folder + L"Verbatix_.html";
}

bool WritePage(const std::wstring& path, const std::wstring& page) {
    // Deleted first, because opening alone would leave the end of a longer page behind.
    DeleteFileW(path.c_str());
    const UniqueFile file(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
    const wchar_t mark = 0xFEFF;
    return file && Write(file.Get(), &mark, sizeof mark) &&
           Write(file.Get(), page.data(), page.size() * sizeof page[0]);
}

void OpenTextAsPage(const std::wstring& text) {
    const std::wstring path = TemporaryPagePath();
    if (WritePage(path, PageFromText(text))) openPage(path);
}

}  // namespace verbatix
