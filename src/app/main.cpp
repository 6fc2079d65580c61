#include <windows.h>

#include "app/start.h"
#include "base/system_library.h"

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR commandLine, int) {
    verbatix::SearchSystemFolderOnly();
    return verbatix::RunProgram(instance, commandLine);
}
