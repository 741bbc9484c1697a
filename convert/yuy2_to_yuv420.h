// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Packed YUY2 to planar YUV 4:2:0: the kernels.
///
/// First every row of the source passes the filter of convert/row_triple.h, each byte position with
/// its like, but for the first and the last row, which stay. Then luma is taken as it is, and the
/// two chroma rows of a pair are averaged. A picture of a single pair is averaged unfiltered. Plain
/// and SSE2 give the same bytes; the blocks of the MMX form average by truncation.

#include <cstdint>

namespace zor {

/// The one shape of these kernels.
///
/// Strides are in bytes, width in pixels, height in rows. A negative height reads the source from
/// its last row upward. An odd last row is neither read nor written. Nor is an odd last column, but
/// each next pair of rows then starts one pixel further left in source and luma, while chroma stays
/// in step.
using Yuy2ToYuv420Kernel = void(std::uint8_t* luma, std::uint8_t* u, std::uint8_t* v,
                                std::int32_t lumaStride, std::int32_t chromaStride,
                                const std::uint8_t* source, std::int32_t sourceStride,
                                std::int32_t width, std::int32_t height) noexcept;

Yuy2ToYuv420Kernel ConvertYuy2ToYuv420Plain;
Yuy2ToYuv420Kernel ConvertYuy2ToYuv420Mmx;
Yuy2ToYuv420Kernel ConvertYuy2ToYuv420Sse2;

}  // namespace zor
