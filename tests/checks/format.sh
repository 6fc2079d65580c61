#!/bin/bash
# Every C++ file stands as clang-format would write it.
find src tests bench demo -name '*.cpp' -o -name '*.h' | xargs clang-format --dry-run --Werror
