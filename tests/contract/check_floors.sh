#!/bin/sh
# SPDX-License-Identifier: BSD-2-Clause
# check_floors.sh ROOT: includes go downwards only, and the host sees the public headers alone.
set -eu
cd "$1"

# floor FILE: its number; siblings of one floor may include one another.
floor() {
  case $1 in
    include/* | zorsurface/*) echo 1 ;;
    platform/*) echo 2 ;;
    convert/* | scale/* | ipl/* | surface/fill.* | compositor/blend* | compositor/checked_bytes* | \
      compositor/key_colour* | compositor/swap_planes*) echo 3 ;;
    compositor/*) echo 4 ;;
    surface/*) echo 5 ;;
    object/*) echo 6 ;;
  esac
}

# may_run_up FILE INCLUDED: the arrows that run up, through headers that include nothing above them.
may_run_up() {
  case "$1 $2" in
    "surface/"*" object/surface_builder.h") ;;           # surfaces make surfaces,
    "surface/surface.h object/ved_unknown.h") ;;         # and are counted objects;
    "compositor/compose.cpp object/surface_builder.h") ;;  # the walk over children is one of their
    "compositor/compose.cpp surface/surface_buffer.h") ;;  # slots, in a file of its own
    *) return 1 ;;
  esac
}

# included FILE: what it includes, in quotes or angle brackets.
included() { sed -n 's/^[ \t]*#[ \t]*include[ \t]*["<]\([^">]*\)[">].*/\1/p' "$1"; }

sources() { find "$@" -name '*.h' -o -name '*.hpp' -o -name '*.cpp'; }

bad=0
looked=0
for file in $(sources include platform convert scale ipl compositor surface object); do
  own=$(floor "$file")
  for other_file in $(included "$file"); do
    case $other_file in
      */*) other=$(floor "$other_file") ;;
      *) continue ;;  # the system's
    esac
    [ -n "$other" ] || case $other_file in
      sys/*) continue ;;
      *) echo "$file includes $other_file, which is on no floor" && bad=1 && continue ;;
    esac
    looked=$((looked + 1))
    [ "$other" -le "$own" ] || may_run_up "$file" "$other_file" ||
      { echo "$file (floor $own) includes $other_file (floor $other)"; bad=1; }
  done
done

# The host's own headers stand beside its sources; of the floors it may name the first.
for file in $(sources host examples); do
  for other_file in $(included "$file"); do
    looked=$((looked + 1))
    case $other_file in
      zorsurface/*) ;;
      *) [ ! -e "$other_file" ] && case $other_file in ../*) false ;; esac ||
        { echo "$file includes $other_file"; bad=1; } ;;
    esac
  done
done
[ $looked -ge 300 ] || { echo "only $looked includes were looked at"; exit 1; }
exit $bad
