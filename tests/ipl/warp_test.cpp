// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "warp_fixture.h"

namespace zor::test {
namespace {

TEST_F(Warp, NothingOutsideOfEitherPictureIsTouched) {
  using Edge = GuardedMemory::Edge;
  Noise noise(3);
  for (const Edge edge : {Edge::kStart, Edge::kEnd}) {
    for (const int channels : {1, 3, 4}) {
      for (int degrees = 0; degrees < 360; degrees += 1) {
        const int w = 5 + degrees % 13, h = 4 + degrees % 7;
        const auto step = static_cast<std::size_t>(w * channels);
        GuardedMemory from(step * static_cast<std::size_t>(h), edge);
        GuardedMemory to(30 * static_cast<std::size_t>(channels) * 30, edge, 9);
        noise.Fill(from.data(), from.size());
        Picture s(w, h, channels, w * channels), d(30, 30, channels, 30 * channels);
        s.image->imageData = from.data();
        d.image->imageData = to.data();
        const double shift = (degrees % 5) * 3.5 - 2;
        iplRotate(s.image, d.image, degrees, shift + 8, shift + 9, degrees % 3);
        iplRotate(s.image, d.image, degrees / 90 * 90, 12, 11, 0);
        ASSERT_TRUE(from.GuardsIntact() && to.GuardsIntact());
      }
    }
  }
}

TEST_F(Warp, AnglesMinus90And270And630TakeTheSameExactPath) {
  Picture from(5, 3, 3);
  FillNoise(from, 1);
  std::vector<std::vector<std::uint8_t>> results;
  for (const double angle : {-90.0, 270.0, 630.0}) {
    Picture to(3, 5, 3);
    iplRotate(from.image, to.image, angle, 2, 0, 0);
    // x' = 2 - y, y' = x
    for (int y = 0; y < 3; ++y) {
      for (int x = 0; x < 5; ++x) {
        for (int c = 0; c < 3; ++c) ASSERT_EQ(from.At(x, y)[c], to.At(2 - y, x)[c]) << angle;
      }
    }
  }
}

TEST_F(Warp, RightAnglesMovePixelsAndClipToTheDestination) {
  Noise noise(8);
  for (const int channels : {1, 3, 4}) {
    for (const int angle : {90, 180, 270}) {
      for (int turn = 0; turn < 60; ++turn) {
        Picture from(noise.Range(1, 70), noise.Range(1, 70), channels);
        Picture to(noise.Range(1, 70), noise.Range(1, 70), channels),
            expected(to.width, to.height, channels);
        FillNoise(from, static_cast<std::uint64_t>(turn));
        const int xs = noise.Range(-10, 80), ys = noise.Range(-10, 80);
        for (int y = 0; y < from.height; ++y) {
          for (int x = 0; x < from.width; ++x) {
            const int tx = angle == 90 ? y + xs : angle == 180 ? xs - x : xs - y;
            const int ty = angle == 90 ? ys - x : angle == 180 ? ys - y : x + ys;
            if (tx < 0 || ty < 0 || tx >= to.width || ty >= to.height) continue;
            std::copy_n(from.At(x, y), channels, expected.At(tx, ty));
          }
        }
        iplRotate(from.image, to.image, angle, xs, ys, WARP_EDGE_BLEND);
        ASSERT_EQ(expected.bytes, to.bytes) << angle << " turn " << turn;
      }
    }
  }
}

TEST_F(Warp, Angle360TakesTheWarpAndGivesAPlainCopyAtWholeShifts) {
  Picture from(8, 8, 4), to(8, 8, 4);
  FillNoise(from, 2);
  iplRotate(from.image, to.image, 360, 0, 0, 0);
  EXPECT_EQ(from.bytes, to.bytes);
}

TEST_F(Warp, ZeroDegreesOver8x8YieldsEightRowsOfSpans0To7) {
  const double quad[] = {0, 0, 7, 0, 7, 7, 0, 7};
  std::int32_t *starts = nullptr, *ends = nullptr, first = -1, last = -1;
  ASSERT_EQ(1, iplClipQuadToSpans(quad, 0, 0, 7, 7, 1, &starts, &ends, &first, &last));
  EXPECT_EQ(0, first);
  EXPECT_EQ(7, last);
  for (int row = 0; row < 8; ++row) {
    EXPECT_EQ(0, starts[row]);
    EXPECT_EQ(7, ends[row]);
  }
  iplFreeAligned(starts);
  iplFreeAligned(ends);
}

TEST_F(Warp, HalfPixelShiftAt90DegreesGoesThroughTheWarpAndStaysUnblended) {
  Picture from(6, 4, 1), to(12, 12, 1), blended(12, 12, 1);
  FillNoise(from, 3);
  iplRotate(from.image, to.image, 90, 2.5, 8, 0);
  iplRotate(from.image, blended.image, 90, 2.5, 8, WARP_EDGE_BLEND);
  Picture expected(12, 12, 1);
  const double coeffs[] = {0, 1, 2.5, -1, 0, 8};
  ReferenceWarp(from, expected, coeffs);
  EXPECT_EQ(expected.bytes, to.bytes);
  EXPECT_EQ(to.bytes, blended.bytes);
  // Columns 3 to 5 hold the interior of 2.5 to 5.5; a move would have filled four.
  EXPECT_EQ(0, to.At(2, 5)[0]);
  EXPECT_NE(0, to.At(3, 5)[0]);
}

TEST_F(Warp, SourceOnePixelWideIsRefused) {
  Picture from(1, 8, 1), to(8, 8, 1);
  iplRotate(from.image, to.image, 30, 0, 0, 0);
  ASSERT_FALSE(messages.empty());
  EXPECT_EQ("srcImage Rectangle ROI is degenerate to length or point", messages[0]);
  EXPECT_EQ(-5, statuses[0]);
  EXPECT_EQ(-1, statuses.back());  // the backtrace of the rotation
}

TEST_F(Warp, SourceOnePixelWideEndsTheProcessInTheDefaultMode) {
  iplRedirectError(nullptr);
  Picture from(1, 8, 1), to(8, 8, 1);
  EXPECT_EXIT(iplRotate(from.image, to.image, 30, 0, 0, 0), ::testing::ExitedWithCode(1), "");
}

TEST_F(Warp, DestinationOutsideOfTheImageStaysWithoutAReport) {
  Picture from(8, 8, 3), to(8, 8, 3);
  FillNoise(to, 4);
  const auto before = to.bytes;
  iplRotate(from.image, to.image, 20, 100, 100, 0);
  iplRotate(from.image, to.image, 90, 100, -100, 0);
  EXPECT_EQ(before, to.bytes);
  EXPECT_TRUE(messages.empty());
}

TEST_F(Warp, DegenerateMatricesAreRefused) {
  Picture from(8, 8, 1), to(8, 8, 1);
  for (const auto& m :
       {std::vector<double>{1, 0, 0, 0, 0, 0}, std::vector<double>{1e-4, 0, 0, 0, 1e-4, 0}}) {
    messages.clear();
    iplSetStatus(0);
    iplWarpAffine(from.image, to.image, m.data(), 0);
    ASSERT_FALSE(messages.empty());
    EXPECT_EQ("Determinant of transform matrix == 0.0", messages[0]);
  }
  messages.clear();
  iplSetStatus(0);
  const double fine[] = {1e-3, 0, 0, 0, 1.01e-4, 0};  // determinant 1.01e-07
  iplWarpAffine(from.image, to.image, fine, 0);
  EXPECT_TRUE(messages.empty());
}

TEST_F(Warp, TheSameHeaderTwiceIsRefusedAndTwoHeadersOnTheSamePixelsAreNot) {
  Picture a(8, 8, 1), b(8, 8, 1);
  iplRotate(a.image, a.image, 90, 7, 0, 0);
  ASSERT_FALSE(messages.empty());
  EXPECT_EQ("This function is not in-place function", messages[0]);
  messages.clear();
  iplSetStatus(0);
  b.image->imageData = a.bytes.data();
  iplRotate(a.image, b.image, 180, 7, 7, 0);
  EXPECT_TRUE(messages.empty());
}

TEST_F(Warp, PairsThatDifferAreReportedOneByOne) {
  Picture from(8, 8, 3), to(8, 8, 3);
  to.image->depth = 16;
  to.image->origin = 1;
  to.image->dataOrder = 1;
  const double coeffs[] = {1, 0, 0, 0, 1, 0};
  iplWarpAffine(from.image, to.image, coeffs, 0);
  EXPECT_EQ((std::vector<std::string>{"srcImage->depth != dstImage->depth",
                                      "srcImage->origin != dstImage->origin",
                                      "srcImage->dataOrder != dstImage->dataOrder"}),
            messages);
  messages.clear();
  iplSetStatus(0);
  Picture one(8, 8, 1);
  iplWarpAffine(from.image, one.image, coeffs, 0);
  EXPECT_EQ("Number of processed channels of srcImage != Number of processed channels of dstImage",
            messages.at(0));
  messages.clear();
  iplSetStatus(0);
  Picture other(8, 8, 3);
  iplWarpAffine(from.image, other.image, coeffs, 3);
  EXPECT_EQ(
      "interpolate != IPL_INTER_NN && interpolate != IPL_INTER_LINEAR && interpolate != "
      "IPL_INTER_CUBIC",
      messages.at(0));
  messages.clear();
  iplSetStatus(0);
  iplWarpAffine(nullptr, other.image, coeffs, 0);
  EXPECT_EQ("Incorrect Image", messages.at(0));
  EXPECT_EQ(-9, statuses.back());
}

TEST_F(Warp, StaleStatusStopsTheWork) {
  Picture from(8, 8, 3), to(8, 8, 3);
  FillNoise(from, 4);
  iplSetStatus(-5);
  iplRotate(from.image, to.image, 90, 7, 0, 0);
  EXPECT_EQ(std::vector<std::uint8_t>(to.bytes.size()), to.bytes);
}

TEST_F(Warp, RowStepOf32768AddressesByItsSixteenBits) {
  Picture from(4, 3, 1, 32768), to(4, 3, 1);
  FillNoise(from, 5);
  FillNoise(to, 6);
  const auto before = to.bytes;
  iplRotate(from.image, to.image, 0, 0, 0, 0);
  for (int x = 0; x < 4; ++x) {
    EXPECT_EQ(from.At(x, 0)[0], to.At(x, 0)[0]);
    // Row 1 stands at -32768 in 16 bits: outside, left alone.
    EXPECT_EQ(before[static_cast<std::size_t>(4 + x)], to.At(x, 1)[0]);
    EXPECT_EQ(before[static_cast<std::size_t>(8 + x)], to.At(x, 2)[0]);
  }
}

TEST_F(Warp, FourChannelsProcessedAsThreeKeepTheFourthByte) {
  Picture from(4, 4, 3), to(4, 4, 3);
  // A region of interest processes one channel and leaves the others.
  IplROI roi{2, 0, 0, 4, 4};
  FillNoise(from, 5);
  FillNoise(to, 6);
  const auto before = to.bytes;
  from.image->roi = to.image->roi = &roi;
  iplRotate(from.image, to.image, 0, 0, 0, 0);
  from.image->roi = to.image->roi = nullptr;
  for (int i = 0; i < 16; ++i) {
    EXPECT_EQ(before[static_cast<std::size_t>(3 * i)], to.bytes[static_cast<std::size_t>(3 * i)]);
    EXPECT_EQ(from.bytes[static_cast<std::size_t>(3 * i + 1)],
              to.bytes[static_cast<std::size_t>(3 * i + 1)]);
    EXPECT_EQ(before[static_cast<std::size_t>(3 * i + 2)],
              to.bytes[static_cast<std::size_t>(3 * i + 2)]);
  }
}

TEST_F(Warp, OneChannelOfInterestIsMovedAloneAtRightAngles) {
  Picture from(4, 3, 3), to(3, 4, 4);
  FillNoise(from, 5);
  FillNoise(to, 6);
  auto expected = to.bytes;
  IplROI second{2, 0, 0, 4, 3}, fourth{4, 0, 0, 3, 4};
  from.image->roi = &second;
  to.image->roi = &fourth;
  iplRotate(from.image, to.image, 90, 0, 3, 0);  // x' = y, y' = 3 - x
  from.image->roi = to.image->roi = nullptr;
  for (int y = 0; y < 3; ++y) {
    for (int x = 0; x < 4; ++x) {
      expected[static_cast<std::size_t>((3 - x) * to.step + y * 4 + 3)] = from.At(x, y)[1];
    }
  }
  EXPECT_EQ(expected, to.bytes);
  EXPECT_TRUE(messages.empty());
}

TEST_F(Warp, TiledPicturesAreLeftAlone) {
  IplTileInfo tiles{&tiles, nullptr, nullptr, 8, 8};
  Picture from(8, 8, 1), to(8, 8, 1);
  FillNoise(to, 6);
  const auto before = to.bytes;
  from.image->imageData = nullptr;
  from.image->tileInfo = &tiles;
  for (const double angle : {30.0, 90.0}) iplRotate(from.image, to.image, angle, 0, 7, 0);
  from.image->tileInfo = nullptr;
  EXPECT_EQ(before, to.bytes);
  EXPECT_TRUE(messages.empty());
}

TEST_F(Warp, ShiftsBeyondAnyPictureMoveNothing) {
  Picture from(8, 8, 1), to(8, 8, 1);
  FillNoise(to, 6);
  const auto before = to.bytes;
  for (const double shift : {1e15, 1e300, -HUGE_VAL, HUGE_VAL}) {
    iplRotate(from.image, to.image, 90, shift, 7, 0);
    iplRotate(from.image, to.image, 180, 7, shift, 0);
  }
  EXPECT_EQ(before, to.bytes);
}

TEST_F(Warp, APictureWarpedOntoItselfGoesPixelByPixel) {
  for (const int channels : {1, 3, 4}) {
    Picture pixels(60, 60, channels), second(60, 60, channels), expected(60, 60, channels);
    FillNoise(pixels, 7);
    expected.bytes = pixels.bytes;
    second.image->imageData = pixels.bytes.data();
    // A small turn about the middle, where pixels stay in their places.
    const double r = 2 * 0.017453292519943295, c = std::cos(r), s = std::sin(r);
    const double xShift = 30 - 30 * c - 30 * s, yShift = 30 + 30 * s - 30 * c;
    const double coeffs[] = {c, s, xShift, -s, c, yShift};
    iplRotate(pixels.image, second.image, 2, xShift, yShift, 0);
    ReferenceWarp(expected, expected, coeffs);
    ASSERT_EQ(expected.bytes, pixels.bytes) << channels;
  }
}

TEST_F(Warp, CentreShiftsKeepRightAnglesWhole) {
  auto shift = [](double x, double y, double angle) {
    double sx = 100, sy = 200;
    iplRotateCenterShift(x, y, angle, &sx, &sy);
    return std::pair(sx - 100, sy - 200);
  };
  EXPECT_EQ(std::pair(0.0, 0.0), shift(3.5, 2.5, 0));
  EXPECT_EQ(std::pair(1.0, 6.0), shift(3.5, 2.5, 90));
  EXPECT_EQ(std::pair(7.0, 5.0), shift(3.5, 2.5, 180));
  EXPECT_EQ(std::pair(6.0, -1.0), shift(3.5, 2.5, -90));
  const auto [x, y] = shift(3.5, 2.5, 30);
  const double r = 30 * 0.017453292519943295;
  EXPECT_NEAR(3.5 - 3.5 * std::cos(r) - 2.5 * std::sin(r), x, 1e-12);
  EXPECT_NEAR(3.5 * std::sin(r) + 2.5 - 2.5 * std::cos(r), y, 1e-12);
}

TEST_F(Warp, RefusedMemoryLeavesTheDestination) {
  Picture from(8, 8, 1), to(12, 12, 1);
  FillNoise(from, 5);
  const std::int64_t live = LiveAllocations();
  for (const std::uint64_t k : {1u, 2u}) {
    RefuseAllocation(k);
    iplRotate(from.image, to.image, 30, 2, 5, 0);
    RefuseAllocation(0);
    EXPECT_EQ(std::vector<std::uint8_t>(to.bytes.size()), to.bytes);
    EXPECT_EQ(live, LiveAllocations());
  }
}

}  // namespace
}  // namespace zor::test
