// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The core of the scaling engine: one picture of 1, 3 or 4 bytes a pixel into another.

#include <zorsurface/scale_mode.h>

#include <cstdint>

namespace zor {

/// One picture as the engine sees it: the first pixel to touch and how to walk on from there.
struct ScaleTarget {
  std::uint8_t* pixels;
  std::int32_t width;
  std::int32_t height;
  std::int32_t stride;  ///< bytes; negative for a walk from the last row upward
  std::int32_t bytesPerPixel;
  /// The memory that the whole picture has, from its first byte to the one behind its last; null
  /// for just the rows above. What 3-byte pixels spill behind a row is written inside of it.
  std::uint8_t* memory = nullptr;
  std::uint8_t* memoryEnd = nullptr;
};

struct ScaleSource {
  const std::uint8_t* pixels;
  std::int32_t width;
  std::int32_t height;
  std::int32_t stride;  ///< bytes
  std::int32_t bytesPerPixel;
  /// As the target's; 3-byte pixels are read four bytes wide inside of it.
  const std::uint8_t* memory = nullptr;
  const std::uint8_t* memoryEnd = nullptr;
};

/// Where sampling begins and how far it moves per destination pixel, in source pixels.
struct ScaleAxes {
  double startX;
  double stepX;
  double startY;
  double stepY;
};

/// Scales by the route of the two pixel sizes and by the mode. An unknown pair or a size of 0
/// leaves the target as it was, and so does a mode beyond `SCALE_AREA` on pixels of 3 and 4 bytes;
/// one-byte planes take such a mode as bilinear. If either step is below 2 a box mode becomes
/// bilinear, and a picture of one row or column is always sampled by the nearest pixel.
/// @param background the pixel word that fading modes fade into; null means 0.
void ScalePicture(const ScaleTarget& target, const ScaleSource& source, const ScaleAxes& axes,
                  ScaleMode mode, const std::uint32_t* background) noexcept;

}  // namespace zor
