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

/// What all rows of a picture have in common.
struct RowRoute {
  bool stream;  ///< the target may be written past the caches; each row starts at a whole line then
  std::ptrdiff_t climb;  ///< to the next row of the side that is walked upward; otherwise 0
};

/// Converts the first columns of a row.
/// @param columns an even number where pixels go in pairs
/// @return the columns converted
using PackedRow = std::int32_t(std::uint8_t* target, const std::uint8_t* source,
                               std::int32_t columns, const RowRoute& route) noexcept;

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

  /// @param rowBytes of the target
  /// @param steady whether all rows start where the strides say
  RowRoute Route(std::int64_t rowBytes, bool steady = true) const noexcept {
    return {steady && RowsArePastCaches(target, targetStride, rowBytes, height),
            height < 0 ? -std::ptrdiff_t{sourceStride} : 0};
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
