// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Packed RGB to packed YUY2: the kernels. The forms differ, see convert/rgb_to_yuy2_statement.h.

#include <cstdint>

namespace zor {

/// The one shape of these kernels.
///
/// Strides are in bytes, width in pixels, height in rows. A negative height reads the source from
/// its last row upward; the target is always written top-down. An odd last column isn't converted,
/// and each next row then starts one pixel further left in source and target (in the SSE2 forms 4
/// bytes further left in the source, whatever the pixel).
///
/// The SSE2 forms write into their source where the width is no multiple of 8.
using RgbToYuy2Kernel = void(std::uint8_t* target, std::int32_t targetStride, std::uint8_t* source,
                             std::int32_t sourceStride, std::int32_t width,
                             std::int32_t height) noexcept;

RgbToYuy2Kernel ConvertRgb32ToYuy2Plain;
RgbToYuy2Kernel ConvertRgb32ToYuy2Sse2;
RgbToYuy2Kernel ConvertRgb24ToYuy2Plain;
/// Reads its pixels in groups of 8 with 8 bytes left out behind each, and so up to a third of a row
/// behind the row's end; the guard space of a pixel block covers that.
RgbToYuy2Kernel ConvertRgb24ToYuy2Sse2;

}  // namespace zor
