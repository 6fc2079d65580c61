#!/bin/bash
# A room may include itself and the rooms below it, nothing else; the order is that of the house. What tests
# share may not come from the benchmarks, which are built on it.
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
! grep -rn '^#include "bench' tests || status=1
exit $status
