#!/bin/bash
# An independent judge of the HTML format: Wine hands the Windows clipboard to X11 and back, and there xclip
# reads and writes text/html. Arguments: the build folder.
set -eu
# Set where the tests run on a desktop; a native Windows has no X11 to ask.
if [ -z "${DISPLAY-}" ]; then
    echo "needs a desktop: scripts/on-desktop ctest ..."
    exit 1
fi
. scripts/wine-environment
bridge=$1/tests/html_bridge.exe
folder=$(mktemp -d)
owner=
source=
take_down() {
    kill $owner $source 2>/dev/null || true
    rm -rf "$folder"
}
trap take_down EXIT

# Somebody must keep the desktop, and with it the bridge, alive between the programs below.
wine "$1/tests/clipboard_owner.exe" stay >/dev/null 2>&1 &
owner=$!

# Repeats a command until it succeeds, for at most 20 s.
patiently() {
    for _ in $(seq 100); do
        "$@" && return 0
        sleep 0.2
    done
    return 1
}

fail() {
    echo "$1"
    exit 1
}

x_text_is() {
    timeout 5 xclip -selection clipboard -t text/html -o 2>/dev/null | tr -d '\0' >"$folder/x"
    [ "$(cat "$folder/x")" = "$1" ]
}

# X11 gets what lies between the fragment offsets, so that one byte more or less would be seen.
wine "$bridge" put '<b>bridge {u}</b>' || fail "our HTML was not taken"
patiently x_text_is '<b>bridge ä€中😀</b>' || {
    cat "$folder/x"
    fail "X11 does not read our HTML"
}

our_fragment_is() {
    wine "$bridge" get "$(winepath -w "$folder/fragment")" && [ "$(cat "$folder/fragment")" = "$1" ]
}

html='<html><body><i>from X11 ä😀</i></body></html>'
printf %s "$html" >"$folder/html"
# In the foreground, so that it is ours to end.
xclip -selection clipboard -t text/html -quiet -i "$folder/html" >/dev/null 2>&1 &
source=$!
patiently our_fragment_is "$html" || {
    cat "$folder/fragment"
    fail "we do not read the HTML of X11"
}
