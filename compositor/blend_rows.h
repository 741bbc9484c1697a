// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Rows of blends, in forms of equal bytes: the table by vector level. Rows don't overlap.

#include <cstddef>
#include <cstdint>

namespace zor {

struct BlendRows {
  /// target[i] = blend(child[i], target[i], mask[i]).
  void (*masked)(std::uint8_t* target, const std::uint8_t* child, const std::uint8_t* mask,
                 std::size_t count) noexcept;
  /// target[i] = blend(child[i], target[i], mask[2 x i]): chroma under a mask of luma's width.
  /// Reads 2 x count mask samples.
  void (*maskedByEvens)(std::uint8_t* target, const std::uint8_t* child, const std::uint8_t* mask,
                        std::size_t count) noexcept;
  /// target[i] = blend(child[i], target[i], mask[i / 2]): both bytes of a packed pixel; count
  /// pixels.
  void (*maskedByPairs)(std::uint8_t* target, const std::uint8_t* child, const std::uint8_t* mask,
                        std::size_t count) noexcept;
  /// target[i] = blend(child[i], target[i], weight).
  void (*constant)(std::uint8_t* target, const std::uint8_t* child, std::uint32_t weight,
                   std::size_t count) noexcept;
  /// The same, twice: the second time over the first result.
  void (*constantTwice)(std::uint8_t* target, const std::uint8_t* child, std::uint32_t weight,
                        std::size_t count) noexcept;
};

extern const BlendRows kBlendRowsPlain;
extern const BlendRows kBlendRowsSse2;
extern const BlendRows kBlendRowsAvx2;
extern const BlendRows kBlendRowsAvx512;

/// @return the rows that the processor, or a test's limit, allows.
const BlendRows& InnerBlendRows() noexcept;

}  // namespace zor
