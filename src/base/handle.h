// One move-only owner for things that Windows opens and the program must close.
#pragma once

#include <windows.h>

#include <utility>

namespace verbatix {

// Owns one handle and closes it with `close` when it goes. `invalid` is the value that means "none" (an
// integer, because INVALID_HANDLE_VALUE is a cast and no constant expression); the
// close function is never called with it.
template <typename Handle, auto close, LONG_PTR invalid = 0>
class UniqueHandle {
  public:
    UniqueHandle() = default;
    explicit UniqueHandle(Handle handle) : handle_(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept : handle_(other.Release()) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        if (this != &other) Reset(other.Release());
        return *this;
    }
    UniqueHandle(const UniqueHandle&) = delete;
    UniqueHandle& operator=(const UniqueHandle&) = delete;
    ~UniqueHandle() { Reset(); }

    Handle Get() const { return handle_; }
    explicit operator bool() const { return handle_ != None(); }

    // Gives the handle away; this object then owns nothing.
    Handle Release() { return std::exchange(handle_, None()); }

    // Closes what is owned and takes `handle` instead.
    void Reset(Handle handle = None()) {
        if (handle_ != None()) close(handle_);
        handle_ = handle;
    }

  private:
    static Handle None() { return reinterpret_cast<Handle>(invalid); }

    Handle handle_ = None();
};

using UniqueFile = UniqueHandle<HANDLE, CloseHandle, -1>;
using UniqueKernelObject = UniqueHandle<HANDLE, CloseHandle>;
using UniqueGlobal = UniqueHandle<HGLOBAL, GlobalFree>;
using UniqueIcon = UniqueHandle<HICON, DestroyIcon>;
using UniqueMenu = UniqueHandle<HMENU, DestroyMenu>;
using UniqueModule = UniqueHandle<HMODULE, FreeLibrary>;

}  // namespace verbatix
