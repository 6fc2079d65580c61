#!/bin/bash
# The program starts on every Windows 7: it asks the system for functions only that were there. The headers,
# set to Windows 7, keep newer calls out of our own sources; this looks at what the libraries linked into the
# program brought along. And it imports only DLLs that every Windows from 7 to 11 has among its "KnownDLLs",
# which it takes from its own folder whatever stands beside the program. Arguments: the build folder.
set -eu
table=$(x86_64-w64-mingw32-objdump -p "$1/Verbatix.exe")
dlls=$(awk '/DLL Name/ {print tolower($3)}' <<<"$table")
functions=$(awk 'NF == 3 && $1 ~ /^[0-9a-f]+$/ && $2 ~ /^[0-9]+$/ {print $3}' <<<"$table")

known='advapi32|comdlg32|gdi32|imm32|kernel32|msvcrt|ole32|oleaut32|shell32|shlwapi|user32'
foreign=$(grep -vxE "($known)\.dll" <<<"$dlls" || true)
newer='GetSystemTimePreciseAsFileTime|WaitOnAddress|WakeByAddress.*|CreateFile2|CopyFile2|GetDpiFor.*'
newer+='|.*DpiAwareness.*|.*ForDpi|SetThreadDescription|GetThreadDescription|LoadPackagedLibrary|PathCch.*'
newer+='|GetOverlappedResultEx|PrefetchVirtualMemory|GetTempPath2.*|IsWow64Process2|QueryUnbiased.*Precise'
absent=$(grep -xE "$newer" <<<"$functions" || true)

# A table that could not be read would have nothing wrong in it.
grep -qx 'user32.dll' <<<"$dlls" && grep -qx 'SetWindowsHookExW' <<<"$functions" ||
    { echo "the import table of $1/Verbatix.exe could not be read"; exit 1; }
[ -z "$foreign" ] || { echo "could come from beside the program:" $foreign; exit 1; }
[ -z "$absent" ] || { echo "not on Windows 7:" $absent; exit 1; }
