#!/bin/bash
# What the program's file says about itself. Windows gives programs made for older systems other frames and
# sizes, stretches those that do not know high resolutions, patches the APIs of those that do not know terminal servers, and shows the version resource in the
# question for administrator rights. scripts/reproduce shows that nothing else in the file depends on when or
# where it was built. Arguments: the build folder.
set -eu
head=$(x86_64-w64-mingw32-objdump -p "$1/Verbatix.exe" | sed '/Import Table/,$d')
version=$(sed -n 's/^project(.* VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
status=0
fail() { echo "Verbatix.exe: $*"; status=1; }

while read -r field value; do
    [ "$(awk -v field="$field" '$1 == field {print $2; exit}' <<<"$head")" = "$value" ] ||
        fail "$field is not $value"
done <<'EOF'
MajorOSystemVersion 6
MinorOSystemVersion 1
MajorSubsystemVersion 6
MinorSubsystemVersion 1
EOF
for mark in HIGH_ENTROPY_VA DYNAMIC_BASE NX_COMPAT TERMINAL_SERVICE_AWARE; do
    grep -qE "^\s+$mark" <<<"$head" || fail "$mark is missing"
done
stamp=$(x86_64-w64-mingw32-objdump -p "$1/Verbatix.exe" | sed -n 's/^Time\/Date\s*//p')
[[ $stamp == *" 1970" ]] || fail "has the time stamp $stamp"

# In the manifest, so that already the first box is sharp. The bench draws every program sharp.
strings=$(x86_64-w64-mingw32-strings "$1/Verbatix.exe")
grep -q '<dpiAware xmlns="[^"]*">true</dpiAware>' <<<"$strings" || fail "is not aware of DPI"
grep -q "name=\"Verbatix\" version=\"$version.0\"" <<<"$strings" || fail "the manifest has another version"

# Texts of resources are UTF-16; a value follows its name.
texts=$(x86_64-w64-mingw32-strings -el "$1/Verbatix.exe")
for name in CompanyName FileDescription "FileVersion $version" InternalName LegalCopyright \
    "OriginalFilename Verbatix.exe" "ProductName Verbatix" "ProductVersion $version" Translation; do
    said=$(grep -x -A1 "${name%% *}" <<<"$texts" | tail -n +2 | head -n 1)
    [[ $name != *" "* || $said == "${name#* }" ]] && grep -qx "${name%% *}" <<<"$texts" ||
        fail "version resource: ${name%% *} is '$said'"
done
exit $status
