// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "frame_hash.h"

#include <cinttypes>
#include <cstdio>

namespace zorhost {

std::uint64_t HashPicture(const Picture& picture) {
  std::uint64_t hash = 0xCBF29CE484222325ull;
  for (int p = 0; p < picture.planeCount(); ++p) {
    const Plane& plane = picture.plane(p);
    for (int y = 0; y < plane.rows; ++y) {
      const std::uint8_t* row = picture.row(p, y);
      for (int x = 0; x < plane.rowBytes; ++x) hash = (hash ^ row[x]) * 0x100000001B3ull;
    }
  }
  return hash;
}

std::string HashText(std::uint64_t hash) {
  char text[17];
  std::snprintf(text, sizeof text, "%016" PRIx64, hash);
  return text;
}

}  // namespace zorhost
