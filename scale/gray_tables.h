// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The axis tables of the one-byte scaler. They live in one block with a fixed layout.

#include <zorsurface/scale_mode.h>

#include <cstdint>

#include "platform/memory.h"

namespace zor {

/// Where an axis leaves the source: positions below `first` lie in front of it, positions from
/// `last` on at or behind its last sample.
struct GrayEdges {
  std::int32_t first;
  std::int32_t last;
};

/// Fills the tables across: a byte weight and the word of a pixel index for each column. Columns
/// are anchored at pixel centres in every mode.
/// @param offsets words of four bytes, at any alignment.
GrayEdges BuildGrayColumnTable(std::int32_t targetLength, std::int32_t sourceLength,
                               std::uint8_t* weights, std::uint8_t* offsets, double start,
                               double step, ScaleMode mode) noexcept;

/// Fills the tables down: a word with the byte weight four times, and the word of a byte offset for
/// each row. Interpolating modes anchor rows at the top edge, half a step above the columns' rule;
/// with `SCALE_ROW_PAIRS` the edges count pairs of rows, and an odd last row repeats the row
/// before.
GrayEdges BuildGrayRowTable(std::int32_t targetLength, std::int32_t sourceLength,
                            std::uint8_t* weights, std::uint8_t* offsets, std::int32_t sourceStride,
                            double start, double step, ScaleMode mode) noexcept;

/// The table block: width weight bytes, width offset words, height weight words, height offset
/// words and two bytes, in this order. The layout shows in the pictures: `OddWeight` reads across
/// the seam between weights and offsets.
class GrayTables {
 public:
  GrayTables(std::int32_t width, std::int32_t height) noexcept;
  explicit operator bool() const noexcept { return static_cast<bool>(block_); }

  std::uint8_t* ColumnWeights() noexcept { return block_.data(); }
  std::uint8_t* ColumnOffsets() noexcept { return block_.data() + width_; }
  std::uint8_t* RowWeights() noexcept { return block_.data() + 5 * width_; }
  std::uint8_t* RowOffsets() noexcept { return RowWeights() + 4 * height_; }

  std::int32_t ColumnWeight(std::int32_t column) noexcept { return ColumnWeights()[column]; }
  std::int32_t ColumnOffset(std::int32_t column) noexcept;
  std::int32_t RowWeight(std::int32_t row) noexcept;
  std::int32_t RowOffset(std::int32_t row) noexcept;

  /// The weight that a pixel takes which its run handles singly: the byte at four times its index,
  /// counted from the run's first weight. Beyond the weights that is a byte of an offset.
  std::int32_t OddWeight(std::int32_t runStart, std::int32_t index) noexcept {
    return block_.data()[runStart + 4 * std::int64_t{index}];
  }

 private:
  WorkArray<std::uint8_t> block_;
  std::int64_t width_;
  std::int64_t height_;
};

}  // namespace zor
