#!/bin/sh
# SPDX-License-Identifier: BSD-2-Clause
# check_exports.sh LIBRARY OBJDUMP: the library exports CreateObject and nothing else; a DLL imports
# from the system's own DLLs only.
set -eu
library=$1
objdump=$2
case $library in
  *.dll)
    names=$("$objdump" -p "$library" | awk '/\[Ordinal\/Name Pointer\] Table/ {on = 1; next}
                                            on && NF == 0 {exit} on {print $NF}')
    imports=$("$objdump" -p "$library" | sed -n 's/^.*DLL Name: //p' | tr 'A-Z' 'a-z' | sort -u)
    for dll in $imports; do
      case $dll in
        kernel32.dll | user32.dll | msvcrt.dll | advapi32.dll) ;;
        *) echo "imports from $dll" && exit 1 ;;
      esac
    done
    [ -n "$imports" ] || { echo "no imports were found"; exit 1; }
    ;;
  *)
    names=$(nm -D --defined-only "$library" | awk '{print $NF}')
    "$objdump" -p "$library" | grep -q 'SONAME *libZorSurface.so.[0-9]*$' ||
      { echo "no SONAME"; exit 1; }
    ;;
esac
[ "$names" = CreateObject ] || { echo "exports: $names"; exit 1; }
