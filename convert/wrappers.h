// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The conversion wrappers: they find the planes, apply the orientation and choose the kernel form
/// by the capability word (bit 26 SSE2, else bit 23 MMX, else plain).
///
/// All take source, source stride, target, target stride (bytes; of luma in planar pictures),
/// width, height and capability word; those for RGB a bit depth, and then an orientation argument.
/// They return 0 if either address is null, otherwise 1; with a bit depth other than 24 or 32 they
/// do nothing and return 1. A size that yields no pixel does nothing.

#include <cstdint>

namespace zor {

/// Planar to RGB, bottom-up if @p orientation is not 0.
std::uint32_t ConvertYuv420ToRgb(const std::uint8_t* source, std::int32_t sourceStride,
                                 std::uint8_t* target, std::int32_t targetStride,
                                 std::int32_t width, std::int32_t height, std::uint32_t features,
                                 std::int32_t bitDepth, std::uint32_t orientation) noexcept;

}  // namespace zor
