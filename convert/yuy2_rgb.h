// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Packed YUY2 to packed RGB: the kernels.
///
/// Rows are independent and pass no filter; U and V of a pair of columns serve both pixels. The
/// plain forms and all tails use the table arithmetic of convert/table_colour.h, blocks of the MMX
/// forms (8 columns) and of the SSE2 forms (16 columns) the 6-bit vector arithmetic:
///
///     y = (Y - 16) x 74, u = U - 128, v = V - 128
///     blue  = (y + 129 u) >> 6
///     green = (y - (25 u + 52 v)) >> 6
///     red   = (y + 102 v) >> 6
///
/// in 16 bits with saturating sums, clamped to a byte.

#include <cstdint>

namespace zor {

/// The one shape of these kernels.
///
/// Strides are in bytes, width in pixels, height in rows. A negative height reads the source from
/// its last row upward; the target is always written top-down. An odd last column isn't converted,
/// and each next row then starts one pixel further left in source and target. The fourth byte of
/// RGB32 is written as 0.
using Yuy2ToRgbKernel = void(std::uint8_t* target, std::int32_t targetStride,
                             const std::uint8_t* source, std::int32_t sourceStride,
                             std::int32_t width, std::int32_t height) noexcept;

Yuy2ToRgbKernel ConvertYuy2ToRgb32Plain;
Yuy2ToRgbKernel ConvertYuy2ToRgb32Mmx;
Yuy2ToRgbKernel ConvertYuy2ToRgb32Sse2;
Yuy2ToRgbKernel ConvertYuy2ToRgb24Plain;
Yuy2ToRgbKernel ConvertYuy2ToRgb24Mmx;
Yuy2ToRgbKernel ConvertYuy2ToRgb24Sse2;

}  // namespace zor
