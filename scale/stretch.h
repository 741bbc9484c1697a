// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The three entries of the scaling engine, one per storage family.
///
/// Each scales a rectangle of one picture into a rectangle of another (null: the whole picture;
/// rectangles count memory rows). They return 0 if a pixel pointer is null, otherwise 1, also when
/// memory ran out and the target stayed as it was. With a target rectangle and the fit flag the
/// four bands around the rectangle are painted.

#include <zorsurface/scale_mode.h>
#include <zorsurface/types.h>

#include <cstdint>

namespace zor {

/// Scales pictures of 8, 24 or 32 bits per pixel. Rows are turned over if exactly one of the two
/// orientation words is 0. Bands are painted with colour 0.
std::uint32_t StretchRgb(std::uint8_t* target, std::uint32_t targetWidth, std::int32_t targetHeight,
                         const RECT* targetRect, std::int32_t targetStride, std::int32_t targetBits,
                         std::uint32_t targetOrientation, const std::uint8_t* source,
                         std::uint32_t sourceWidth, std::int32_t sourceHeight,
                         const RECT* sourceRect, std::int32_t sourceStride, std::int32_t sourceBits,
                         std::uint32_t sourceOrientation, std::int32_t fit,
                         ScaleMode mode) noexcept;

/// Scales planar 4:2:0 pictures. `SCALE_PLANAR_SHARPEN` sharpens the source's luma in place.
std::uint32_t StretchYuv420(std::uint8_t* source, std::uint32_t sourceWidth,
                            std::int32_t sourceHeight, std::int32_t sourceStride,
                            const RECT* sourceRect, std::uint8_t* target, std::uint32_t targetWidth,
                            std::int32_t targetHeight, std::int32_t targetStride,
                            const RECT* targetRect, std::int32_t fit, ScaleMode mode,
                            std::uint32_t bandColour) noexcept;

/// Scales packed 4:2:2 pictures; the mode is not used.
std::uint32_t StretchYuy2(const std::uint8_t* source, std::uint32_t sourceWidth,
                          std::int32_t sourceHeight, std::int32_t sourceStride,
                          const RECT* sourceRect, std::uint8_t* target, std::uint32_t targetWidth,
                          std::int32_t targetHeight, std::int32_t targetStride,
                          const RECT* targetRect, std::int32_t fit, ScaleMode mode,
                          std::uint32_t bandColour) noexcept;

}  // namespace zor
