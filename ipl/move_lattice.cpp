// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <cstring>

#include "ipl/warp_rows.h"

namespace zor {
namespace {

constexpr std::int32_t kTile = 32;  // pixels of a tile's side: both pictures' lines stay in L1

/// Rows whose source runs along a row, forwards or backwards.
template <int kPixel>
void MoveRows(const LatticeMove& m, std::int32_t x0, std::int32_t y0, std::int32_t x1,
              std::int32_t y1) {
  for (std::int32_t y = y0; y <= y1; ++y) {
    std::uint8_t* to = m.target + std::int64_t{y} * m.targetStep + std::int64_t{x0} * kPixel;
    std::int64_t from = m.origin + y * m.rowStep + x0 * m.columnStep;
    for (std::int32_t x = x0; x <= x1; ++x, to += kPixel, from += m.columnStep) {
      std::memcpy(to, m.source + from, kPixel);
    }
  }
}

template <int kPixel>
void MoveTiles(const LatticeMove& m, std::int32_t x0, std::int32_t y0, std::int32_t x1,
               std::int32_t y1) {
  for (std::int32_t y = y0; y <= y1; y += kTile) {
    const std::int32_t bottom = y + kTile - 1 < y1 ? y + kTile - 1 : y1;
    for (std::int32_t x = x0; x <= x1; x += kTile) {
      MoveRows<kPixel>(m, x, y, x + kTile - 1 < x1 ? x + kTile - 1 : x1, bottom);
    }
  }
}

template <int kPixel>
void Move(const LatticeMove& m, std::int32_t x0, std::int32_t y0, std::int32_t x1,
          std::int32_t y1) {
  if (m.columnStep == kPixel) {
    const auto bytes = static_cast<std::size_t>(x1 - x0 + 1) * kPixel;
    for (std::int32_t y = y0; y <= y1; ++y) {
      std::memcpy(m.target + std::int64_t{y} * m.targetStep + std::int64_t{x0} * kPixel,
                  m.source + (m.origin + y * m.rowStep + x0 * m.columnStep), bytes);
    }
  } else if (m.columnStep == -kPixel) {
    MoveRows<kPixel>(m, x0, y0, x1, y1);
  } else {
    MoveTiles<kPixel>(m, x0, y0, x1, y1);
  }
}

}  // namespace

void MoveLattice(const LatticeMove& m, std::int32_t x0, std::int32_t y0, std::int32_t x1,
                 std::int32_t y1) noexcept {
  switch (m.pixelBytes) {
    case 1:
      Move<1>(m, x0, y0, x1, y1);
      break;
    case 3:
      Move<3>(m, x0, y0, x1, y1);
      break;
    case 4:
      Move<4>(m, x0, y0, x1, y1);
      break;
    default:
      break;
  }
}

}  // namespace zor
