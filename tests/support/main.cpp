// The main function of the test programs. A crash ends them with a status of its own: Wine's debugger,
// which would come otherwise, may end them with 0, and what crashed would pass.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>

static constexpr UINT kCrashed = 101;

static LONG WINAPI EndAtOnce(EXCEPTION_POINTERS*) noexcept {
    TerminateProcess(GetCurrentProcess(), kCrashed);
    return EXCEPTION_EXECUTE_HANDLER;
}

int main(int count, char** arguments) {
    SetUnhandledExceptionFilter(EndAtOnce);
    setvbuf(stdout, nullptr, _IONBF, 0);  // who hangs has said where
    testing::InitGoogleTest(&count, arguments);
    return RUN_ALL_TESTS();
}
