#!/bin/sh
# SPDX-License-Identifier: BSD-2-Clause
# check_floors.sh ROOT: includes go downwards only, and the host sees the public headers alone.
set -eu
cd "$1"

# floor FILE: its number; siblings of one floor may include one another.
floor() {
  case $1 in
    include/*) echo 1 ;;
    platform/*) echo 2 ;;
    convert/* | scale/* | ipl/* | surface/fill.* | compositor/blend* | compositor/checked_bytes* | \
      compositor/key_colour* | compositor/swap_planes*) echo 3 ;;
    compositor/*) echo 4 ;;
    surface/*) echo 5 ;;
    object/*) echo 6 ;;
  esac
}

bad=0
looked=0
for file in $(git ls-files 'platform/*' 'convert/*' 'scale/*' 'ipl/*' 'compositor/*' 'surface/*' \
  'object/*' | grep -E '\.(h|cpp)$'); do
  own=$(floor "$file")
  for included in $(sed -n 's/^#include "\([^"]*\)".*/\1/p' "$file"); do
    looked=$((looked + 1))
    other=$(floor "$included")
    [ -n "$other" ] || { echo "$file includes $included, which is no floor's"; bad=1; continue; }
    [ "$other" -le "$own" ] && continue
    case $included in
      object/surface_builder.h) [ "$own" -ge 4 ] && continue ;;  # surfaces make surfaces
      object/ved_unknown.h) [ "$own" -eq 5 ] && continue ;;      # and are counted objects
      surface/surface_buffer.h) [ "$own" -eq 4 ] && continue ;;  # the walk is a surface's own slot
      surface/block_size.h | surface/row_copy.h) ;;
    esac
    echo "$file (floor $own) includes $included (floor $other)"
    bad=1
  done
done
for file in $(git ls-files 'host/*' | grep -E '\.(h|cpp)$'); do
  for included in $(sed -n 's/^#include "\([^"]*\)".*/\1/p' "$file"); do
    [ -f "host/$included" ] || { echo "$file includes $included"; bad=1; }
  done
done
[ $looked -ge 100 ] || { echo "only $looked includes were looked at"; exit 1; }
exit $bad
