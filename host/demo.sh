#!/bin/sh
# SPDX-License-Identifier: BSD-2-Clause
# Copyright (c) 2026, The ZorSurface authors
#
# The main job on real input: every frame of a phone clip is resized with its aspect kept, converted
# to RGB and read straight into host memory, through the shared library. Then a scene is composed of
# two clips and a drawing. Pictures and clips go to out/.
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
originals=samples/usr/share/forensics-samples/original-files
phone_clip=$originals/movie1/VID_20191220_170832.mp4

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

# The scene: the clip with another one inset, and a drawing by its alpha and by its key colour. What
# is drawn on and the inset become Y4M first, so that the DLL's host has the same frames to read.
base=samples/scene-base.y4m
inset=samples/scene-inset.y4m
rm -f "$out"/scene*
if [ "$clip" = "$phone_clip" ]; then
  every=8
  "$zorhost" resize "$clip" --size 1280x720 --mode planar-area --to yuv420 --quiet -o "$base"
  "$zorhost" resize "$originals/movie2/movie-hello.mp4" --frames 0-40 --size 480x270 \
    --mode planar-area --to yuv420 --quiet -o "$inset"
  drawing=$originals/pic2/d-debian
  set -- --child "file=$inset,x=784,y=16,to=40,fade-in=8,fade-out=6" \
    --child "file=$drawing.png,x=32,y=24,w=400,h=300,mask=alpha,from=4,to=36,fade-in=6,fade-out=6" \
    --child "file=$drawing.ppm,x=32,y=396,w=400,h=300,key=ffffff,from=12,fade-in=8"
else
  # Of the small clip alone: itself inset, and its first picture turned, and as its own mask.
  every=2
  "$zorhost" resize "$clip" --size 640x360 --mode bilinear --to yuv420 --quiet -o "$base"
  cp "$clip" "$inset"
  "$zorhost" convert "$clip" --frames 0 --to rgb32 --quiet -o "$out/scene-still.png"
  set -- --child "file=$inset,x=432,y=16,fade-in=4,to=7,fade-out=4" \
    --child "file=$out/scene-still.png,x=16,y=16,rotate=90,opacity=200,from=2,fade-in=2" \
    --child "file=$out/scene-still.png,x=432,y=236,mask=$out/scene-still.png,from=1"
fi
"$zorhost" compose --base "$base" "$@" --verify --write-scene "$out/scene.json" \
  --hash="$out/hashes-scene.txt" -o "$out/scene.y4m"
"$zorhost" convert "$out/scene.y4m" --to rgb32 --quiet -o "$out/scene-%02d.png" --write-every $every
"$zorhost" sheet "$out"/scene-[0-9]*.png -o "$out/scene-sheet.png" --cell 640x360 --columns 3
scene_clips=$out/scene.y4m
if "$zorhost" convert "$out/scene.y4m" --to yuv420 --quiet -o "$out/scene.mp4" 2>/dev/null; then
  scene_clips="$scene_clips $out/scene.mp4"
else
  say "demo: no compressed clip, this zorhost was built without FFmpeg"
fi

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
  wine "$win32/host/zorhost.exe" compose --project "$out/scene.json" \
    --hash="$out/hashes-wine-scene.txt" --progress none --quiet
  cmp "$out/hashes-scene.txt" "$out/hashes-wine-scene.txt" ||
    { say "demo: the DLL composed another scene"; exit 1; }
  say "demo: the DLL under Wine gave the same hashes for every frame"
fi

frames=$(wc -l <"$out/hashes-1280x720-rgb32.txt")
say "demo: $frames frames each, deferred and eager runs compared; hashes in $out/hashes-*.txt"
say "demo: pictures in $root/$out, all on one page: $root/$out/contact-sheet.png"
say "demo: the scene: $scene_clips, its pictures on $root/$out/scene-sheet.png"
