#!/bin/sh
# SPDX-License-Identifier: BSD-2-Clause
# Copyright (c) 2026, The ZorSurface authors
#
# The main job on real input: every frame of a phone clip is resized with its aspect kept, converted
# to RGB and read straight into host memory, through the shared library. Pictures go to out/.
#
#   host/demo.sh [BUILD]                 BUILD: where zorhost was built, build/linux by default
#   host/demo.sh --wine [BUILD [WIN32]]  the same through the DLL as well, and the hashes compared;
#                                        WIN32: build/win32 by default
set -eu

root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"

with_wine=no
if [ "${1-}" = --wine ]; then
  with_wine=yes
  shift
fi
build=${1-build/linux}
win32=${2-build/win32}
zorhost=$build/host/zorhost
out=out
sizes="1280x720 640x640"
formats="rgb32 rgb24"

say() { printf '%s\n' "$*" >&2; }

[ -x "$zorhost" ] || { say "demo: $zorhost isn't there; build it first (./zor demo does)"; exit 1; }

# The sample package is unpacked, not installed.
package=forensics-samples-files
sha256=8710c751be1a71a88e343540ea1a5cab1fd349c2bcdf07626a27cfe68689e7c4
phone_clip=samples/usr/share/forensics-samples/original-files/movie1/VID_20191220_170832.mp4

fetch() {
  command -v apt-get >/dev/null && command -v dpkg-deb >/dev/null || return 1
  mkdir -p samples/package
  say "demo: fetching $package (30 MB, unpacked into samples/, nothing is installed)"
  (cd samples/package && rm -f "$package"_*.deb && apt-get -q download "$package") \
      >samples/package/log 2>&1 || return 1
  deb=$(ls samples/package/"$package"_*.deb) || return 1
  if ! printf '%s  %s\n' "$sha256" "$deb" | sha256sum -c --status; then
    say "demo: $deb isn't the package that was looked at (its checksum differs)"
    rm -f "$deb"
    return 1
  fi
  dpkg-deb -x "$deb" samples && rm -f "$deb"
}

small_clip() {
  clip=samples/dog-192x108.y4m
  mkdir -p samples
  gzip -dc host/sample/dog-192x108.y4m.gz >"$clip"
}

clip=$phone_clip
if [ ! -f "$clip" ] && ! fetch; then
  say "demo: the package registry can't be reached; the small clip of host/sample is taken"
  small_clip
elif ! "$zorhost" info "$clip" >/dev/null 2>&1; then
  say "demo: this zorhost was built without FFmpeg; the small clip of host/sample is taken"
  small_clip
fi

# One number of the last run's summary.
field() { printf '%s' "$summary" | sed "s/.*\"$1\":\([0-9.]*\).*/\1/"; }

mkdir -p "$out"
rm -f "$out"/dog-*.png "$out"/hashes-*.txt
"$zorhost" info "$clip"
for size in $sizes; do
  for format in $formats; do
    summary=$("$zorhost" resize "$clip" --size "$size" --fit contain --to "$format" --verify \
      --hash="$out/hashes-$size-$format.txt" --quiet --json \
      -o "$out/dog-$size-$format-%02d.png" --write-every 8)
    printf 'demo: %3d frames to %-8s %s: %5.2f ms per frame to take in, %5.2f ms to scale, convert and read\n' \
      "$(field frames)" "$size" "$format" "$(field msHandInPerFrame)" "$(field msProcessPerFrame)" >&2
  done
done
# One row for each run, its pictures from left to right in time.
"$zorhost" sheet "$out"/dog-*.png -o "$out/contact-sheet.png" --cell 214x214 \
  --columns "$(ls "$out"/dog-1280x720-rgb24-*.png | wc -l)"

if [ $with_wine = yes ]; then
  export WINEPREFIX="${WINEPREFIX-$root/$win32/wine}" WINEARCH=win32 WINEDEBUG=-all DISPLAY=
  export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d;winedbg.exe=d"
  [ -f "$win32/host/zorhost.exe" ] || { say "demo: $win32/host/zorhost.exe isn't there"; exit 1; }
  for size in $sizes; do
    for format in $formats; do
      "$zorhost" convert "$clip" --to yuv420 -o - --quiet --progress none |
        wine "$win32/host/zorhost.exe" resize - --size "$size" --fit contain --to "$format" \
          --hash="$out/hashes-wine-$size-$format.txt" --progress none
      cmp "$out/hashes-$size-$format.txt" "$out/hashes-wine-$size-$format.txt" ||
        { say "demo: the DLL gave other pictures at $size $format"; exit 1; }
    done
  done
  say "demo: the DLL under Wine gave the same hashes for every frame"
fi

frames=$(wc -l <"$out/hashes-1280x720-rgb32.txt")
say "demo: $frames frames each, deferred and eager runs compared; hashes in $out/hashes-*.txt"
say "demo: pictures in $root/$out, all on one page: $root/$out/contact-sheet.png"
