// COM on the calling thread for as long as the object lives, single-threaded as the shell wants it. Where
// the thread already has it in another way, that stays.
#pragma once

#include <windows.h>

#include <objbase.h>

namespace verbatix {

class ComApartment {
  public:
    ComApartment() : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)) {}
    ~ComApartment() {
        if (SUCCEEDED(result_)) CoUninitialize();
    }
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;

  private:
    HRESULT result_;
};

}  // namespace verbatix
