// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

/// @file
/// Every route in every mode over many sizes, against the statement.

#include <gtest/gtest.h>

#include "scale/rgb_cases.h"

namespace zor::test {
namespace {

constexpr ScaleMode kModes[] = {0, 1, 2, 3, 4, 5, 6};

class RgbRoute : public testing::TestWithParam<RgbPair> {
 protected:
  /// All modes between two sizes, with margins and walks that change from case to case.
  void Draw(int sw, int sh, int dw, int dh, Noise& noise) {
    const RgbPair pair = GetParam();
    const unsigned n = noise.Next();
    const Margins none{};
    RgbRectangle source(sw, sh, pair.from, n % 4 == 0 ? none : Margins::Some(noise), EdgeOf(n), n);
    RgbRectangle target(dw, dh, pair.to, n % 3 == 0 ? none : Margins::Some(noise), EdgeOf(n >> 1),
                        n + 1);
    for (const ScaleMode mode : kModes) {
      if (IsExactArea(target, source, mode)) continue;
      const bool turnedOver = (n >> (5 + mode)) % 2 == 0;
      ExpectStated(target, source, WholeAxes(target, source), mode, turnedOver, noise.Next());
      if (HasFatalFailure()) return;
    }
  }
};

TEST_P(RgbRoute, WidthsAndHeightsUpToFortyMatchTheStatement) {
  Noise noise(11);
  for (int sw = 1; sw <= 40; ++sw) {
    for (int dw = 1; dw <= 40; ++dw) {
      Draw(sw, noise.Range(1, 40), dw, noise.Range(1, 12), noise);
      if (HasFatalFailure()) return;
    }
  }
  for (int sh = 1; sh <= 40; ++sh) {
    for (int dh = 1; dh <= 40; ++dh) {
      Draw(noise.Range(1, 12), sh, noise.Range(1, 10), dh, noise);
      if (HasFatalFailure()) return;
    }
  }
}

TEST_P(RgbRoute, EqualSizesAndEqualSidesMatchTheStatement) {
  Noise noise(12);
  for (int n = 1; n <= 40; n += 3) {
    Draw(n, n, n, n, noise);
    Draw(n, 9, n, 4, noise);
    Draw(n, 4, n, 9, noise);
    Draw(9, n, 20, n, noise);
    Draw(20, n, 9, n, noise);
    if (HasFatalFailure()) return;
  }
}

TEST_P(RgbRoute, WidthsAroundTheVectorsMatchTheStatement) {
  Noise noise(13);
  const int widths[] = {15, 16, 17, 31, 33, 47, 64, 65, 100, 127, 129, 200, 257};
  for (const int sw : widths) {
    for (const int dw : widths) {
      Draw(sw, noise.Range(2, 7), dw, noise.Range(2, 4), noise);
      if (HasFatalFailure()) return;
    }
  }
}

TEST_P(RgbRoute, WidePicturesMatchTheStatement) {
  Noise noise(14);
  const int shapes[][4] = {{640, 9, 427, 6},   {427, 6, 640, 9},   {320, 5, 640, 10},
                           {1920, 7, 1280, 4}, {1000, 3, 3000, 8}, {2048, 16, 512, 4},
                           {4000, 40, 121, 3}, {4000, 33, 250, 2}, {1600, 31, 100, 2},
                           {1599, 30, 101, 2}, {3, 4000, 2, 251},  {7, 2, 4000, 3}};
  for (const auto& s : shapes) {
    Draw(s[0], s[1], s[2], s[3], noise);
    if (HasFatalFailure()) return;
  }
}

TEST_P(RgbRoute, PicturesBeyondTheCachesMatchTheStatement) {
  // Just above the size from which rows are stored past the caches, on and off whole lines.
  const RgbPair pair = GetParam();
  const int height = 40;
  const int width = (8 << 20) / (height * pair.to) + 5;
  for (const bool turnedOver : {false, true}) {
    RgbRectangle source(width / 3, 7, pair.from, {}, GuardedMemory::Edge::kEnd, 21);
    RgbRectangle target(width, height, pair.to, {1, 0, 0, 1, turnedOver ? 2 : 0},
                        GuardedMemory::Edge::kStart, 22);
    const ScaleMode mode = turnedOver == (pair.to == 4) ? SCALE_NEAREST : SCALE_BILINEAR_FADE;
    ExpectStated(target, source, WholeAxes(target, source), mode, turnedOver, 0x40302010);
    if (HasFatalFailure()) return;
  }
}

TEST_P(RgbRoute, ReductionsBetweenTwoAndFortyMatchTheStatement) {
  Noise noise(15);
  for (int ratio = 8; ratio <= 160; ratio += 1 + ratio / 24) {  // in quarters
    const int dw = noise.Range(2, 9);
    const int dh = noise.Range(2, 4);
    Draw(dw * ratio / 4 + noise.Range(0, 2), dh * ratio / 4 + noise.Range(0, 2), dw, dh, noise);
    Draw(dw * ratio / 4 + 1, dh * noise.Range(2, 17), dw, dh, noise);
    if (HasFatalFailure()) return;
  }
}

TEST_P(RgbRoute, StartsAndStepsOfTheCallersChoiceMatchTheStatement) {
  Noise noise(16);
  const RgbPair pair = GetParam();
  for (int round = 0; round < 300; ++round) {
    const unsigned n = noise.Next();
    const int sw = noise.Range(2, 60), sh = noise.Range(2, 40);
    RgbRectangle source(sw, sh, pair.from, Margins::Some(noise), EdgeOf(n), n);
    RgbRectangle target(noise.Range(2, 40), noise.Range(2, 12), pair.to, Margins::Some(noise),
                        EdgeOf(n >> 1), n + 1);
    // Positions in front of the picture and behind it on both axes.
    RgbRefAxes axes = WholeAxes(target, source);
    const double wide = 1 + noise.Range(0, 8) / 7.0;
    axes.stepX *= wide;
    axes.stepY *= wide;
    axes.startX = -axes.stepX * noise.Range(0, 40) / 11.0;
    axes.startY = -axes.stepY * noise.Range(0, 20) / 11.0;
    for (const ScaleMode mode : kModes) {
      if (mode == SCALE_AREA && pair.from == pair.to) continue;
      ExpectStated(target, source, axes, mode, n % 5 == 0, noise.Next());
      if (HasFatalFailure()) return;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(All, RgbRoute, testing::ValuesIn(kRgbPairs),
                         [](const testing::TestParamInfo<RgbPair>& info) {
                           return "From" + std::to_string(info.param.from) + "To" +
                                  std::to_string(info.param.to);
                         });

}  // namespace
}  // namespace zor::test
