#!/bin/sh
# SPDX-License-Identifier: BSD-2-Clause
# check_unwind.sh OBJDUMP PROGRAM...: no function without bytes stands where another one begins.
# GCC makes one of a part that is never reached; an exception that passes through the other finds
# whichever record the sorting has put first, and may end the program.
# -fno-reorder-blocks-and-partition leaves such parts where they belong.
set -eu
objdump=$1
shift
for program in "$@"; do
  "$objdump" --dwarf=frames "$program" |
    sed -n 's/.* FDE cie=[0-9a-f]* pc=\([0-9a-f]*\)\.\.\([0-9a-f]*\).*/\1 \2/p' |
    awk -v program="$program" '
      { records[$1]++; if ($1 == $2) empty[$1] = 1 }
      END {
        if (NR < 100) { print program ": only " NR " functions were looked at"; exit 1 }
        for (start in empty) if (records[start] > 1) {
          print program ": a function without bytes at " start; bad = 1
        }
        exit bad
      }'
done
