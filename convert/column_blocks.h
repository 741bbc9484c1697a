// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// How a wide row form covers the columns of a row.

#include <cstdint>

#include "convert/rows_ahead.h"
#include "platform/compiler.h"

namespace zor {

/// What a wide form does with the last columns.
enum class BlockCover {
  kWhole,   ///< whole blocks only; the rest has an arithmetic of its own
  kOverlap  ///< a last block that ends with the row goes over columns that are done already
};

/// Calls `block.Convert<kStream>(x)` for every block of `Block::kColumns` columns from x = 0.
/// @param columns columns to cover
/// @param stream whether whole blocks may be written past the caches; an overlapping one never is
/// @param ahead what is asked for along with every block
/// @return the columns covered; 0 if the row is shorter than a block
template <BlockCover kCover, class Block, class Ahead = AskForNothing>
ZOR_ALWAYS_INLINE std::int32_t ForEachBlock(std::int32_t columns, bool stream, const Block& block,
                                            const Ahead& ahead = {}) {
  constexpr std::int32_t kColumns = Block::kColumns;
  if (columns < kColumns) return 0;
  std::int32_t x = 0;
  if (stream) {
    for (; x <= columns - kColumns; x += kColumns) {
      ahead.template Block<kColumns, true>(x);
      block.template Convert<true>(x);
    }
  } else {
    for (; x <= columns - kColumns; x += kColumns) {
      ahead.template Block<kColumns, false>(x);
      block.template Convert<false>(x);
    }
  }
  if constexpr (kCover == BlockCover::kOverlap) {
    if (x < columns) block.template Convert<false>(columns - kColumns);
    return columns;
  }
  return x;
}

/// Covers both rows of a pair, with an overlapping last block.
/// @tparam Block `Block<kInner>{rows}` with `Convert` as above; inner pairs load shared rows once
/// @param rows the pair; `rows.inner` says whether it is neither the first nor the last
template <template <bool> class Block, class Pair>
ZOR_ALWAYS_INLINE std::int32_t ForEachBlockOfPair(const Pair& rows, std::int32_t columns,
                                                  bool stream) {
  constexpr BlockCover kCover = BlockCover::kOverlap;
  return rows.inner ? ForEachBlock<kCover>(columns, stream, Block<true>{rows}, rows.ahead)
                    : ForEachBlock<kCover>(columns, stream, Block<false>{rows}, rows.ahead);
}

}  // namespace zor
