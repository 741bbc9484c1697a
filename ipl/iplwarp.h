// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Rotation and affine warp of 8-bit pictures of 1, 3 or 4 channels, without regions, masks or
/// tiles. A report ends the process, so callers rule out beforehand what would be reported.

#include <cstdint>

#include "ipl/iplalloc.h"

namespace zor {

inline constexpr std::int32_t IPL_INTER_NN = 0;
inline constexpr std::int32_t IPL_INTER_LINEAR = 1;
inline constexpr std::int32_t IPL_INTER_CUBIC = 2;
/// May be combined with any interpolation: blends the slanted edges of the result.
inline constexpr std::int32_t WARP_EDGE_BLEND = 16;

/// Turns a picture by degrees into another one. By 90, 180 or 270 degrees with whole shifts pixels
/// are moved as they are; everything else is a warp. Pixels outside of the result stay.
void iplRotate(IplImage* srcImage, IplImage* dstImage, double angle, double xShift, double yShift,
               std::int32_t interpolate) noexcept;

/// Warps by x' = c0 x + c1 y + c2, y' = c3 x + c4 y + c5.
void iplWarpAffine(IplImage* srcImage, IplImage* dstImage, const double* coeffs,
                   std::int32_t interpolate) noexcept;

/// Gives the images of a picture's corners: left top, right top, right bottom, left bottom.
void iplGetAffineQuad(const IplImage* image, const double* coeffs, double* quad) noexcept;

/// Adds the shifts with which `iplRotate` turns about a centre.
void iplRotateCenterShift(double xCenter, double yCenter, double angle, double* xShift,
                          double* yShift) noexcept;

/// The worker of `iplWarpAffine`, which does nothing for tiled pictures. @param kind 0; the only
/// one.
void iplWarpCore(IplImage* srcImage, IplImage* dstImage, const double* quad, std::int32_t flags,
                 const char* functionName, std::int32_t kind, std::int32_t clipToImage) noexcept;

}  // namespace zor
