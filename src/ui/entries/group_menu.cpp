#include "ui/entries/group_menu.h"

#include "base/access_letters.h"
#include "base/handle.h"
#include "base/language.h"
#include "base/message_font.h"
#include "base/text.h"
#include "base/window_dress.h"
#include "ids.h"
#include "menu/menu_model.h"
#include "store/settings.h"
#include "ui/entries/move_entry.h"
#include "ui/state/main_window.h"
#include "ui/views/list_view.h"

namespace verbatix {

namespace {

constexpr std::size_t kMostGroups = 500;  // a longer menu cannot be used

std::wstring PathOf(const ListEntry& entry) {
    LabelParts parts = SplitLabel(entry.label);
    parts.name.clear();
    std::wstring path = JoinLabel(parts);
    if (!path.empty()) path.pop_back();
    return path;
}

void AppendRow(HMENU menu, int command, const std::wstring& text, bool checked = false) {
    AppendMenuW(menu, MF_STRING | (checked ? MF_CHECKED : MF_UNCHECKED), static_cast<UINT_PTR>(command),
                text.c_str());
}

void PutInGroup(int position, const std::wstring& path) {
    const auto found = mainWindow.entries.find(position);
    if (found == mainWindow.entries.end() || PathOf(found->second.current) == path) return;
    Placement placement = PlacementOf(found->second.current);
    placement.path = path;
    PlaceAndShow(position, placement, Act::kGroup);
}

void FillGroupDialog(HWND dialog) {
    const struct {
        int control;
        int text;
    } captions[] = {{IDC_GROUP_CAPTION, text::kGroupName}, {IDOK, text::kOk}, {IDCANCEL, text::kCancel}};
    for (const auto& caption : captions) {
        SetDlgItemTextW(dialog, caption.control, LanguageText(caption.text).c_str());
    }
    SetWindowTextW(dialog, LanguageText(text::kNewGroupTitle).c_str());
    SendDlgItemMessageW(dialog, IDC_GROUP_NAME, EM_SETLIMITTEXT, kLabelLimit - 1, 0);
}

INT_PTR CALLBACK GroupProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    switch (message) {
        case WM_INITDIALOG:
            SetWindowLongPtrW(dialog, DWLP_USER, lParam);
            return DressWindow(dialog), FillGroupDialog(dialog), TRUE;
        case WM_COMMAND:
            if (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL) return FALSE;
            if (LOWORD(wParam) == IDOK) {
                wchar_t name[kLabelLimit] = {};
                GetDlgItemTextW(dialog, IDC_GROUP_NAME, name, static_cast<int>(kLabelLimit));
                *reinterpret_cast<std::wstring*>(GetWindowLongPtrW(dialog, DWLP_USER)) = TrimBlanks(name);
            }
            return EndDialog(dialog, LOWORD(wParam)), TRUE;
        default: return FALSE;
    }
}

}  // namespace

std::optional<std::wstring> AskGroupName() {
    std::wstring name;
    RunDialog(IDD_GROUP, mainWindow.window, GroupProcedure, reinterpret_cast<LPARAM>(&name));
    return name.empty() ? std::nullopt : std::optional(name);
}

std::vector<std::wstring> AppendGroupRows(HMENU menu, int position) {
    std::vector<std::wstring> groups;
    const auto found = mainWindow.entries.find(position);
    if (found != mainWindow.entries.end()) {
        const ListEntry& entry = found->second.current;
        const std::wstring path = PathOf(entry);
        groups = GroupsOn(mainWindow.entries, entry.keyCode, entry.modifier);
        if (groups.size() > kMostGroups) groups.resize(kMostGroups);
        AppendRow(menu, CMD_NO_GROUP, LanguageText(text::kNoGroup), path.empty());
        int command = CMD_FIRST_GROUP;
        for (const std::wstring& group : groups) {
            AppendRow(menu, command++, ShownLabel(group, true), group == path);
        }
        AppendRow(menu, CMD_NEW_GROUP, LanguageText(text::kNewGroup));
        AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    }
    AppendRow(menu, CMD_SHOW_GROUPS, LanguageText(text::kShowGroups), settings.grouping != 0);
    return groups;
}

bool RunGroupRow(int command, int position, const std::vector<std::wstring>& groups) {
    const auto index = static_cast<std::size_t>(command - CMD_FIRST_GROUP);
    if (command == CMD_NO_GROUP) return PutInGroup(position, {}), true;
    if (command >= CMD_FIRST_GROUP && index < groups.size()) {
        return PutInGroup(position, groups[index]), true;
    }
    if (command != CMD_NEW_GROUP) return false;
    if (const std::optional<std::wstring> name = AskGroupName()) PutInGroup(position, *name);
    return true;
}

void ShowGroupMenu() {
    const UniqueMenu menu(CreatePopupMenu());
    const int position = SelectedEntry();
    const std::vector<std::wstring> groups = AppendGroupRows(menu.Get(), position);
    GiveAccessLetters(menu.Get());
    POINT mouse = {};
    GetCursorPos(&mouse);
    mainWindow.listCommandsBlocked = true;
    const int command =
        TrackPopupMenu(menu.Get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, static_cast<int>(mouse.x),
                       static_cast<int>(mouse.y), 0, mainWindow.window, nullptr);
    mainWindow.listCommandsBlocked = false;
    if (command == 0 || RunGroupRow(command, position, groups)) return;
    SendMessageW(mainWindow.window, WM_COMMAND, static_cast<WPARAM>(command), 0);
}

}  // namespace verbatix
