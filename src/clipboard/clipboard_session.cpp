#include "clipboard/clipboard_session.h"

#include <algorithm>

#include "hotkeys/pause.h"
#include "hotkeys/stroke_target.h"

namespace verbatix {

ClipboardSession::ClipboardSession(DWORD patience) : open_(OpenClipboard(nullptr) != FALSE) {
    constexpr DWORD kStep = 8;
    for (DWORD waited = 0; !open_ && waited < patience; waited += kStep) {
        Pause(kStep);
        open_ = OpenClipboard(nullptr) != FALSE;
    }
}

static unsigned fills = 0;
static DWORD ourContent = 0;  // its number, as the system counts changes of the clipboard

// Inside the hook there is as little time for it as for a program that takes a stroke.
static bool OwnerAnswers(DWORD patience) {
    const HWND owner = GetClipboardOwner();
    if (!owner) return true;
    const DWORD longest = isInsideHook ? std::min(patience, patienceInsideHook) : patience;
    const ULONGLONG start = GetTickCount64();
    const bool answers = Answers(owner, std::max<DWORD>(longest, 1));
    const ULONGLONG waited = GetTickCount64() - start;
    if (isInsideHook)
        patienceInsideHook -= static_cast<DWORD>(std::min<ULONGLONG>(waited, patienceInsideHook));
    return answers;
}

bool WithClipboard(DWORD patience, const std::function<bool()>& work) {
    const ULONGLONG start = GetTickCount64();
    for (DWORD waited = 0; waited <= patience; waited = static_cast<DWORD>(GetTickCount64() - start)) {
        ClipboardSession clipboard(patience - waited);
        if (!clipboard) return false;
        const bool worked = work();
        if (clipboard.Close()) return worked;
        Pause(1);
    }
    return false;
}

// The owner is asked before the clipboard is opened: one that is about to open it takes no messages either.
bool FillClipboard(DWORD patience, const std::function<bool()>& work) {
    const auto fill = [&] {
        ++fills;
        return EmptyClipboard() && work();
    };
    const bool isFilled = OwnerAnswers(kClipboardPatience) && WithClipboard(patience, fill);
    if (isFilled) ourContent = GetClipboardSequenceNumber();
    return isFilled;
}

unsigned ClipboardFills() {
    return fills;
}

bool IsOurContent() {
    return ourContent != 0 && ourContent == GetClipboardSequenceNumber();
}

bool ReadClipboard(const std::function<bool()>& work) {
    return OwnerAnswers(kClipboardPatience) && WithClipboard(kClipboardPatience, work);
}

bool IsClipboardAtHand() {
    constexpr DWORD kAtOnce = 100;
    return OwnerAnswers(kAtOnce) && ClipboardSession(0);
}

UniqueGlobal MakeClipboardBlock(std::string_view bytes, std::size_t size) {
    UniqueGlobal block(GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, size));
    char* data = block ? static_cast<char*>(GlobalLock(block.Get())) : nullptr;
    if (!data) {
        // A block of no bytes cannot be locked and is right as it is.
        if (size > 0) block.Reset();
        return block;
    }
    const std::size_t used = std::min(bytes.size(), size);
    std::copy_n(bytes.data(), used, data);
    std::fill(data + used, data + size, '\0');
    GlobalUnlock(block.Get());
    return block;
}

bool GiveToClipboard(UINT format, UniqueGlobal block) {
    if (!block || !SetClipboardData(format, block.Get())) return false;
    block.Release();
    return true;
}

}  // namespace verbatix
