#!/bin/sh
# SPDX-License-Identifier: BSD-2-Clause
# check_readme.sh ROOT: the program in the README is the one that the suite builds and runs, its
# licence lines left out; files that the documents link to exist.
set -eu
cd "$1"
shown=$(sed -n '/^```cpp$/,/^```$/p' README.md | sed '1d;$d')
program=$(sed '1,/^$/d' examples/first_lines.cpp)
[ "$shown" = "$program" ] || { echo "the README shows another program than examples/"; exit 1; }

bad=0
for page in *.md $(find docs host -name '*.md'); do
  for link in $(grep -o '](\([^)#]*\)' "$page" | sed 's/^](//' | grep -v '^[a-z]*:' || true); do
    [ -e "$(dirname "$page")/$link" ] || { echo "$page links to $link, which isn't there"; bad=1; }
  done
done
exit $bad
