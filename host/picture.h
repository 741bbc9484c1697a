// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// A picture in the host's own memory.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "pixel_layout.h"

namespace zorhost {

/// One plane: where its first row in memory lies and how far it is to the next.
struct Plane {
  std::size_t offset = 0;
  int stride = 0;
  int rowBytes = 0;
  int rows = 0;
};

/// A picture of any layout and pitch. Planar pictures keep their planes one behind the other, the
/// chroma planes with half the pitch.
class Picture {
 public:
  Picture() = default;
  /// A picture of zeroed bytes. @param pitch bytes from row to row, 0 for no padding.
  /// @param spare extra bytes behind the picture.
  Picture(Layout layout, int width, int height, int pitch = 0, std::size_t spare = 0);

  Layout layout() const { return layout_; }
  int width() const { return width_; }
  int height() const { return height_; }
  int pitch() const { return planes_[0].stride; }
  std::uint8_t* data() { return bytes_.data(); }
  const std::uint8_t* data() const { return bytes_.data(); }
  std::size_t size() const { return bytes_.size(); }

  int planeCount() const { return Traits(layout_).planar ? 3 : 1; }
  const Plane& plane(int index) const { return planes_[index]; }
  /// Row @p y of a plane counted from the picture's top, whatever the order in memory.
  std::uint8_t* row(int plane, int y);
  const std::uint8_t* row(int plane, int y) const;

  /// Whether the first row in memory is the bottom one.
  bool bottomUp = false;
  /// Whether the fourth byte of `kRgb32` says how opaque a pixel is.
  bool hasAlpha = false;

  /// A packed copy of the left and upper part, in the row order asked for.
  Picture Cropped(int width, int height, bool asBottomUp = false) const;

 private:
  Layout layout_ = Layout::kGray8;
  int width_ = 0;
  int height_ = 0;
  Plane planes_[3];
  std::vector<std::uint8_t> bytes_;
};

/// Bytes of one row of the first plane without padding.
int RowBytes(Layout layout, int width);
/// The stride that the library gives new pictures of a layout.
int NaturalStride(Layout layout, int width);

}  // namespace zorhost
