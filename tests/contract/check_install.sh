#!/bin/sh
# SPDX-License-Identifier: BSD-2-Clause
# check_install.sh BUILD SOURCE CMAKE CXX EMULATOR [TOOLCHAIN]: what is installed can be moved and
# then serves an outside program, by CMake's package and by pkg-config.
set -eu
build=$1 source=$2 cmake=$3 cxx=$4 emulator=$5 toolchain=${6-}
work=$build/install-test
rm -rf "$work"
mkdir -p "$work"
"$cmake" --install "$build" --prefix "$work/first" >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
mv "$work/first" "$work/moved"
stage=$work/moved

"$cmake" -G Ninja -S "$source" -B "$work/consumer" ${toolchain:+-DCMAKE_TOOLCHAIN_FILE=$toolchain} \
  ${toolchain:+-DCMAKE_FIND_ROOT_PATH=$stage} -DCMAKE_PREFIX_PATH="$stage" >"$work/log" 2>&1 &&
  "$cmake" --build "$work/consumer" >>"$work/log" 2>&1 || { cat "$work/log"; exit 1; }

if [ -n "$toolchain" ]; then
  WINEPATH="Z:$stage/bin" "$emulator" "$work/consumer/consumer.exe"
else
  "$work/consumer/consumer"
fi

export PKG_CONFIG_LIBDIR=$(dirname "$(find "$stage" -name ZorSurface.pc)")
# A path of its own, so that nothing of this machine's packages is found.
flags=$(pkg-config --cflags --libs ZorSurface)
"$cxx" -std=c++20 "$source/main.cpp" $flags ${toolchain:+-static-libgcc -Wl,-Bstatic} \
  -o "$work/by-pkg-config" || { echo "pkg-config said: $flags"; exit 1; }
if [ -n "$toolchain" ]; then
  WINEPATH="Z:$stage/bin" "$emulator" "$work/by-pkg-config.exe"
else
  LD_LIBRARY_PATH=${PKG_CONFIG_LIBDIR%/pkgconfig} "$work/by-pkg-config"
fi
