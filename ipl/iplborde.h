// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Blending of the pixels just outside of a warped picture's slanted edges.

#include <cstdint>

#include "ipl/iplalloc.h"

namespace zor {

/// Blends along the edges of a quadrilateral where it crosses between two pixels: the one just
/// outside takes a share of the one inside. Axis-parallel edges stay.
/// @param quad four vertices, x then y. @param orientation 1 if the vertices run clockwise on rows
///        that go down.
void iplSmoothEdges(IplImage* image, const double* quad, std::int32_t x0, std::int32_t y0,
                    std::int32_t x1, std::int32_t y1, std::int32_t orientation) noexcept;

/// Sets pixel A to A x @p weightA + B x @p weightB per channel, rounded to nearest, ties to even. A
/// pair of which either lies outside of the image is left out.
void iplBlendEdgePixel(IplImage* image, std::int32_t xa, std::int32_t ya, std::int32_t xb,
                       std::int32_t yb, std::int32_t firstChannel, std::int32_t lastChannel,
                       double weightA, double weightB) noexcept;

}  // namespace zor
