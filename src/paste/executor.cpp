#include "paste/executor.h"

#include "base/text.h"
#include "clipboard/clipboard_text.h"
#include "hotkeys/key_simulation.h"

namespace verbatix {

ExecutorClient executorClient;

void FinishForDelivery(const std::wstring& text) {
    if (text.empty()) return;
    std::wstring delivered = text;
    ReplaceAll(delivered, L"\\n", L"\r\n");
    ClipboardPutText(delivered);
}

void DeliverText(const std::wstring& text) {
    constexpr DWORD kPasteWait = 20;
    FinishForDelivery(text);
    SendPaste(kPasteWait);
}

void ExecuteEntry(const std::wstring& text) {
    DeliverText(text);
}

}  // namespace verbatix
