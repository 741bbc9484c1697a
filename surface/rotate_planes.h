// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Rotation of packed and planar pictures by whole degrees, on headers wrapped around their memory.

#include <cstdint>

namespace zor {

/// Pi as the rotations take it.
inline constexpr double kRotationPi = 3.14159;

/// Turns one packed picture of 8, 24 or 32 bits. Pixels that the result doesn't cover stay, and all
/// stay where a picture is too small to be turned.
/// @return 0 for a null pointer, otherwise 1.
std::uint32_t RotatePlaneRgb(std::uint8_t* target, std::int32_t targetWidth,
                             std::int32_t targetHeight, std::int32_t targetStride,
                             std::int32_t targetBits, std::uint8_t* source, std::int32_t width,
                             std::int32_t height, std::int32_t stride, std::int32_t bits,
                             std::int32_t degrees) noexcept;

/// Turns the three planes of a planar picture; by 90, 180 and 270 degrees every sample is moved as
/// it is. Otherwise as `RotatePlaneRgb`.
std::uint32_t RotatePlanesYuv420(std::uint8_t* target, std::int32_t targetWidth,
                                 std::int32_t targetHeight, std::int32_t targetStride,
                                 std::uint8_t* source, std::int32_t width, std::int32_t height,
                                 std::int32_t stride, std::int32_t degrees) noexcept;

}  // namespace zor
