// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// A colour behind a turned picture.

#include "library.h"

namespace zorhost {

/// What a turn leaves uncovered: the corners, and the edge that a turn of a packed picture by a
/// right angle doesn't reach. Found by turning a white picture of the same shape, so that it holds
/// for every picture of that shape.
class Backdrop {
 public:
  /// @param degrees as the surface is told, @param colour 0xRRGGBB.
  Backdrop(const Library& library, Layout layout, int width, int height, int degrees,
           std::uint32_t colour);
  /// Puts the colour into what isn't covered in a surface that was turned alike.
  void Paint(IZorSurface& surface) const;

 private:
  std::vector<std::uint8_t> covered_;  ///< 255 where the picture is
  std::vector<std::uint8_t> colour_;   ///< a surface full of the colour, byte by byte
};

}  // namespace zorhost
