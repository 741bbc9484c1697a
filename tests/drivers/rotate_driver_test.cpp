// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include <cmath>

#include "driver_cases.h"
#include "ipl/iplalloc.h"
#include "ipl/warp_reference.h"
#include "platform/memory.h"
#include "platform/pixel_block.h"
#include "surface/rotate_planes.h"

namespace zor::test {
namespace {

/// Every test also shows that the shared status stays clean.
class Rotate : public testing::Test {
 protected:
  Rotate() { iplSetStatus(0); }
  ~Rotate() override {
    RefuseAllocation(0);
    EXPECT_EQ(iplGetStatus(), 0);
  }
};

/// One plane, or one packed picture.
struct Plane {
  std::uint8_t* bytes;
  int width, height, stride, channels;
};

/// Turns one plane by the definition: nearest pixels inside of the turned frame, others stay.
/// @param angle in degrees as the warp takes it.
void TurnPlane(const Plane& from, const Plane& to, double angle, double shiftX, double shiftY) {
  const double radians = angle * 3.14159265358979323846 / 180;
  const double c = std::cos(radians), s = std::sin(radians);
  const double coefficients[] = {c, s, shiftX, -s, c, shiftY};
  ForEachPainted(from, to, coefficients, [&](const Affine& m, int firstRow, int x, int y) {
    int sx = 0, sy = 0;
    SourceOf(m, firstRow, x, y, &sx, &sy);
    if (sx < 0 || sy < 0 || sx >= from.width || sy >= from.height) return;
    std::memcpy(to.bytes + y * to.stride + x * to.channels,
                from.bytes + sy * from.stride + sx * from.channels,
                static_cast<std::size_t>(to.channels));
  });
}

struct Move {
  double x, y;
};

constexpr double kPi = 3.14159;

Move PackedMove(int degrees, double w, double h) {
  const double t = degrees * kPi / 180, p = (degrees - 90) * kPi / 180;
  if (degrees < 91) return {0, std::sin(t) * w};
  if (degrees < 181) return {std::sin(p) * w, std::sin(t) * w - std::cos(t) * h};
  if (degrees < 271) return {std::sin(p) * w - std::cos(p) * h, std::cos(t) * -h};
  return {std::sin(t) * -h, 0};
}

Move PlanarMove(int degrees, double w, double h) {
  const double t = degrees * kPi / 180, p = (degrees - 90) * kPi / 180;
  if (degrees < 90) return {h * std::sin(t), 0};
  if (degrees < 180) return {h * std::cos(p) + w * std::sin(p), -h * std::cos(t)};
  if (degrees < 270) return {w * std::sin(p), -w * std::sin(t) - h * std::cos(t)};
  return {0, -w * std::sin(t)};
}

TEST_F(Rotate, By0And360KeepsTheBlock) {
  for (const int degrees : {0, 360}) {
    const HeldSurface surface = MakeNoisy(Describe(16, 12, FORMAT_YUY2), 1);
    const std::uint8_t* before = PixelsOf(surface);
    EXPECT_EQ(surface->RotateNow(degrees), VED_OK);
    EXPECT_EQ(PixelsOf(surface), before);
  }
}

TEST_F(Rotate, RoutinesOfOnePictureGive0ForANullPointerAndOtherwise1) {
  Bytes source(16 * 12 * 4, 7), target(16 * 12 * 4, 9);
  const Bytes before = target;
  EXPECT_EQ(RotatePlaneRgb(nullptr, 12, 16, 48, 32, source.data(), 16, 12, 64, 32, 90), 0u);
  EXPECT_EQ(RotatePlaneRgb(target.data(), 12, 16, 48, 32, nullptr, 16, 12, 64, 32, 90), 0u);
  EXPECT_EQ(RotatePlanesYuv420(nullptr, 12, 16, 12, source.data(), 16, 12, 16, 90), 0u);
  EXPECT_EQ(RotatePlanesYuv420(target.data(), 12, 16, 12, nullptr, 16, 12, 16, 90), 0u);
  EXPECT_EQ(target, before);
  EXPECT_EQ(RotatePlaneRgb(target.data(), 12, 16, 48, 32, source.data(), 16, 12, 64, 32, 90), 1u);
  EXPECT_NE(target, before);
  target = before;
  EXPECT_EQ(RotatePlanesYuv420(target.data(), 12, 16, 12, source.data(), 16, 12, 16, 90), 1u);
  EXPECT_NE(target, before);
}

TEST_F(Rotate, WithoutPixelsIsInvalidAlsoBy0) {
  const HeldSurface surface = MakeRaw(Describe(16, 12, FORMAT_RGB24), 0);
  EXPECT_EQ(surface->RotateNow(0), VED_E_INVALIDARG);
  EXPECT_EQ(surface->RotateNow(90), VED_E_INVALIDARG);
}

TEST_F(Rotate, By90Of100x50Rgb24Gives50x100WithStride152) {
  const HeldSurface surface = MakeNoisy(Describe(100, 50, FORMAT_RGB24), 1);
  EXPECT_EQ(surface->RotateNow(90), VED_OK);
  const SurfaceDescription d = DescriptionOf(surface.get());
  EXPECT_EQ(d.width, 50);
  EXPECT_EQ(d.height, 100);
  EXPECT_EQ(d.stride, 152);
}

TEST_F(Rotate, QuarterTurnsMoveTheDirtyRectAlike) {
  for (const int degrees : {90, 270}) {
    SurfaceDescription d = Describe(100, 50, FORMAT_RGB32);
    d.DirtyRect = {10, 20, 30, 40};
    const HeldSurface surface = MakeNoisy(d, 1);
    EXPECT_EQ(surface->RotateNow(degrees), VED_OK);
    EXPECT_EQ(DirtyRectOf(surface), (RECT{20, 70, 40, 90}));
  }
}

TEST_F(Rotate, OtherAnglesKeepTheDirtyRect) {
  for (const int degrees : {180, 45, 200}) {
    SurfaceDescription d = Describe(100, 50, FORMAT_RGB32);
    d.DirtyRect = {10, 20, 30, 40};
    const HeldSurface surface = MakeNoisy(d, 1);
    EXPECT_EQ(surface->RotateNow(degrees), VED_OK);
    EXPECT_EQ(DirtyRectOf(surface), (RECT{10, 20, 30, 40}));
  }
}

TEST_F(Rotate, By45Of100x100Gives142x142) {
  for (const int format : {FORMAT_RGB24, FORMAT_RGB32, FORMAT_GRAY8, FORMAT_YUV420}) {
    const HeldSurface surface = MakeNoisy(Describe(100, 100, format), 1);
    EXPECT_EQ(surface->RotateNow(45), VED_OK);
    EXPECT_EQ(DescriptionOf(surface.get()).width, 142);
    EXPECT_EQ(DescriptionOf(surface.get()).height, 142);
  }
}

TEST_F(Rotate, By200TakesTheSizesOf20DegreesWhileItsPixelsTurnBy200) {
  const HeldSurface surface = MakeNoisy(Describe(100, 50, FORMAT_RGB32), 1);
  Bytes source = WholeBlock(surface);
  EXPECT_EQ(surface->RotateNow(200), VED_OK);
  // 50 sin 20 + 100 cos 20 = 111.07 and 50 cos 20 + 100 sin 20 = 81.19.
  EXPECT_EQ(DescriptionOf(surface.get()).width, 112);
  EXPECT_EQ(DescriptionOf(surface.get()).height, 82);
  Bytes expected(112 * 82 * 4);
  const double theta = 200 * kPi / 180, phi = 110 * kPi / 180;
  TurnPlane({source.data(), 100, 50, 400, 4}, {expected.data(), 112, 82, 448, 4}, 200,
            std::sin(phi) * 100 - std::cos(phi) * 50, -std::cos(theta) * 50);
  EXPECT_EQ(BlockOf(surface.get(), expected.size()), expected);
}

TEST_F(Rotate, NegativeAngleGivesASurfaceOfNoSize) {
  for (const int format : {FORMAT_RGB24, FORMAT_YUV420, FORMAT_GRAY8}) {
    const HeldSurface surface = MakeNoisy(Describe(16, 12, format), 1);
    EXPECT_EQ(surface->RotateNow(-45), VED_OK);
    EXPECT_EQ(DescriptionOf(surface.get()).width, 0);
    EXPECT_EQ(DescriptionOf(surface.get()).height, 0);
  }
}

TEST_F(Rotate, NegativeNewSizeIsInvalidAndChangesNothing) {
  const HeldSurface surface = MakeNoisy(Describe(16, 12, FORMAT_RGB32), 1);
  const Bytes before = WholeBlock(surface);
  // 450 counts as 270, whose remainder to 180 is -90: the sine is -1.
  EXPECT_EQ(surface->RotateNow(450), VED_E_INVALIDARG);
  EXPECT_EQ(WholeBlock(surface), before);
  EXPECT_EQ(DescriptionOf(surface.get()).width, 16);
}

TEST_F(Rotate, PackedYuvIsUnsupportedAndOnlyAQuarterTurnMovesItsDirtyRect) {
  for (const int degrees : {90, 180, 270, 30}) {
    SurfaceDescription d = Describe(100, 50, FORMAT_YUY2);
    d.DirtyRect = {10, 20, 30, 40};
    const HeldSurface surface = MakeNoisy(d, 1);
    const std::uint8_t* before = PixelsOf(surface);
    EXPECT_EQ(surface->RotateNow(degrees), VED_E_UNSUPPORTED);
    EXPECT_EQ(PixelsOf(surface), before);
    EXPECT_EQ(DescriptionOf(surface.get()).width, 100);
    EXPECT_EQ(DirtyRectOf(surface),
              degrees % 180 == 90 ? (RECT{20, 70, 40, 90}) : (RECT{10, 20, 30, 40}));
  }
}

TEST_F(Rotate, PlanarRightAnglesMoveEverySample) {
  for (const int degrees : {90, 180, 270}) {
    const HeldSurface surface = MakeNoisy(Describe(16, 12, FORMAT_YUV420), 7);
    const Bytes before = WholeBlock(surface);
    EXPECT_EQ(surface->RotateNow(degrees), VED_OK);
    const Bytes after = WholeBlock(surface);
    std::size_t plane = 0;
    for (const auto& [w, h] : {std::pair{16, 12}, {8, 6}, {8, 6}}) {
      const int newWidth = degrees == 180 ? w : h;
      for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
          // Rows run top-down: 90 degrees is clockwise.
          const int toX = degrees == 90 ? h - 1 - y : degrees == 270 ? y : w - 1 - x;
          const int toY = degrees == 90 ? x : degrees == 270 ? w - 1 - x : h - 1 - y;
          EXPECT_EQ(after[plane + static_cast<std::size_t>(toY * newWidth + toX)],
                    before[plane + static_cast<std::size_t>(y * w + x)])
              << degrees << " at " << x << "," << y;
        }
      }
      plane += static_cast<std::size_t>(w * h);
    }
  }
}

