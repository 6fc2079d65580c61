#include "clipboard/history_marks.h"

#include <algorithm>
#include <array>

#include "clipboard/clipboard_session.h"

namespace verbatix {

// The first three are of Windows, the last is what clipboard managers have agreed upon. Of the first and
// the last the presence counts, of the others the number 0.
static const std::array<UINT, 4>& MarkFormats() {
    static const std::array<UINT, 4> formats = {
        RegisterClipboardFormatW(L"ExcludeClipboardContentFromMonitorProcessing"),
        RegisterClipboardFormatW(L"CanIncludeInClipboardHistory"),
        RegisterClipboardFormatW(L"CanUploadToCloudClipboard"),
        RegisterClipboardFormatW(L"Clipboard Viewer Ignore"),
    };
    return formats;
}

void MarkForHistory(Stay stay) {
    if (stay == Stay::UntilReplaced) return;
    for (const UINT format : MarkFormats()) {
        GiveToClipboard(format, MakeClipboardBlock({}, sizeof(DWORD)));
    }
}

bool IsHistoryMark(UINT format) {
    return std::ranges::count(MarkFormats(), format) > 0;
}

}  // namespace verbatix
