// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// What the modes of a 3- or 4-byte picture share: the call's pictures, its tables and the runs
/// that its rows are cut into.

#include <cstdint>

#include "scale/axis_table.h"
#include "scale/rgb_shapes.h"
#include "scale/scale_picture.h"

namespace zor {

/// One axis' table and where its edges are.
struct RgbAxis {
  const std::uint32_t* words;
  const std::int32_t* offsets;
  AxisEdges edges;
};

/// A run of a row, from its first position on.
struct RgbRun {
  std::int32_t start;
  std::int32_t count;
};

/// One call.
struct RgbPicture {
  const ScaleTarget& target;
  const ScaleSource& source;
  const ScaleAxes& axes;
  ScaleMode mode;
  std::uint32_t background;
  ByteRange readable;  ///< the source's memory
  ByteRange writable;  ///< the target's memory
  RgbAxis across{};
  RgbAxis down{};

  std::uint8_t* TargetRow(std::int32_t y) const {
    return target.pixels + static_cast<std::int64_t>(y) * target.stride;
  }
  const std::uint8_t* SourceRow(std::int32_t y) const { return source.pixels + down.offsets[y]; }

  RgbRun Whole() const { return {0, target.width}; }
  RgbRun Left() const { return {0, across.edges.first}; }
  RgbRun Right() const { return {across.edges.last, target.width - across.edges.last}; }
  RgbRun Middle() const {
    const bool any = across.edges.first + (target.width - across.edges.last) < target.width;
    return {across.edges.first, any ? across.edges.last - across.edges.first : 0};
  }

  /// Writes one byte, if it lies in the target's memory.
  void Put(std::uint8_t* at, std::uint8_t value) const {
    if (at >= writable.begin && at < writable.end) *at = value;
  }
};

/// The interpolating modes and `SCALE_NEAREST`. Without memory nothing is drawn.
void InterpolateRgb(const RgbPicture& picture) noexcept;

/// `SCALE_BOX` and `SCALE_BOX_FADE`. Without memory nothing is drawn.
void BoxScaleRows(const RgbPicture& picture) noexcept;

/// The four routes: 3 or 4 bytes a pixel into 3 or 4. @param background the pixel word that fading
/// interpolation fades into.
void ScaleRgb(const ScaleTarget& target, const ScaleSource& source, const ScaleAxes& axes,
              ScaleMode mode, const std::uint32_t* background) noexcept;

}  // namespace zor
