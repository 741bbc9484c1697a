// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The scaler of 3- and 4-byte pixels written down pixel by pixel and byte by byte, without any of
/// the engine's code: every load is four bytes, every store is made in the order of the walk, and
/// bytes outside of a picture's memory read as 0 and are not written.

#include <zorsurface/scale_mode.h>

#include <array>
#include <cstdint>
#include <vector>

namespace zor::test {

/// A picture inside of some memory. Places are counted from the memory's first byte.
struct RgbRef {
  std::uint8_t* memory;
  std::int64_t bytes;
  std::int64_t start;  ///< of the first pixel
  int width;
  int height;
  std::int64_t stride;
  int channels;

  int Read(std::int64_t place) const { return place < 0 || place >= bytes ? 0 : memory[place]; }
  void Write(std::int64_t place, int value) const {
    if (place >= 0 && place < bytes) memory[place] = static_cast<std::uint8_t>(value);
  }
};

struct RgbRefAxes {
  double startX, stepX, startY, stepY;
};

/// One axis: a word and a place per position.
struct RgbRefAxis {
  std::vector<std::uint32_t> words;
  std::vector<std::int64_t> places;
  int first;
  int last;
};

RgbRefAxis RefAxis(int targetLength, int sourceLength, std::int64_t stride, double start,
                   double step, ScaleMode mode);

/// What the core draws, background given. Exact area isn't written down here: mode 6 is for pairs
/// of two pixel sizes and for pictures that are not larger in both axes.
void RefScaleRgb(const RgbRef& target, const RgbRef& source, const RgbRefAxes& axes, ScaleMode mode,
                 std::uint32_t background);

}  // namespace zor::test