TEST_F(Rotate, PackedPicturesFollowTheDefinitionAtEveryAngle) {
  for (const int format : {FORMAT_RGB24, FORMAT_RGB32, FORMAT_GRAY8}) {
    for (int degrees = 1; degrees < 360; ++degrees) {
      const HeldSurface surface = MakeNoisy(Describe(24, 17, format), 3);
      const SurfaceDescription d = DescriptionOf(surface.get());
      Bytes source = WholeBlock(surface);
      ASSERT_EQ(surface->RotateNow(degrees), VED_OK);
      const SurfaceDescription n = DescriptionOf(surface.get());
      Bytes expected(PictureBytes(n));
      const Move move = PackedMove(degrees, d.width, d.height);
      const int channels = d.bitsPerPixel / 8;
      TurnPlane({source.data(), d.width, d.height, d.stride, channels},
                {expected.data(), n.width, n.height, n.stride, channels}, degrees, move.x, move.y);
      ASSERT_EQ(BlockOf(surface.get(), expected.size()), expected) << format << " by " << degrees;
    }
  }
}

TEST_F(Rotate, PlanarPicturesFollowTheDefinitionOverBlackAtEveryAngle) {
  for (int degrees = 1; degrees < 360; ++degrees) {
    if (degrees % 90 == 0) continue;
    const HeldSurface surface = MakeNoisy(Describe(24, 18, FORMAT_YUV420), 3);
    Bytes source = WholeBlock(surface);
    ASSERT_EQ(surface->RotateNow(degrees), VED_OK);
    const SurfaceDescription n = DescriptionOf(surface.get());
    const int luma = n.width * n.height;
    Bytes expected(PictureBytes(n), 128);
    std::fill_n(expected.begin(), luma, std::uint8_t{16});
    const Move move = PlanarMove(degrees, 24, 18);
    const Move half = PlanarMove(degrees, 12, 9);
    TurnPlane({source.data(), 24, 18, 24, 1}, {expected.data(), n.width, n.height, n.width, 1},
              -degrees, move.x, move.y);
    for (const int plane : {0, 1}) {
      TurnPlane(
          {source.data() + 432 + plane * 108, 12, 9, 12, 1},
          {expected.data() + luma + plane * (luma / 4), n.width / 2, n.height / 2, n.width / 2, 1},
          -degrees, half.x, half.y);
    }
    ASSERT_EQ(BlockOf(surface.get(), expected.size()), expected) << degrees;
  }
}

