#!/bin/sh
# SPDX-License-Identifier: BSD-2-Clause
# check_subproject.sh BUILD SOURCE ROOT CMAKE: the library as a part of a larger project, which gets
# the library alone: no tests, no host, no rules for installation of ours.
set -eu
work=$1/subproject-test source=$2 root=$3 cmake=$4
mkdir -p "$work"
rm -f "$work/CMakeCache.txt"  # the defaults are what is looked at
"$cmake" -G Ninja -S "$source" -B "$work" -DZOR_SOURCE="$root" -DCMAKE_BUILD_TYPE=Debug \
  >"$work/log" 2>&1 && "$cmake" --build "$work" >>"$work/log" 2>&1 ||
  { tail -n 40 "$work/log"; exit 1; }
"$work/consumer"
! "$cmake" --build "$work" --target help | grep -E 'zorhost|_test:|gtest' ||
  { echo "more than the library is built"; exit 1; }
! grep -q 'file(INSTALL' "$work/ZorSurface/cmake_install.cmake" ||
  { echo "the library would install itself"; exit 1; }
