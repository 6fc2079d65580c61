#include "ui/shell/guide.h"

#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <iterator>
#include <string_view>

#include "base/product.h"
#include "base/text.h"
#include "ids.h"
#include "store/text_file.h"
#include "ui/shell/web_pages.h"
#include "ui/state/main_window.h"
#include "ui/state/program_client.h"

namespace verbatix {

namespace {

constexpr int kGerman = 0;  // number of the language

std::string_view GuideResource(const wchar_t* name) {
    const HRSRC resource = FindResourceW(nullptr, name, RT_HTML);
    const HGLOBAL block = resource ? LoadResource(nullptr, resource) : nullptr;
    const void* const bytes = block ? LockResource(block) : nullptr;
    if (!bytes) return {};
    return {static_cast<const char*>(bytes), SizeofResource(nullptr, resource)};
}

std::wstring TemporaryFolder() {
    wchar_t folder[MAX_PATH + 1] = {};
    const DWORD length = GetTempPathW(MAX_PATH + 1, folder);
    return length > 0 && length <= MAX_PATH ? folder : L"";
}

// Never into a file that is there: it may be somebody else's, or lead elsewhere.
bool WriteAnew(const std::wstring& path, std::string_view bytes) {
    DeleteFileW(path.c_str());
    return WriteWholeFile(path, CREATE_NEW, bytes);
}

struct Chapter {
    int control;
    const wchar_t* place;
};

constexpr Chapter kChapters[] = {
    {IDC_TEXT, L"placeholders"},
    {IDC_INSERT, L"placeholders"},
    {IDC_HOTKEY, L"hotkeys"},
    {IDC_MODIFIER, L"hotkeys"},
    {IDC_KEY, L"hotkeys"},
    {IDC_LABEL, L"hotkeys"},
    {IDC_LIST, L"your-list"},
    {IDC_TREE, L"your-list"},
    {IDC_FILTER, L"your-list"},
    {IDC_PREVIEW, L"placeholders"},
    {IDC_MEND_CODE, L"placeholders"},
};

// Other windows, by a control that they have.
constexpr Chapter kDialogs[] = {
    {IDC_CODE_LIST, L"placeholders"},
    {IDC_CALENDAR, L"placeholders"},
    {IDC_HOURS, L"placeholders"},
    {IDC_GROUP_NAME, L"your-list"},
    {IDC_ASKED_KEY, L"hotkeys"},
    {IDC_CUT_OFF, L"your-list"},
    {IDC_ABOUT_COPY, L"when-something-goes-wrong"},
};

const wchar_t* PlaceOfDialog(HWND dialog) {
    const auto found = std::find_if(std::begin(kDialogs), std::end(kDialogs), [=](const Chapter& chapter) {
        return GetDlgItem(dialog, chapter.control) != nullptr;
    });
    return found != std::end(kDialogs) ? found->place : L"";
}

// Of the control with the keyboard, or the one that it is a part of, such as the field of a drop-down.
const wchar_t* PlaceOf(HWND focus) {
    const HWND window = GetAncestor(focus, GA_ROOT);
    if (window != mainWindow.window) return PlaceOfDialog(window);
    for (; focus && focus != mainWindow.window; focus = GetParent(focus)) {
        for (const Chapter& chapter : kChapters) {
            if (focus == DialogControl(chapter.control)) return chapter.place;
        }
    }
    return L"";
}

}  // namespace

bool OpenGuide(const std::wstring& place) {
    const bool german = programClient.activeLanguage && programClient.activeLanguage() == kGerman;
    std::string_view page = GuideResource(german ? L"GUIDE_DE" : L"GUIDE_EN");
    if (page.empty()) page = GuideResource(L"GUIDE_EN");
    const std::wstring folder = TemporaryFolder();
    if (page.empty() || folder.empty()) return false;
    const std::wstring name = std::wstring(kProductName) + L"_guide.html";
    if (!WriteAnew(folder + name, page)) return false;
    // A place behind "#" is lost on the way through the shell; a page that leads there keeps it.
    const std::wstring open = folder + kProductName + L"_guide_open.html";
    const std::wstring lead =
        L"<!DOCTYPE html><meta http-equiv=\"refresh\" content=\"0;url=" + name + L"#" + place + L"\">";
    if (!WriteAnew(open, ToBytes(lead, CP_UTF8))) return false;
    return reinterpret_cast<INT_PTR>(ShellExecuteW(mainWindow.window, L"open", open.c_str(), nullptr,
                                                   nullptr, SW_SHOWNORMAL)) > 32;
}

void OpenGuideHere() {
    if (!OpenGuide(PlaceOf(GetFocus()))) OpenWebPageOf(CMD_QUESTIONS);
}

}  // namespace verbatix
