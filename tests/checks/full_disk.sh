#!/bin/bash
# On a disk that is full again and again every settings file is whole, and what was typed is in it once there
# is room. Arguments: the build folder.
VERBATIX_ON_DESKTOP=1 exec scripts/full-disk "$1" 100 3
