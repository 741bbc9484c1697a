// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Planar YUV 4:2:0 to packed YUY2: the kernels.
///
/// Rows go in pairs. Luma rows pass the filter of convert/row_triple.h, but for the first and the
/// last row, which stay; both rows of a pair hold the pair's chroma row, filtered alike, and in the
/// first and last pair averaged with the one neighbour. A picture of a single pair is taken
/// unfiltered. Plain and SSE2 give the same bytes; the blocks of the MMX form average by
/// truncation.

#include <cstdint>

namespace zor {

/// The one shape of these kernels.
///
/// Strides are in bytes, width in pixels, height in rows. A negative height writes the target from
/// its last row upward. An odd last row isn't written. Nor is an odd last column, but each next
/// pair of rows then starts one pixel further left in target and luma, while chroma stays in step.
using Yuv420ToYuy2Kernel = void(std::uint8_t* target, std::int32_t targetStride,
                                const std::uint8_t* luma, const std::uint8_t* u,
                                const std::uint8_t* v, std::int32_t lumaStride,
                                std::int32_t chromaStride, std::int32_t width,
                                std::int32_t height) noexcept;

Yuv420ToYuy2Kernel ConvertYuv420ToYuy2Plain;
Yuv420ToYuy2Kernel ConvertYuv420ToYuy2Mmx;
Yuv420ToYuy2Kernel ConvertYuv420ToYuy2Sse2;

}  // namespace zor
