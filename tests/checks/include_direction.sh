#!/bin/bash
# A room may include itself and the rooms below it, nothing else; the order is that of the house.
set -eu
rooms=(base hotkeys clipboard store paste menu ui app)
status=0
allowed=
for room in "${rooms[@]}"; do
    allowed="$allowed|$room"
    wrong=$(grep -rnE '^#include "[a-z_]+/' "src/$room" 2>/dev/null |
        grep -vE "#include \"(${allowed#|})/" || true)
    if [ -n "$wrong" ]; then
        echo "src/$room/ may include only ${allowed#|}:"
        echo "$wrong"
        status=1
    fi
done
exit $status
