// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Rectangles of guarded RGB pictures, scaled by the engine at every level and by the statement.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "scale/rgb_reference.h"
#include "scale/scale_cases.h"
#include "scale/scale_picture.h"

namespace zor::test {

struct RgbPair {
  int from;
  int to;
};
inline constexpr RgbPair kRgbPairs[] = {{3, 3}, {3, 4}, {4, 3}, {4, 4}};

/// A rectangle of a picture: pixels around it on every side.
struct Margins {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  int padding = 0;  ///< bytes behind each row

  static Margins Some(Noise& noise) {
    return {noise.Range(0, 2), noise.Range(0, 2), noise.Range(0, 2), noise.Range(0, 2),
            noise.Range(0, 5)};
  }
};

/// A rectangle of a picture whose memory ends at a page without access.
class RgbRectangle {
 public:
  RgbRectangle(int width, int height, int channels, const Margins& margins,
               GuardedMemory::Edge edge, std::uint64_t seed)
      : width(width),
        height(height),
        channels(channels),
        stride((margins.left + width + margins.right) * channels + margins.padding),
        start(std::int64_t{margins.top} * stride + margins.left * channels),
        memory_(static_cast<std::size_t>(stride) *
                    static_cast<std::size_t>(margins.top + height + margins.bottom),
                edge) {
    Noise(seed).Fill(memory_.data(), memory_.size());
  }

  RgbRef Ref(std::uint8_t* bytes) const {
    return {bytes,   static_cast<std::int64_t>(memory_.size()), start, width, height, stride,
            channels};
  }
  ScaleSource Source() {
    return {data() + start, width, height, stride, channels, data(), data() + memory_.size()};
  }
  /// @param turnedOver walks from the last row upward.
  ScaleTarget Target(bool turnedOver) {
    return {data() + start + (turnedOver ? std::int64_t{height - 1} * stride : 0),
            width,
            height,
            turnedOver ? -stride : stride,
            channels,
            data(),
            data() + memory_.size()};
  }
  std::uint8_t* data() { return memory_.data(); }
  std::vector<std::uint8_t> Copy() const { return memory_.Copy(); }
  bool GuardsIntact() const { return memory_.GuardsIntact(); }

  const int width;
  const int height;
  const int channels;
  const int stride;
  const std::int64_t start;

 private:
  GuardedMemory memory_;
};

inline RgbRefAxes WholeAxes(const RgbRectangle& target, const RgbRectangle& source) {
  return {0.0, static_cast<double>(source.width) / target.width, 0.0,
          static_cast<double>(source.height) / target.height};
}

/// What the statement makes of the target's memory.
inline std::vector<std::uint8_t> Stated(RgbRectangle& target, RgbRectangle& source,
                                        const RgbRefAxes& axes, ScaleMode mode, bool turnedOver,
                                        std::uint32_t background) {
  std::vector<std::uint8_t> bytes = target.Copy();
  RgbRef to = target.Ref(bytes.data());
  if (turnedOver) {
    to.start += (to.height - 1) * to.stride;
    to.stride = -to.stride;
  }
  RefScaleRgb(to, source.Ref(source.data()), axes, mode, background);
  return bytes;
}

/// Where two memories differ first.
inline std::string FirstDifference(const std::vector<std::uint8_t>& expected,
                                   const std::vector<std::uint8_t>& actual,
                                   const RgbRectangle& target) {
  for (std::size_t i = 0; i < expected.size(); ++i) {
    if (expected[i] == actual[i]) continue;
    const std::int64_t at = static_cast<std::int64_t>(i) - target.start;
    return "byte " + std::to_string(at) + " of the rectangle, stride " +
           std::to_string(target.stride) + ": " + std::to_string(expected[i]) + " stated, " +
           std::to_string(actual[i]) + " made";
  }
  return "nothing";
}

/// Draws at every level of the processor and compares all of the target's memory.
inline void ExpectStated(RgbRectangle& target, RgbRectangle& source, const RgbRefAxes& axes,
                         ScaleMode mode, bool turnedOver = false, std::uint32_t background = 0) {
  static const std::vector<VectorLevel> levels = LevelsAtHand();
  const std::vector<std::uint8_t> before = target.Copy();
  const std::vector<std::uint8_t> expected =
      Stated(target, source, axes, mode, turnedOver, background);
  for (const VectorLevel level : levels) {
    const PinnedVectorLevel pinned(level);
    std::copy(before.begin(), before.end(), target.data());
    ScalePicture(target.Target(turnedOver), source.Source(),
                 {axes.startX, axes.stepX, axes.startY, axes.stepY}, mode, &background);
    ASSERT_TRUE(expected == target.Copy())
        << source.channels << " to " << target.channels << ", " << source.width << "x"
        << source.height << " to " << target.width << "x" << target.height << ", starts "
        << axes.startX << ", " << axes.startY << ", mode " << mode << ", turned over " << turnedOver
        << ", level " << static_cast<int>(level) << ": "
        << FirstDifference(expected, target.Copy(), target);
    ASSERT_TRUE(target.GuardsIntact() && source.GuardsIntact());
  }
  std::copy(before.begin(), before.end(), target.data());
}

/// Exact area has a statement of its own.
inline bool IsExactArea(const RgbRectangle& target, const RgbRectangle& source, ScaleMode mode) {
  return mode == SCALE_AREA && target.channels == source.channels && target.width > 1 &&
         target.height > 1 && source.width > target.width && source.height > target.height;
}

}  // namespace zor::test
