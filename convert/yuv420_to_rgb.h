// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// YUV 4:2:0 to RGB.
///
/// All forms but `ConvertYuv420ToRgb24Sse2` pass the picture through a vertical three-tap filter on
/// the way. Plain forms and tails work by table arithmetic, blocks of vector forms by 6-bit
/// arithmetic; the bytes differ a little, and neither is made to match the other. A picture whose
/// width isn't a multiple of the block shows a narrow band at its right edge.
///
/// At an odd width the last column isn't written and each next row pair starts one pixel further to
/// the left, in the target and in luma. An odd last row isn't written, but by
/// `ConvertYuv420ToRgb24Sse2`, which walks row by row. Two or three rows are one pair whose luma
/// and chroma stay as they are; below two the filtering forms write nothing.

#include <cstdint>

namespace zor {

/// @param target B, G, R in rising addresses, and 0 as the fourth byte of RGB32
/// @param targetStride, lumaStride, chromaStride bytes from row to row
/// @param height negative: its magnitude, with the target written from its last row upward
using Yuv420ToRgbKernel = void(std::uint8_t* target, std::int32_t targetStride,
                               const std::uint8_t* luma, const std::uint8_t* u,
                               const std::uint8_t* v, std::int32_t lumaStride,
                               std::int32_t chromaStride, std::int32_t width,
                               std::int32_t height) noexcept;

Yuv420ToRgbKernel ConvertYuv420ToRgb32Plain;
/// Blocks of 8 columns with truncating averages. Where the width has bit 3 set, all pairs of rows
/// but the first run 8 columns past it.
Yuv420ToRgbKernel ConvertYuv420ToRgb32Mmx;
/// Blocks of 16 columns; in the first and the last pair of rows their chroma is averaged with the
/// neighbouring row, where the tail takes a single row.
Yuv420ToRgbKernel ConvertYuv420ToRgb32Sse2;
Yuv420ToRgbKernel ConvertYuv420ToRgb24Plain;
/// Blocks of 16 columns of single rows, without the filter. The tail takes the first chroma sample
/// of the row for all its pixels and exchanges blue and red.
Yuv420ToRgbKernel ConvertYuv420ToRgb24Sse2;

}  // namespace zor
