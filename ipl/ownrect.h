// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Regions, and polygons as row spans. Rectangles of the transform library are inclusive.

#include <cstdint>

#include "ipl/iplalloc.h"

namespace zor {

/// An inclusive rectangle.
struct IplRect {
  std::int32_t x0;
  std::int32_t y0;
  std::int32_t x1;
  std::int32_t y1;
};

/// Where the channels to process stand.
struct IplChannels {
  std::uint8_t* first;     ///< the region's first sample
  std::int32_t step;       ///< bytes from row to row
  std::int32_t plane;      ///< bytes from plane to plane
  std::int32_t processed;  ///< channels to process: all, or the one of interest
  std::int32_t channels;   ///< channels per pixel
  std::int32_t index;      ///< the first one to process
};

/// Gives the region's size. @return false if it is empty or, with @p clip, wholly outside.
bool iplGetRoiSize(const IplImage* image, std::int32_t* height, std::int32_t* width,
                   bool clip) noexcept;
/// Gives the region's rectangle, held to the image with @p clip. @return as `iplGetRoiSize`.
bool iplGetRoiRect(const IplImage* image, IplRect* rect, bool clip) noexcept;
/// @return false if the region is empty.
bool iplGetChannelInfo(const IplImage* image, IplChannels* out) noexcept;

struct IplVertex {
  double x;
  double y;
};

/// A quadrilateral clipped by four sides has at most eight vertices; one more place closes the ring
/// during a pass.
inline constexpr std::int32_t kMaxVertices = 9;

/// Clips a convex polygon to a rectangle. The result stands in @p polygon.
/// @param out a second buffer of `kMaxVertices`. @param count vertices, in and out.
void iplClipPolygon(IplVertex* polygon, IplVertex* out, std::int32_t* count, double x0, double y0,
                    double x1, double y1) noexcept;

/// Fills the spans of a convex polygon, from the row of its topmost vertex on.
/// @param orientation 1: the edge walked backwards through the vertices is the left one.
void iplScanPolygon(const IplVertex* polygon, std::int32_t count, std::int32_t orientation,
                    std::int32_t* spanStarts, std::int32_t* spanEnds) noexcept;

/// Turns the part of a quadrilateral inside of a rectangle into row spans, both ends inclusive.
/// @param quad four vertices, x then y. @param spanStarts, spanEnds receive arrays that the caller
///        frees with `iplFreeAligned`. @return 0 if no row is left.
std::int32_t iplClipQuadToSpans(const double* quad, std::int32_t x0, std::int32_t y0,
                                std::int32_t x1, std::int32_t y1, std::int32_t orientation,
                                std::int32_t** spanStarts, std::int32_t** spanEnds,
                                std::int32_t* firstRow, std::int32_t* lastRow) noexcept;

}  // namespace zor
