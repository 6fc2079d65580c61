#include <windows.h>

#include "app/start.h"

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR commandLine, int) {
    return verbatix::RunProgram(instance, commandLine);
}
