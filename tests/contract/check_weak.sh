#!/bin/sh
# SPDX-License-Identifier: BSD-2-Clause
# check_weak.sh OBJDUMP OBJECT...: objects compiled for wider instruction sets have no function that
# the linker may use for all: no weak symbol, no section of a single function.
set -eu
objdump=$1
shift
count=0
for object in "$@"; do
  case $object in *_avx2.cpp.* | *_avx512.cpp.*) ;; *) continue ;; esac
  count=$((count + 1))
  shared=$("$objdump" -t "$object" |
    awk '$2 == "w" && /\.text/ || /\.text[.$]_Z/ {print $NF}' | sort -u)
  [ -z "$shared" ] || { echo "$object shares $shared"; exit 1; }
done
[ $count -ge 10 ] || { echo "only $count objects were looked at"; exit 1; }
