// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The scalers written down pixel by pixel, without any of the engine's code. Sources are read
/// through a check: what lies outside of a picture counts as 0.

#include <zorsurface/scale_mode.h>

#include <cstdint>
#include <vector>

namespace zor::test {

/// A picture of rows, in memory that somebody else owns.
struct RefSource {
  const std::uint8_t* pixels;
  int width;
  int height;
  int stride;
  int channels;

  /// Byte @p offset of row @p y; offsets run on into the next row.
  int At(int y, int offset) const {
    const std::int64_t place = std::int64_t{y} * stride + offset;
    const std::int64_t end = std::int64_t{height - 1} * stride + std::int64_t{width} * channels;
    return place < 0 || place >= end ? 0 : pixels[place];
  }
};
struct RefTarget {
  std::uint8_t* pixels;
  int width;
  int height;
  int stride;
};

void RefGray8(const RefTarget& target, const RefSource& source, double startX, double stepX,
              double startY, double stepY, ScaleMode mode);

/// Never called at equal sizes.
void RefArea(const RefTarget& target, const RefSource& source);

void RefYuy2(const RefTarget& target, const RefSource& source);

std::vector<float> RefGaussian(float sigma);
std::vector<std::uint8_t> RefBlur(const std::vector<std::uint8_t>& plane, int width, int height,
                                  float sigma);
void RefSharpen(std::uint8_t* plane, int width, int height, int stride);

/// The core with one byte a pixel and no starts.
void RefScalePlane(const RefTarget& target, const RefSource& source, double stepX, double stepY,
                   ScaleMode mode);

/// The planar entry for pictures as a whole or in part. Bands are not painted.
/// @param sourceRect,targetRect left, top, right, bottom; null for the whole.
void RefYuv420(std::uint8_t* source, int sourceWidth, int sourceHeight, int sourceStride,
               const int* sourceRect, std::uint8_t* target, int targetWidth, int targetHeight,
               int targetStride, const int* targetRect, ScaleMode mode);

}  // namespace zor::test
