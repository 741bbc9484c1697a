// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Prefetching of the rows that come next.
///
/// The processor foresees a run of ascending addresses and nothing else: not two rows at a time,
/// which break off where they end, and not rows walked upward. Each of their rows out of memory
/// would begin with a stall. Asked for in the order of its addresses, the next pair of rows is one
/// run.

#include <cstddef>
#include <cstdint>

#include "platform/compiler.h"

namespace zor {

/// Asks for every line, or one in so many bytes. Nothing says that they exist: a prefetch of what
/// doesn't is none. The lines go into the second cache, as the first one is full of the rows at
/// work.
ZOR_ALWAYS_INLINE void AskForLines(std::uintptr_t from, std::int64_t bytes,
                                   int every = 64) noexcept {
  for (std::int64_t i = 0; i < bytes; i += every) {
    __builtin_prefetch(reinterpret_cast<const void*>(from + static_cast<std::uintptr_t>(i)), 0, 1);
  }
}

/// From the first row of a pair to the first one that the next pair is the first to read or write.
inline constexpr int kRowsToNextPair = 2;
inline constexpr int kRowsToNextFilteredPair = 3;  ///< the filter reads the row behind its pair too

/// The addresses where the next pair of rows begins. They may lie outside of the picture.
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
  kEach = 64,
  kEverySecond = 128  ///< where arithmetic hides no prefetch; the others come with them
};

/// Asks for the share of the next pair that belongs to a block.
/// @tparam kSourceBytes, kTargetBytes of one column in both rows
template <int kSourceBytes, int kTargetBytes, LinesAhead kLines = LinesAhead::kEach>
struct AskForPair {
  PairAhead ahead;

  /// @tparam kStream whether the target is written past the caches, so that it isn't asked for
  template <std::int32_t kColumns, bool kStream>
  ZOR_ALWAYS_INLINE void Block(std::int32_t x) const noexcept {
    constexpr int kEvery = static_cast<int>(kLines);
    AskForLines(ahead.source + static_cast<std::uintptr_t>(x * kSourceBytes),
                kColumns * kSourceBytes, kEvery);
    if constexpr (!kStream) {
      AskForLines(ahead.target + static_cast<std::uintptr_t>(x * kTargetBytes),
                  kColumns * kTargetBytes, kEvery);
    }
  }
};

/// Asks for the share of the row above that belongs to a block, in a picture walked upward.
/// @tparam kBytes of a column
template <int kBytes>
struct AskForRowAbove {
  const std::uint8_t* row;
  std::ptrdiff_t climb;  ///< to the row above, or 0 if none is to be asked for

  template <std::int32_t kColumns, bool kStream>
  ZOR_ALWAYS_INLINE void Block(std::int32_t x) const noexcept {
    if (climb == 0) return;
    AskForLines(
        reinterpret_cast<std::uintptr_t>(row) + static_cast<std::uintptr_t>(climb + x * kBytes),
        kColumns * kBytes);
  }
};

/// Rows one by one and downward are a run of addresses without help.
struct AskForNothing {
  template <std::int32_t kColumns, bool kStream>
  ZOR_ALWAYS_INLINE void Block(std::int32_t) const noexcept {}
};

}  // namespace zor
