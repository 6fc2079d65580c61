#include "clipboard/named_format.h"

#include "clipboard/clipboard_session.h"
#include "clipboard/clipboard_text.h"
#include "clipboard/format_names.h"

namespace verbatix {

std::wstring ClipboardReadNamedFormat(std::wstring_view name) {
    std::wstring text;
    ReadClipboard([&] {
        for (UINT format = EnumClipboardFormats(0); format; format = EnumClipboardFormats(format)) {
            wchar_t found[kFormatNameCapacity];
            ClipboardFormatName(format, found);
            if (found != name) continue;
            if (const LockedBlock block(GetClipboardData(format)); block) text = WideTextOf(block.Bytes());
        }
        return true;
    });
    return text;
}

}  // namespace verbatix