TEST_F(Rotate, MaskFollowsWithTheSameSize) {
  for (const int degrees : {90, 180, 30}) {
    const HeldSurface surface = MakeNoisy(Describe(24, 16, FORMAT_YUV420), 3);
    const HeldSurface mask = MakeNoisy(Describe(24, 16, FORMAT_GRAY8), 4);
    const HeldSurface alone = MakeNoisy(Describe(24, 16, FORMAT_GRAY8), 4);
    surface->SetMask(mask.get());
    EXPECT_EQ(surface->RotateNow(degrees), VED_OK);
    EXPECT_EQ(alone->RotateNow(degrees), VED_OK);
    EXPECT_EQ(DescriptionOf(mask.get()).width, DescriptionOf(surface.get()).width);
    EXPECT_EQ(DescriptionOf(mask.get()).height, DescriptionOf(surface.get()).height);
    EXPECT_EQ(WholeBlock(mask), WholeBlock(alone));
  }
}

TEST_F(Rotate, CirclesOfMasksAreGoneRoundOnce) {
  const HeldSurface a = MakeNoisy(Describe(24, 16, FORMAT_GRAY8), 3);
  const HeldSurface b = MakeNoisy(Describe(24, 16, FORMAT_GRAY8), 4);
  const HeldSurface open = MakeNoisy(Describe(8, 8, FORMAT_GRAY8), 5);
  a->SetMask(b.get());
  b->SetMask(a.get());
  EXPECT_EQ(a->RotateNow(90), VED_OK);
  EXPECT_EQ(DescriptionOf(b.get()).width, 16);
  EXPECT_EQ(a->ResizeNow(12, 20, 0, 0), VED_OK);
  EXPECT_EQ(DescriptionOf(b.get()).width, 12);
  a->SetMask(a.get());
  EXPECT_EQ(a->RotateNow(45), VED_OK);
  EXPECT_EQ(a->ResizeNow(12, 20, 0, 0), VED_OK);
  EXPECT_EQ(DescriptionOf(a.get()).width, 12);
  a->SetMask(open.get());
}

