#include "support/debug_lines.h"

#include <windows.h>

#include "base/text.h"

namespace verbatix::test {

static std::vector<std::wstring>* collected;

// A debug line travels as an exception; without a debugger every line comes as the ANSI one.
static LONG CALLBACK CollectLine(EXCEPTION_POINTERS* raised) {
    constexpr DWORD kAnsiLine = 0x40010006;
    const EXCEPTION_RECORD& record = *raised->ExceptionRecord;
    if (record.ExceptionCode == kAnsiLine && collected && record.NumberParameters >= 2) {
        collected->push_back(
            FromBytes(reinterpret_cast<const char*>(record.ExceptionInformation[1]), CP_ACP));
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

DebugLines::DebugLines() : handler_(AddVectoredExceptionHandler(TRUE, CollectLine)) {
    collected = &seen_;
}

DebugLines::~DebugLines() {
    RemoveVectoredExceptionHandler(handler_);
    collected = nullptr;
}

}  // namespace verbatix::test
