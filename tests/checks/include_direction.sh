#!/bin/bash
# Arrows of the house run one way: a room includes itself and the rooms below it, a folder inside a room
# itself and the folders below it, and no modules (a header and the source of its name) include each other in
# a circle. What tests share may not come from the benchmarks, which are built on it. Arguments: the build
# folder, which is not looked at, and another folder than src/ to look into.
set -eu
source=${2-src}

# Lowest first. What stands in a room beside its folders is above them.
floors=(base hotkeys clipboard store
    paste/text paste/steps paste/builtin paste menu
    ui/state ui/look ui/editor ui/views ui/entries ui/shell ui/window app)

# Every include of a module by another: FROM TO, each without its ending.
includes() {
    (cd "$source" && grep -rE '^#include "[a-z_]+/' --include='*.h' --include='*.cpp' .) |
        sed -E 's|^\./([^:]*)\.[a-z]+:#include "([^"]*)\.h".*|\1 \2|' | awk '$1 != $2' | sort -u
}

includes | awk -v floors="${floors[*]}" '
    function folder(module) { sub(/\/[^\/]*$/, "", module); return module }
    BEGIN { count = split(floors, list, " "); for (i = 1; i <= count; ++i) floor[list[i]] = i }
    {
        from = folder($1)
        to = folder($2)
        if (!(from in floor) || !(to in floor)) {
            print "no floor for " $1 " or " $2
            wrong = 1
        } else if (floor[from] < floor[to]) {
            print $1 " may not include " $2 ", which stands above it"
            wrong = 1
        }
    }
    END {
        # Nothing found would be nothing wrong.
        if (NR < 100) { print "only " NR " includes were read"; wrong = 1 }
        exit wrong
    }'
# It names the modules of a circle.
includes | tsort >/dev/null

! grep -rn '^#include "bench' tests
