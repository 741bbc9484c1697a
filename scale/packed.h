// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The bilinear scaler of packed 4:2:2 pictures.

#include <cstdint>

namespace zor {

/// One packed picture: two bytes a pixel.
struct PackedTarget {
  std::uint8_t* pixels;
  std::int32_t width;
  std::int32_t height;
  std::int32_t stride;
};
struct PackedSource {
  const std::uint8_t* pixels;
  std::int32_t width;
  std::int32_t height;
  std::int32_t stride;
};

/// Interpolates both bytes of each pixel between the pixels next to it. Positions are anchored at
/// the top left corner. The second bytes of neighbours are U and V by turns, so any change of width
/// mixes the two. Positions are floats; the upper of the two rows' values is rounded to float, all
/// else is computed in double. A size of 0 or less does nothing; so does refused memory.
void ScaleYuy2(const PackedTarget& target, const PackedSource& source) noexcept;

}  // namespace zor
