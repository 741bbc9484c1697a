// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Packed RGB to planar YUV 4:2:0: the kernels.
///
/// Every form gives the same bytes. Per group of 2 x 2 pixels: luma of each pixel, and U and V of
/// the sums of the four, by convert/forward_matrix.h.

#include <cstdint>

namespace zor {

/// The one shape of these kernels.
///
/// Strides are in bytes, width in pixels, height in rows. A negative height reads the source from
/// its last row upward; the planes are always written top-down. An odd last row is neither read nor
/// written. Nor is an odd last column, but each next pair of rows then starts one pixel further
/// left in source and luma, while chroma stays in step.
using RgbToYuv420Kernel = void(std::uint8_t* luma, std::uint8_t* u, std::uint8_t* v,
                               std::int32_t lumaStride, std::int32_t chromaStride,
                               const std::uint8_t* source, std::int32_t sourceStride,
                               std::int32_t width, std::int32_t height) noexcept;

RgbToYuv420Kernel ConvertRgb32ToYuv420Plain;
RgbToYuv420Kernel ConvertRgb32ToYuv420Mmx;
RgbToYuv420Kernel ConvertRgb32ToYuv420Sse2;
RgbToYuv420Kernel ConvertRgb24ToYuv420Plain;
RgbToYuv420Kernel ConvertRgb24ToYuv420Mmx;
RgbToYuv420Kernel ConvertRgb24ToYuv420Sse2;

}  // namespace zor
