// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// One row of box averages with boxes of at most 16 x 16 pixels, in forms of equal bytes.

#include <cstdint>

#include "convert/feature_word.h"
#include "scale/box_reduction.h"
#include "scale/rgb_shapes.h"

namespace zor {

/// The boxes across a picture's rows.
struct BoxRun {
  const std::uint32_t* counts;  ///< pixels across each box, 0 to 16
  const std::int32_t* offsets;  ///< bytes of each box's first pixel in a row; a box of no pixels
                                ///< takes none, so those behind it read one place earlier
  std::int32_t count;           ///< boxes
  std::int32_t pixelBytes;      ///< of the source: 3 or 4
  std::int64_t first;           ///< bytes of a row that the boxes read, from here
  std::int64_t end;             ///< to here; the last pixel is read four bytes wide
  std::uint32_t alike;       ///< pixels across every box if they are alike and side by side, or 0
  std::int32_t inTurn;       ///< leading boxes that have `least` pixels across or one more
  std::uint32_t least;       ///< at least 1 if any box is in turn
  const std::uint8_t* plan;  ///< of the form that works on the run, or null
};

/// @return the run with what follows from its boxes, and no plan.
BoxRun DescribeBoxes(const std::uint32_t* counts, const std::int32_t* offsets, std::int32_t count,
                     std::int32_t pixelBytes) noexcept;

/// One destination row of boxes.
struct BoxRow {
  const std::uint8_t* source;  ///< the box row's first source row
  std::int64_t sourceStride;
  std::int32_t rows;               ///< of every box, 1 to 16
  ByteRange memory;                ///< what may be read of the source; beyond it counts as 0
  const BoxReduction* reductions;  ///< by the pixels across, for this number of rows
};

/// Scratch of a row, from one allocation: sums of columns, then sums of boxes, in 16-bit lanes.
struct BoxScratch {
  std::uint16_t* columns;  ///< of the source row, and `kBoxSlack` more
  std::uint16_t* boxes;    ///< four per box, and `kBoxSlack` more
};

/// Room behind each scratch row, so that whole vectors may be used there.
inline constexpr std::int64_t kBoxSlack = 64;

/// The kernels of one instruction set.
struct BoxRowForm {
  /// @return bytes of a plan for these boxes; 0 if the form works on them without one.
  std::uint64_t (*planBytes)(const BoxRun& run) noexcept;
  /// Makes the plan once per picture. @param plan aligned to 64.
  void (*plan)(const BoxRun& run, std::uint8_t* plan) noexcept;
  /// Writes 4 bytes per box: the four lanes of the average, each held to 255. Of a 3-byte source
  /// the fourth lane averages the first bytes of the pixels behind.
  void (*row)(std::uint8_t* out, const BoxRow& row, const BoxRun& run,
              const BoxScratch& scratch) noexcept;
  /// Sums down the rows of boxes, of which there may be `kMostSummedRows` here: sums[k] of the byte
  /// run.first + k, up to run.end. @param sums room for `kBoxSlack` more.
  void (*columns)(std::uint16_t* sums, const BoxRow& row, const BoxRun& run) noexcept;
};

/// As many bytes of 255 fit the 16 bits of a column's sum.
inline constexpr std::int32_t kMostSummedRows = 257;

extern const BoxRowForm kBoxRowsSse2;
extern const BoxRowForm kBoxRowsAvx2;
extern const BoxRowForm kBoxRowsAvx512;

/// The forms by vector level.
inline constexpr const BoxRowForm* kBoxRowForms[] = {&kBoxRowsSse2, &kBoxRowsAvx2, &kBoxRowsAvx512};

}  // namespace zor
