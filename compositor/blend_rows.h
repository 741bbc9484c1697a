// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Rows of blends, in forms of equal bytes: the table by vector level. Rows don't overlap.

#include <cstddef>
#include <cstdint>

namespace zor {

/// The U and V rows that share a mask, or stand below one luma row.
struct ChromaRow {
  std::uint8_t* target[2];
  const std::uint8_t* child[2];
};

/// Rows of one plane.
struct BlendRun {
  std::uint8_t* target;
  const std::uint8_t* child;
  std::int64_t targetStride;
  std::int64_t childStride;
  std::int64_t rows;
  std::size_t count;  ///< samples of a row
};

/// A key whose three values are samples.
struct KeySamples {
  std::uint8_t y, u, v;
};

struct BlendRows {
  /// target[i] = blend(child[i], target[i], mask[i]).
  void (*masked)(std::uint8_t* target, const std::uint8_t* child, const std::uint8_t* mask,
                 std::size_t count) noexcept;
  /// target[i] = blend(child[i], target[i], mask[2 x i]), from @p grouped on mask[2 x i + 1]:
  /// chroma under a mask of luma's width, of which 2 x count samples are read.
  void (*maskedChroma)(const ChromaRow& row, const std::uint8_t* mask, std::size_t grouped,
                       std::size_t count) noexcept;
  /// target[i] = blend(child[i], target[i], mask[i / 2]): both bytes of a packed pixel; count
  /// pixels.
  void (*maskedByPairs)(std::uint8_t* target, const std::uint8_t* child, const std::uint8_t* mask,
                        std::size_t count) noexcept;
  /// target[i] = blend(child[i], target[i], weight), in every row.
  void (*constant)(const BlendRun& run, std::uint32_t weight) noexcept;
  /// The same, twice: the second time over the first result.
  void (*constantTwice)(const BlendRun& run, std::uint32_t weight) noexcept;
  /// The columns that a row of at least eight leaves over, at most seven, once more: luma if
  /// another row follows, and the chroma of each pair of them once, or twice if another row
  /// follows. Of an odd number the last column is none of a pair.
  /// @param target, child the last eight luma samples. @param chroma the last four each.
  void (*leftOver)(std::uint8_t* target, const std::uint8_t* child, const ChromaRow& chroma,
                   std::uint32_t weight, std::size_t columns, bool followed) noexcept;
  /// @return bit i: whether pixel i differs from the key. @param count 1 to 64 pixels, of which the
  ///         first is the first of its pair.
  std::uint64_t (*passing)(const std::uint8_t* y, const std::uint8_t* u, const std::uint8_t* v,
                           const KeySamples& key, std::size_t count) noexcept;
};

extern const BlendRows kBlendRowsPlain;
extern const BlendRows kBlendRowsSse2;
extern const BlendRows kBlendRowsAvx2;
extern const BlendRows kBlendRowsAvx512;

/// @return the rows that the processor, or a test's limit, allows.
const BlendRows& InnerBlendRows() noexcept;

}  // namespace zor
