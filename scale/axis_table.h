// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The tables of one axis of a 3- or 4-byte picture: for every destination position where the
/// source is read and with which weight or count.

#include <zorsurface/scale_mode.h>

#include <cstdint>

namespace zor {

/// Marks a position at or beyond an edge; as a weight, 255 in every byte.
inline constexpr std::uint32_t kEdgeWeight = 0xFFFFFFFFu;

/// Positions before @p first start in front of the source, positions from @p last on reach its end.
struct AxisEdges {
  std::int32_t first;
  std::int32_t last;
};

/// Builds the table of one axis.
///
/// Interpolating modes store one byte weight, 0 to 255, in all four bytes of a word: the share of
/// the second sample. Box modes store the box's size in bits 0 to 15 and, with fade, the
/// background's share, 0 to 255, above them. Positions advance by repeated addition in double.
/// @param destLength, sourceLength positions. @param words, offsets one entry per position; offsets
///        in bytes. @param stride bytes from one source position to the next.
/// @param start, step in source positions. A mode above `SCALE_AREA` writes nothing.
AxisEdges BuildAxisTable(std::int32_t destLength, std::int32_t sourceLength, std::uint32_t* words,
                         std::int32_t* offsets, std::int32_t stride, double start, double step,
                         ScaleMode mode) noexcept;

}  // namespace zor
