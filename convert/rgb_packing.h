// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Packing between RGB pixels of three and of four bytes; no colour arithmetic.

#include <cstdint>

namespace zor {

/// The one shape of these kernels.
///
/// Strides are in bytes, width in pixels, height in rows; any size is converted whole. A negative
/// height reads the source from its last row upward; the target is always written top-down. Bytes
/// between the rows stay as they are. The operands don't overlap.
using RgbPackingKernel = void(std::uint8_t* target, std::int32_t targetStride,
                              const std::uint8_t* source, std::int32_t sourceStride,
                              std::int32_t width, std::int32_t height) noexcept;

/// Copies B, G and R of every pixel and writes 0 as the fourth byte.
RgbPackingKernel ConvertRgb24ToRgb32;
/// Copies B, G and R of every pixel; the fourth byte is dropped.
RgbPackingKernel ConvertRgb32ToRgb24;

}  // namespace zor