TEST_F(Rotate, SmallPicturesNeverReachWhatTheEngineWouldRefuse) {
  for (const int format : {FORMAT_RGB24, FORMAT_RGB32, FORMAT_GRAY8, FORMAT_YUV420}) {
    for (int width = 1; width <= 5; ++width) {
      for (int height = 1; height <= 5; ++height) {
        for (const int degrees : {90, 180, 270, 1, 45, 135, 200, 300, 361, -7, 540, 2147483647}) {
          const HeldSurface surface = MakeNoisy(Describe(8, 8, format), 3);
          ASSERT_EQ(surface->ResizeNow(width, height, 0, 0), VED_OK);
          const std::int32_t result = surface->RotateNow(degrees);
          EXPECT_TRUE(result == VED_OK || result == VED_E_INVALIDARG) << degrees;
          EXPECT_EQ(iplGetStatus(), 0);
        }
      }
    }
  }
}

TEST_F(Rotate, RefusedBlockLeavesTheSurface) {
  for (const int format : {FORMAT_RGB32, FORMAT_YUV420}) {
    for (const int degrees : {90, 180, 30}) {
      SurfaceDescription d = Describe(24, 16, format);
      d.DirtyRect = {1, 2, 3, 4};
      const HeldSurface surface = MakeNoisy(d, 3);
      const Bytes before = WholeBlock(surface);
      const std::int64_t live = LiveAllocations();
      RefuseAllocation(1);
      EXPECT_EQ(surface->RotateNow(degrees), VED_E_OUTOFMEMORY);
      RefuseAllocation(0);
      EXPECT_EQ(WholeBlock(surface), before);
      EXPECT_EQ(DescriptionOf(surface.get()).width, 24);
      EXPECT_EQ(DirtyRectOf(surface), (RECT{1, 2, 3, 4}));
      EXPECT_EQ(LiveAllocations(), live);
    }
  }
}

TEST_F(Rotate, RefusalsInsideOfTheEngineNeitherLeakNorEndTheProcess) {
  for (std::uint64_t request = 2; request < 12; ++request) {
    for (const int degrees : {90, 30}) {
      const HeldSurface surface = MakeNoisy(Describe(24, 16, FORMAT_YUV420), 3);
      const std::int64_t live = LiveAllocations();
      RefuseAllocation(request);
      EXPECT_EQ(surface->RotateNow(degrees), VED_OK);
      RefuseAllocation(0);
      EXPECT_EQ(LiveAllocations(), live);
      EXPECT_EQ(iplGetStatus(), 0) << request;
    }
  }
}

}  // namespace
}  // namespace zor::test
