// The opened clipboard as a thing that closes itself, and global memory blocks going to and coming from it.
// The clipboard is opened without an owner window.
#pragma once

#include <windows.h>

#include <cstddef>
#include <functional>
#include <string_view>

#include "base/handle.h"

namespace verbatix {

// How long another program, which looks at what has come onto the clipboard, is waited for.
inline constexpr DWORD kClipboardPatience = 300;  // ms

// The clipboard, open for this thread for as long as the object lives. False when it could not be opened
// within that many milliseconds; with none there is one attempt. Messages that are sent to this thread are
// served while it waits.
class ClipboardSession {
  public:
    explicit ClipboardSession(DWORD patience = kClipboardPatience);

    ClipboardSession(const ClipboardSession&) = delete;
    ClipboardSession& operator=(const ClipboardSession&) = delete;
    ~ClipboardSession() { Close(); }

    explicit operator bool() const { return open_; }

    // Closes the clipboard now. False when it was not open, or no longer: see WithClipboard.
    bool Close() { return std::exchange(open_, false) && CloseClipboard(); }

  private:
    bool open_;
};

// Opens the clipboard, does the work and closes it. To Windows all who open it without a window are one:
// the next of them takes an opened clipboard over, and may empty and fill it meanwhile. That shows when it
// is closed; the work is then done from the start again. Returns what the work returned, or false when the
// clipboard could not be had for the whole of it within that many milliseconds.
bool WithClipboard(DWORD patience, const std::function<bool()>& work);

// The same for filling: the work finds the clipboard empty. False also while the program whose content
// would go hangs: Windows tells it of that, and waits for its answer without an end.
bool FillClipboard(DWORD patience, const std::function<bool()>& work);

// How often the program has begun to fill the clipboard, and whether what is there now is from the last
// time.
unsigned ClipboardFills();
bool IsOurContent();

// The same for reading. False also while the program that filled the clipboard hangs: what it has only
// promised would be waited for without an end.
bool ReadClipboard(const std::function<bool()>& work);

// Whether the clipboard can be opened and filled at once.
bool IsClipboardAtHand();

// A global memory block of somebody else, locked for as long as the object lives. False for a null handle
// and for what is no global memory.
class LockedBlock {
  public:
    explicit LockedBlock(HGLOBAL block) : block_(block), data_(block ? GlobalLock(block) : nullptr) {}
    LockedBlock(const LockedBlock&) = delete;
    LockedBlock& operator=(const LockedBlock&) = delete;
    ~LockedBlock() {
        if (data_) GlobalUnlock(block_);
    }

    explicit operator bool() const { return data_ != nullptr; }

    // The block's bytes. There may be more of them than its maker asked for, so that text in it ends at
    // its terminator, and none of them can be taken for one.
    std::string_view Bytes() const {
        return data_ ? std::string_view(static_cast<const char*>(data_), GlobalSize(block_))
                     : std::string_view();
    }

  private:
    HGLOBAL block_;
    void* data_;
};

// A movable block of `size` bytes that begins with `bytes`, cut at `size`; zeros fill the rest. None when
// the memory cannot be had.
UniqueGlobal MakeClipboardBlock(std::string_view bytes, std::size_t size);

// Puts the block on the opened clipboard, which owns it from then on. When it is none or the clipboard
// refuses it, it is freed and the result is false.
bool GiveToClipboard(UINT format, UniqueGlobal block);

}  // namespace verbatix
