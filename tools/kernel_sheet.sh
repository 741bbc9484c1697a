#!/bin/sh
# SPDX-License-Identifier: BSD-2-Clause
# Copyright (c) 2026, The ZorSurface authors
#
# One frame of a clip through every entry of the kernel table, all results on one page. FFmpeg makes
# the sources and reads the results, so that a layout is understood by two programs.
#
#   tools/kernel_sheet.sh CLIP [ZORKERNELS [SHEET]]
#     ZORKERNELS: build/linux/tools/zorkernels by default; SHEET: out/kernel-sheet.png
# Names on the tiles are rows of docs/kernel-table.md; "s" marks the entry with the row filter. Rows
# 14 and 16 show the fourth bytes of their pixels. A file beside the sheet says how far each result is
# from the frame.
set -eu
clip=$1
zorkernels=${2-build/linux/tools/zorkernels}
sheet=${3-out/kernel-sheet.png}
seconds=0.7
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$(dirname "$sheet")"
size=$(ffprobe -v error -select_streams v -show_entries stream=width,height -of csv=p=0:s=x "$clip")
width=${size%x*}
height=${size#*x}

say() { ffmpeg -nostdin -loglevel error -y "$@"; }

# FFmpeg's name of a layout, and what makes up for the order of its chroma.
format() {
  case $1 in
    yvu420 | yuv420) echo yuv420p ;;
    memory | plane) echo gray ;;
    luma-chroma*) echo nv12 ;;
    yuy2) echo yuyv422 ;;
    yvyu) echo yvyu422 ;;
    uyvy | vyuy) echo uyvy422 ;;
    rgb32) echo bgr0 ;;
    rgb32-*) echo bgra ;;
    rgb24) echo bgr24 ;;
    *) echo "$1le" ;;
  esac
}
exchange() {
  case $1 in
    yuv420) echo format=yuv420p,shuffleplanes=0:2:1, ;;
    vyuy) echo format=yuv422p,shuffleplanes=0:2:1, ;;
  esac
}
show() {
  case $1 in
    rgb32-*) echo alphaextract, ;;
    luma-chroma16) echo "crop=$width:$height:0:0," ;;
  esac
}

say -ss $seconds -i "$clip" -frames:v 1 -pix_fmt yuv420p -f rawvideo "$work/frame"
reference="-f rawvideo -pix_fmt yuv420p -s $size -i $work/frame"
"$zorkernels" list | tail -n +2 >"$work/rows"
: >"$sheet.txt"
tile=0
while read -r row source target forms; do
  if [ ! -f "$work/$source" ]; then
    say $reference -vf "$(exchange "$source")format=$(format "$source")" -f rawvideo "$work/$source"
  fi
  for smooth in "" --smooth; do
    [ "$row$smooth" != 0--smooth ] || continue
    "$zorkernels" convert "$work/$source" "$work/result" --row "$row" $smooth --threshold 110 \
      --width "$width" --height "$height" >"$work/log"
    shape=$size
    if [ "$target" = luma-chroma16 ]; then
      rows=$(((height + 15) / 16 * 16))
      shape=${width}x$rows
      truncate -s $((width * rows * 3 / 2)) "$work/result"
    fi
    input="-f rawvideo -pix_fmt $(format "$target") -s $shape -i $work/result"
    name=$row${smooth:+s}
    text="drawtext=text='$name':fontcolor=white:fontsize=20:box=1:boxcolor=black@0.6:x=3:y=3"
    say $input -vf "$(exchange "$target")$(show "$target")format=rgb24,scale=160:90,$text" \
      "$work/$(printf tile-%03d.png $tile)"
    distance=$(ffmpeg -nostdin -loglevel info $input $reference -filter_complex \
      "[0]$(exchange "$target")$(show "$target")format=yuv420p[a];[a][1]psnr" -f null - 2>&1 |
      sed -n 's/.*PSNR y:\([^ ]*\) u:\([^ ]*\) v:\([^ ]*\) .*/y \1 u \2 v \3/p')
    printf '%-4s %-14s%-16s%s dB\n' "$name" "$source" "$target" "$distance" >>"$sheet.txt"
    tile=$((tile + 1))
  done
done <"$work/rows"
say -framerate 1 -i "$work/tile-%03d.png" -vf "tile=12x$(((tile + 11) / 12))" -frames:v 1 "$sheet"
echo "$tile results on $sheet, their distances in $sheet.txt"
