// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The conversion wrappers: they find the planes, apply the orientation and choose the kernel form
/// by the capability word (bit 26 SSE2, else bit 23 MMX, else plain).
///
/// All take source, source stride, target, target stride (bytes; of luma in planar pictures),
/// width, height and capability word; those between RGB and YUV a bit depth, and all that have RGB
/// on a side an orientation argument at the end. They return 0 if either address is null, otherwise
/// 1; with a bit depth other than 24 or 32 they do nothing and return 1. A size that yields no
/// pixel does nothing.

#include <cstdint>

namespace zor {

/// Planar to RGB, bottom-up if @p orientation is not 0.
std::uint32_t ConvertYuv420ToRgb(const std::uint8_t* source, std::int32_t sourceStride,
                                 std::uint8_t* target, std::int32_t targetStride,
                                 std::int32_t width, std::int32_t height, std::uint32_t features,
                                 std::int32_t bitDepth, std::uint32_t orientation) noexcept;

/// RGB to planar, the source read bottom-up if @p orientation is 0.
std::uint32_t ConvertRgbToYuv420(const std::uint8_t* source, std::int32_t sourceStride,
                                 std::uint8_t* target, std::int32_t targetStride,
                                 std::int32_t width, std::int32_t height, std::uint32_t features,
                                 std::int32_t bitDepth, std::uint32_t orientation) noexcept;

/// Planar to YUY2; rows keep their order.
std::uint32_t ConvertYuv420ToYuy2(const std::uint8_t* source, std::int32_t sourceStride,
                                  std::uint8_t* target, std::int32_t targetStride,
                                  std::int32_t width, std::int32_t height,
                                  std::uint32_t features) noexcept;

/// YUY2 to planar; rows keep their order.
std::uint32_t ConvertYuy2ToYuv420(const std::uint8_t* source, std::int32_t sourceStride,
                                  std::uint8_t* target, std::int32_t targetStride,
                                  std::int32_t width, std::int32_t height,
                                  std::uint32_t features) noexcept;

/// 3-byte pixels to 4-byte ones, the source read bottom-up if @p orientation is 0. All forms are
/// one.
std::uint32_t PackRgb24ToRgb32(const std::uint8_t* source, std::int32_t sourceStride,
                               std::uint8_t* target, std::int32_t targetStride, std::int32_t width,
                               std::int32_t height, std::uint32_t features,
                               std::uint32_t orientation) noexcept;

/// 4-byte pixels to 3-byte ones, as `PackRgb24ToRgb32`.
std::uint32_t PackRgb32ToRgb24(const std::uint8_t* source, std::int32_t sourceStride,
                               std::uint8_t* target, std::int32_t targetStride, std::int32_t width,
                               std::int32_t height, std::uint32_t features,
                               std::uint32_t orientation) noexcept;

/// RGB to YUY2, the source read bottom-up if @p orientation is 0. The SSE2 forms write into the
/// source where the width is no multiple of 8, and want the guards of a pixel block around it.
std::uint32_t ConvertRgbToYuy2(std::uint8_t* source, std::int32_t sourceStride,
                               std::uint8_t* target, std::int32_t targetStride, std::int32_t width,
                               std::int32_t height, std::uint32_t features, std::int32_t bitDepth,
                               std::uint32_t orientation) noexcept;

/// YUY2 to RGB, the source read bottom-up if @p orientation is 0.
std::uint32_t ConvertYuy2ToRgb(const std::uint8_t* source, std::int32_t sourceStride,
                               std::uint8_t* target, std::int32_t targetStride, std::int32_t width,
                               std::int32_t height, std::uint32_t features, std::int32_t bitDepth,
                               std::uint32_t orientation) noexcept;

}  // namespace zor
