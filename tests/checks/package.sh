#!/bin/bash
# What a user downloads, used as a user does: the setup program installs, the program pastes, an upgrade
# replaces the running copy, which keeps its list and comes back with what it was started with, the
# uninstaller leaves the list; and the zip runs from a folder with blanks and Cyrillic letters, its list
# beside it. Arguments: the build folder.
set -eu
. scripts/wine-environment
build=$(realpath "$1")
folder=$build/package
status=0
fail() { echo "package: $*"; status=1; }
trap 'echo "package: ends at line $LINENO"' ERR
# Without a program of Wine's: nothing that may fail for reasons of its own.
windows() {
    case $1 in
        "$WINEPREFIX"/drive_c/*) set -- "C:${1#"$WINEPREFIX"/drive_c}" ;;
        *) set -- "Z:$1" ;;
    esac
    tr / '\\' <<<"$1"
}
# The desktop of these tests has one keyboard and one session: nothing of ours may stay.
wine() { command wine "$@" </dev/null >/dev/null 2>&1; }
# A command line with these very quotes: Wine would put what holds a blank in quotes as a whole. In a place
# whose name the command prompt understands, whatever folder this stands in.
as_written() { printf '"%s" %s\r\n' "$(windows "$1")" "$2" >"$WINEPREFIX/drive_c/as_written.bat" &&
    wine cmd /c 'C:\as_written.bat'; }
running() { wine "$build/tests/running_copy.exe" "$@"; }
value() { command wine reg query "$1" /v "$2" 2>/dev/null | tr -d '\r' | sed -n "s/^ *$2 *REG_[A-Z]* *//p"; }
wait_until() {
    for _ in $(seq 300); do
        "$@" && return
        sleep 0.1
    done
    return 1
}
gone() { [ ! -e "$1" ]; }
# The uninstaller goes on as a copy of itself, which cannot be deleted before it has ended.
uninstall() { as_written "$target/Uninstall.exe" "$*" && wait_until ended || fail "the uninstaller does not end: $*"; }
ended() {
    local copy=("$WINEPREFIX"/drive_c/users/*/Temp/~nsu*/Un.exe)
    wine cmd /c del "$(windows "${copy[0]}")"
    gone "${copy[0]}"
}
say_paste() {
    command wine "$build/demo/demo.exe" "$@" </dev/null >"$folder.log" 2>&1 ||
        fail "no paste by $1: $(tail -n 1 "$folder.log")"
    wine taskkill /f /im notepad.exe || true
}

scripts/package "$build/Verbatix.exe" "$folder" >"$folder.log" || { cat "$folder.log"; exit 1; }
rm -f "$WINEPREFIX"/drive_c/*-setup.exe
cp "$folder"/*-setup.exe "$WINEPREFIX/drive_c/"
setup=$(echo "$WINEPREFIX"/drive_c/*-setup.exe)
version=$(basename "$setup" -setup.exe)
version=${version#Verbatix-}
# Of the one user who has such a folder.
data=$(echo "$WINEPREFIX"/drive_c/users/*/AppData)
app_data=$data/Roaming/Verbatix
target=$data/Local/Programs/Verbatix
program=$(windows "$target/Verbatix.exe")
apps='HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Verbatix'
run='HKCU\Software\Microsoft\Windows\CurrentVersion\Run'
rm -rf "$app_data" "$target"

wine "$setup" /S /CURRENTUSER /AUTOSTART || fail "setup ends with $?"
for file in Verbatix.exe Uninstall.exe Verbatix_guide.html Changes.txt Licences.txt; do
    [ -s "$target/$file" ] || fail "$file is not installed"
done
# Every code that the list of codes offers, whatever follows it as an example, is in the index of the guide.
named() { sed -E 's/[0-9]+//g; s/:.*//' | sort -u; }
offered=$(sed -nE 's/^    \{L"(sys:)?([^"]+)", text::kMeans.*/\2/p' src/ui/editor/code_catalogue.cpp | named)
for page in "$target"/Verbatix_{guide,Anleitung}.html; do
    missing=$(comm -23 <(echo "${offered:?}") <(sed -n '/class="index"/,$s:.*<code>\(.*\)</code>.*:\1:p' "$page" | named))
    [ -z "$missing" ] || fail "not in the index of $(basename "$page"):" $missing
