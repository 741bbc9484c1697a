// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The walks over a tile's blocks and a row's blocks. Code in an unnamed namespace, compiled once
/// per form.

#include <cstdint>

#include "convert/rows_ahead.h"
#include "ipl/move_rows.h"
#include "platform/compiler.h"

namespace zor {
namespace {

/// The last block of a run lies back over its neighbour, so that it ends with the run.
ZOR_ALWAYS_INLINE std::int32_t BlockStart(std::int32_t at, std::int32_t block,
                                          std::int32_t count) noexcept {
  return at + block <= count ? at : count - block;
}

/// Asks for the share of the next band that belongs to the columns from @p x on. A band reads a
/// line here and a line there, which the processor doesn't foresee, and leaves time to ask for all
/// of the next one: of the source the neighbours of the present lines, of the target one run of
/// memory.
template <class Block>
ZOR_ALWAYS_INLINE void AskForNextBand(const TurnedTile& t, std::int32_t x) noexcept {
  const std::int64_t rowBytes = t.rows * Block::kPixel;
  auto column = reinterpret_cast<std::uintptr_t>(t.source) +
                static_cast<std::uintptr_t>(x * t.columnStep + rowBytes);
  for (std::int32_t k = 0; k < Block::kColumns; ++k) {
    AskForLines(column, rowBytes);
    column += static_cast<std::uintptr_t>(t.columnStep);
  }
  if (t.targetAhead != 0) {
    AskForLines(t.targetAhead + static_cast<std::uintptr_t>(x * rowBytes),
                Block::kColumns * rowBytes);
  }
}

/// Block::Turn(target, targetStep, source, columnStep) turns kColumns x kRows pixels.
template <class Block>
void TurnBlocks(const TurnedTile& t) noexcept {
  for (std::int32_t i = 0; i < t.columns; i += Block::kColumns) {
    const std::int32_t x = BlockStart(i, Block::kColumns, t.columns);
    const std::uint8_t* from = t.source + x * t.columnStep;
    std::uint8_t* to = t.target + std::int64_t{x} * Block::kPixel;
    AskForNextBand<Block>(t, x);
    for (std::int32_t j = 0; j < t.rows; j += Block::kRows) {
      const std::int32_t y = BlockStart(j, Block::kRows, t.rows);
      Block::Turn(to + y * t.targetStep, t.targetStep, from + std::int64_t{y} * Block::kPixel,
                  t.columnStep);
    }
  }
}

/// Block::Reverse(target, source) reverses kCount pixels. Rows shorter than that go one by one.
template <class Block>
void ReverseBlocks(std::uint8_t* target, const std::uint8_t* source, std::int32_t count) noexcept {
  constexpr std::int32_t kCount = Block::kCount;
  constexpr std::int64_t kPixel = Block::kPixel;
  if (count < kCount) {
    for (std::int32_t i = 0; i < count; ++i) {
      __builtin_memcpy(target + i * kPixel, source + (count - 1 - i) * kPixel, kPixel);
    }
    return;
  }
  const auto reverse = [=](std::int32_t x) {
    Block::Reverse(target + x * kPixel, source + (count - kCount - x) * kPixel);
  };
  reverse(0);
  // From here on whole lines are written, if blocks are lines.
  const auto toLine = static_cast<std::int32_t>(-reinterpret_cast<std::uintptr_t>(target) & 63);
  const bool lines = kCount * kPixel == 64 && toLine >= kPixel;
  for (std::int32_t i = lines ? toLine / static_cast<std::int32_t>(kPixel) : kCount; i < count;
       i += kCount) {
    reverse(BlockStart(i, kCount, count));
  }
}

template <class Block>
constexpr MoveKernels KernelsOf() noexcept {
  return {Block::kColumns, Block::kRows, TurnBlocks<Block>, ReverseBlocks<Block>};
}

}  // namespace
}  // namespace zor
