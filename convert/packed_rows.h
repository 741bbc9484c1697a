// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The walk over the rows of two packed pictures, and the shape of their row functions.

#include <cstddef>
#include <cstdint>

#include "convert/row_pairs.h"
#include "convert/streaming.h"
#include "platform/compiler.h"

namespace zor {

/// Converts the first columns of a row.
/// @param columns an even number where pixels go in pairs
/// @param stream whether the target may be written past the caches; it starts at a whole line then
/// @return the columns converted
using PackedRow = std::int32_t(std::uint8_t* target, const std::uint8_t* source,
                               std::int32_t columns, bool stream) noexcept;

/// The operands of a kernel. `Source` is `const std::uint8_t` but where a form writes into its
/// source.
template <class Source = const std::uint8_t>
struct PackedPicture {
  std::uint8_t* target;
  std::int32_t targetStride;
  Source* source;
  std::int32_t sourceStride;
  std::int32_t width;
  std::int32_t height;  ///< negative: the source is walked from its last row upward

  /// @return whether a target of @p rowBytes a row is written past the caches.
  bool WritesPastCaches(std::int64_t rowBytes) const noexcept {
    return RowsArePastCaches(target, targetStride, rowBytes, height);
  }
};

/// Bytes by which each next row starts further left than its stride says.
struct RowDrift {
  std::ptrdiff_t target = 0;
  std::ptrdiff_t source = 0;
};

/// Calls `convert(target, source)` for every row.
template <class Source, class Convert>
ZOR_ALWAYS_INLINE void WalkPackedRows(const PackedPicture<Source>& picture, const RowDrift& drift,
                                      const Convert& convert) noexcept {
  const WalkedRows<Source> source(picture.source, picture.sourceStride, picture.height);
  const std::ptrdiff_t targetStep = picture.targetStride - drift.target;
  const std::ptrdiff_t sourceStep = source.stride - drift.source;
  for (std::ptrdiff_t y = 0; y < source.height; ++y) {
    convert(picture.target + y * targetStep, source.first + y * sourceStep);
  }
}

}  // namespace zor
