// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Prefetching for walks by pairs of rows.
///
/// Two rows at a time are streams that break off where a row ends. The processor foresees no such
/// stream, so that every row out of memory would begin with a stall. Asked for in the order of its
/// addresses, the next pair is one unbroken stream.

#include <cstddef>
#include <cstdint>

#include "platform/compiler.h"

namespace zor {

/// From the first row of a pair to the first one that the next pair is the first to read or write.
inline constexpr int kRowsToNextPair = 2;
inline constexpr int kRowsToNextFilteredPair = 3;  ///< the filter reads the row behind its pair too

/// The addresses where the next pair of rows begins. They may lie outside of the picture: a
/// prefetch of what doesn't exist is none.
struct PairAhead {
  std::uintptr_t source;
  std::uintptr_t target;

  /// @return the lower address of the two rows that come @p rows rows after @p row
  static ZOR_ALWAYS_INLINE std::uintptr_t Of(const std::uint8_t* row, std::ptrdiff_t stride,
                                             int rows) noexcept {
    return reinterpret_cast<std::uintptr_t>(row) +
           static_cast<std::uintptr_t>(stride * (stride < 0 ? rows + 1 : rows));
  }
};

/// Which lines are asked for.
enum class LinesAhead {
  kEach,
  kEverySecond  ///< where arithmetic hides no prefetch; the processor fetches the others with them
};

/// Asks for the share of the next pair that belongs to a block.
/// @tparam kSourceBytes, kTargetBytes of one column in both rows
template <int kSourceBytes, int kTargetBytes, LinesAhead kLines = LinesAhead::kEach>
struct AskForPair {
  PairAhead ahead;

  /// @tparam kStream whether the target is written past the caches, so that it isn't asked for
  template <std::int32_t kColumns, bool kStream>
  ZOR_ALWAYS_INLINE void Block(std::int32_t x) const noexcept {
    Ask<kColumns * kSourceBytes>(ahead.source, x * kSourceBytes);
    if constexpr (!kStream) Ask<kColumns * kTargetBytes>(ahead.target, x * kTargetBytes);
  }

 private:
  /// The lines go into the second cache: the first one is full of the rows at work.
  template <int kBytes>
  static ZOR_ALWAYS_INLINE void Ask(std::uintptr_t rows, std::int32_t offset) noexcept {
    constexpr int kStep = kLines == LinesAhead::kEach ? 64 : 128;
    const std::uintptr_t from = rows + static_cast<std::uintptr_t>(offset);
#pragma GCC unroll 8
    for (int i = 0; i < kBytes; i += kStep) {
      __builtin_prefetch(reinterpret_cast<const void*>(from + static_cast<std::uintptr_t>(i)), 0,
                         1);
    }
  }
};

/// Rows one by one are unbroken streams without help.
struct AskForNothing {
  template <std::int32_t kColumns, bool kStream>
  ZOR_ALWAYS_INLINE void Block(std::int32_t) const noexcept {}
};

}  // namespace zor
