// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

/// Every whole degree on a grid of sizes, in every form, against the nearest-neighbour warp written
/// out pixel by pixel.

#include <gtest/gtest.h>

#include "ipl/forms.h"
#include "ipl/iplwarp.h"
#include "ipl/warp_reference.h"
#include "support/guarded_memory.h"

namespace zor::test {
namespace {

/// The matrix of a turn that takes the middle of the source near a point of the target, off whole
/// shifts, so that right angles are warped too.
struct TurnAbout {
  double c[6];

  TurnAbout(int degrees, int width, int height, double x, double y) {
    const double r = degrees * 0.017453292519943295;
    double cosine = std::cos(r), sine = std::sin(r);
    if (degrees == 90 || degrees == 180 || degrees == 270) {
      cosine = degrees == 180 ? -1 : 0;
      sine = degrees == 90 ? 1 : degrees == 270 ? -1 : 0;
    }
    const double mx = (width - 1) / 2.0, my = (height - 1) / 2.0;
    const double values[] = {cosine, sine,   x - cosine * mx - sine * my,
                             -sine,  cosine, y + sine * mx - cosine * my};
    std::copy(values, values + 6, c);
  }
};

/// Turns noise over noise, in the engine and by the definition.
void ExpectTurned(int degrees, int width, int height, int channels, int targetWidth,
                  int targetHeight, std::uint64_t seed) {
  const PinnedForm::Choice& choice = PinnedForm::kAll[seed % 4];
  const PinnedForm form(choice);
  Noise noise(seed);
  Picture from(width, height, channels), to(targetWidth, targetHeight, channels);
  Picture expected(targetWidth, targetHeight, channels);
  noise.Fill(from.bytes.data(), from.bytes.size());
  noise.Fill(to.bytes.data(), to.bytes.size());
  expected.bytes = to.bytes;
  const double x = targetWidth / 2.0 + noise.Range(0, 99) / 101.0 + 0.003;
  const double y = targetHeight / 2.0 + noise.Range(0, 99) / 103.0 + 0.003;
  const TurnAbout turn(degrees, width, height, x, y);
  iplRotate(from.image, to.image, degrees, turn.c[2], turn.c[5], IPL_INTER_NN);
  ReferenceWarp(from, expected, turn.c);
  ASSERT_TRUE(expected.bytes == to.bytes) << choice.name << ": " << width << " x " << height
                                          << " by " << degrees << ", " << channels << " channels";
}

constexpr int kChannels[] = {1, 3, 4};

TEST(WarpDegrees, EveryWholeDegreeOnSizesOf2To64FollowsTheDefinition) {
  const int sizes[] = {2, 3, 4, 5, 7, 8, 13, 16, 17, 24, 31, 33, 48, 63, 64};
  std::uint64_t turn = 0;
  for (const int width : sizes) {
    for (const int height : sizes) {
      // Every second degree, the odd ones on every second shape.
      for (int degrees = (width + height) % 2; degrees < 360; degrees += 2) {
        const int side = static_cast<int>(std::hypot(width, height)) + 4;
        ExpectTurned(degrees, width, height, kChannels[turn % 3], side, side - 3, turn);
        if (HasFatalFailure()) return;
        ++turn;
      }
    }
  }
  EXPECT_GT(turn, 40000u);
}

TEST(WarpDegrees, SizesToAbove8000FollowTheDefinition) {
  const int sizes[][2] = {{8192, 2}, {2, 8192}, {8191, 40}, {40, 8191}, {4097, 130}, {700, 1200}};
  std::uint64_t turn = 0;
  for (const auto& size : sizes) {
    for (int degrees = static_cast<int>(turn % 5); degrees < 360; degrees += 5) {
      // A window over the middle.
      ExpectTurned(degrees, size[0], size[1], kChannels[turn % 3], 150, 120, turn);
      if (HasFatalFailure()) return;
      ++turn;
    }
  }
}

TEST(WarpDegrees, SteepTurnsOfLargePicturesGoByTilesToTheSamePixels) {
  std::uint64_t turn = 1;
  for (const int degrees : {46, 67, 89, 91, 134, 250, 271, 290}) {
    // A source of more than 16 MiB; several tiles both ways, whose last ones are parts.
    ExpectTurned(degrees, 2101, 2003, 4, 333, 201, turn);
    turn += 2;
    if (HasFatalFailure()) return;
  }
}

}  // namespace
}  // namespace zor::test
