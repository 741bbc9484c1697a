// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <cstring>

#include "ipl/move_rows.h"

namespace zor {
namespace {

template <int kPixel>
void Turn(const TurnedTile& t) noexcept {
  for (std::int32_t y = 0; y < t.rows; ++y) {
    std::uint8_t* to = t.target + y * t.targetStep;
    const std::uint8_t* from = t.source + std::int64_t{y} * kPixel;
    for (std::int32_t x = 0; x < t.columns; ++x) {
      std::memcpy(to + std::int64_t{x} * kPixel, from + x * t.columnStep, kPixel);
    }
  }
}

template <int kPixel>
void Reverse(std::uint8_t* target, const std::uint8_t* source, std::int32_t count) noexcept {
  for (std::int32_t i = 0; i < count; ++i) {
    std::memcpy(target + std::int64_t{i} * kPixel, source + std::int64_t{count - 1 - i} * kPixel,
                kPixel);
  }
}

}  // namespace

void TurnPlain3(const TurnedTile& tile) noexcept {
  Turn<3>(tile);
}

void ReversePlain3(std::uint8_t* target, const std::uint8_t* source, std::int32_t count) noexcept {
  Reverse<3>(target, source, count);
}

const MoveForm kMovesPlain = {"plain",
                              {1, 1, Turn<1>, Reverse<1>},
                              {1, 1, TurnPlain3, ReversePlain3},
                              {1, 1, Turn<4>, Reverse<4>}};

}  // namespace zor
