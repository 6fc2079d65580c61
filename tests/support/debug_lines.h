// What the program under test tells a debugger.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "base/text.h"

namespace verbatix::test {

// Collects the debug lines of this process for as long as it lives; one at a time.
class DebugLines {
  public:
    DebugLines() : handler_(AddVectoredExceptionHandler(TRUE, CollectLine)) { seen_.clear(); }
    ~DebugLines() { RemoveVectoredExceptionHandler(handler_); }
    DebugLines(const DebugLines&) = delete;
    DebugLines& operator=(const DebugLines&) = delete;

    static const std::vector<std::wstring>& Seen() { return seen_; }

  private:
    // A debug line travels as an exception; without a debugger every line comes as the ANSI one.
    static LONG CALLBACK CollectLine(EXCEPTION_POINTERS* raised) {
        constexpr DWORD kAnsiLine = 0x40010006;
        const EXCEPTION_RECORD& record = *raised->ExceptionRecord;
        if (record.ExceptionCode == kAnsiLine && record.NumberParameters >= 2) {
            seen_.push_back(
                FromBytes(reinterpret_cast<const char*>(record.ExceptionInformation[1]), CP_ACP));
        }
        return EXCEPTION_CONTINUE_SEARCH;
    }

    inline static std::vector<std::wstring> seen_;
    void* handler_;
};

}  // namespace verbatix::test