done
[ "$(value "$apps" DisplayVersion)" = "$version" ] || fail "the list of apps does not tell the version"
[ "$(value "$run" Verbatix)" = "\"$program\" -bg" ] || fail "is not started with Windows"
say_paste "$program" "$(windows "$app_data/Verbatix.ini")" own

# Over the running copy, which was started with a list of its own: nothing lost, and the same one comes back.
running --end || fail "the copy does not end when it is asked to"
list=$folder/meine\ Liste.ini
cp "$app_data/Verbatix.ini" "$list"
(cd "$folder" && wine "$target/Verbatix.exe" -bg "-ini:meine Liste.ini" &)
wait_until running "meine Liste.ini" || fail "the copy does not start"
before=$(sed -n '/^\[list_text\]/,/^\[/p' "$list" | sha256sum)
echo old >"$target/Changes.txt"
as_written "$setup" "/S /CURRENTUSER /D=C:\\elsewhere" || fail "upgrade ends with $?"
[ "$(cat "$target/Changes.txt")" != old ] || fail "the upgrade replaces nothing"
wait_until running "$program" "meine Liste.ini" || fail "the copy does not come back with its list"
gone "$target/meine Liste.ini" || fail "the copy comes back in another folder"
[ "$(value "$run" Verbatix)" = "\"$program\" -bg" ] || fail "the upgrade stops the start with Windows"
after=$(sed -n '/^\[list_text\]/,/^\[/p' "$list" | sha256sum)
[ "$before" = "$after" ] || fail "the upgrade changes the list"

uninstall /S
gone "$target" || fail "the uninstaller leaves $(ls "$target")"
running && fail "the uninstaller leaves a copy running"
[ -z "$(value "$apps" DisplayVersion)$(value "$run" Verbatix)" ] || fail "the uninstaller leaves keys"
[ -s "$app_data/Verbatix.ini" ] || fail "the uninstaller deletes the list unasked"
wine "$setup" /S /CURRENTUSER && uninstall '/S /DELETELIST /BY="C:\some body"'
[ -s "$app_data/Verbatix.ini" ] || fail "somebody else's list is deleted"
wine "$setup" /S /CURRENTUSER && uninstall "/S /DELETELIST /BY=\"$(windows "$data/Roaming")\""
gone "$app_data" || fail "the uninstaller keeps the list when it is told to delete it"

# For all users; with the rights of somebody else, whose start with Windows it is not, and with one's own.
target=$WINEPREFIX/drive_c/Program\ Files/Verbatix
as_written "$setup" '/S /ALLUSERS /AUTOSTART /BY="C:\some body"' || fail "setup for all ends with $?"
[ -z "$(value "$run" Verbatix)" ] || fail "is started with somebody else's Windows"
wine "$setup" /S /AUTOSTART && [ -n "$(value "${apps/HKCU/HKLM}" DisplayVersion)" ] || fail "is not installed for all"
[ -n "$(value "$run" Verbatix)" ] || fail "is not started with Windows where it is for all"
uninstall '/S /BY="C:\some body"'
gone "$target" && [ -z "$(value "$run" Verbatix)$(value "${apps/HKCU/HKLM}" DisplayVersion)" ] ||
    fail "the uninstaller leaves something of an installation for all"

stick="$folder/Мои тексты (2)"
mkdir "$stick"
(cd "$stick" && cmake -E tar xf "$folder"/*-portable.zip)
say_paste "$(windows "$stick/Verbatix_portable.exe")" "$(windows "$stick/Verbatix.ini")" own
running --end || true
(cd "$folder" && sha256sum --quiet -c SHA256SUMS) || fail "the sums are wrong"
exit $status
