#!/usr/bin/env bash
# Prints, as a table, what saves, settings and the journal leave behind when each of their system calls fails in turn, with every
# error number, or is the last one of the process: print_table.sh BIN-FOLDER   Run by an ordinary user.
set -euo pipefail
export VESMO_LONG_TESTS=1 QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8
printf '| what | call | error | outcome |\n|---|---|---|---|\n'
"$1/fault_tests" 2>/dev/null | grep '^| '
