// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The scaler of planar 4:2:0 pictures: three planes of one byte a pixel.

#include <zorsurface/scale_mode.h>

#include <cstdint>

namespace zor {

/// A plane from the first byte to work on, and the bytes it holds from there on.
struct Plane {
  std::uint8_t* pixels;
  std::int64_t bytes;
};

/// The part of a planar picture that takes part in a scaling. Chroma planes have half the luma's
/// width, height and stride, each rounded toward zero.
struct PlanarPicture {
  Plane luma;
  Plane first;   ///< the chroma plane behind luma
  Plane second;  ///< the chroma plane behind that
  std::int32_t width;
  std::int32_t height;
  std::int32_t stride;  ///< bytes of a luma row
};

/// Scales the planes. The three planar modes have rules of their own; `SCALE_PLANAR_SHARPEN`
/// changes the luma of @p source. A size of 0 or less does nothing.
void ScaleYuv420(const PlanarPicture& target, const PlanarPicture& source, ScaleMode mode) noexcept;

}  // namespace zor
