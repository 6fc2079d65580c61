#!/bin/bash
# The program is killed at work, and the settings file that is left is the one before an action or the one
# after it: the short form of scripts/reliability. Arguments: the build folder.
exec scripts/on-wine "$1/tests/kill_program.exe" kill 120 8
