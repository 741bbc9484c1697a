// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include <algorithm>

#include "drivers/driver_cases.h"
#include "platform/memory.h"

namespace zor::test {
namespace {

TEST(StretchFromSurfaceNow, WithoutPixelsOrSourceIsInvalid) {
  const HeldSurface source = MakeTarget(8, 8, FORMAT_RGB24);
  const HeldSurface empty = MakeRaw(Describe(8, 8, FORMAT_RGB24), 0);
  EXPECT_EQ(empty->StretchFromSurfaceNow(nullptr, source.get(), nullptr, 0), VED_E_INVALIDARG);
  EXPECT_EQ(source->StretchFromSurfaceNow(nullptr, nullptr, nullptr, 0), VED_E_INVALIDARG);
  EXPECT_EQ(DirtyRectOf(source), (RECT{2, 2, 4, 4}));
}

TEST(StretchFromSurfaceNow, WholePicturesAreDrawnAndTheTargetIsDirty) {
  for (std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32, FORMAT_GRAY8, FORMAT_YUV420}) {
    const HeldSurface source = MakeTarget(8, 8, format, 1, 99);
    const HeldSurface target = MakeTarget(16, 12, format);
    ASSERT_EQ(target->StretchFromSurfaceNow(nullptr, source.get(), nullptr, SCALE_NEAREST), VED_OK);
    EXPECT_EQ(DirtyRectOf(target), (RECT{0, 0, 16, 12}));
    EXPECT_EQ(PictureOf(target), Bytes(PictureOf(target).size(), 99)) << format;
    EXPECT_EQ(DirtyRectOf(source), (RECT{2, 2, 4, 4}));
  }
}

TEST(StretchFromSurfaceNow, OntoItselfReadsThePictureAsItWas) {
  constexpr RECT kRects[] = {{0, 0, 30, 20}, {3, 1, 33, 21}, {10, 10, 40, 24}, {2, 2, 12, 9}};
  for (std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32, FORMAT_GRAY8, FORMAT_YUV420}) {
    for (const RECT& from : kRects) {
      for (const RECT& to : kRects) {
        for (const std::uint32_t mode : {SCALE_NEAREST, SCALE_BILINEAR, SCALE_AREA}) {
          const SurfaceDescription d = Describe(40, 24, format);
          const HeldSurface surface = MakeNoisy(d, 5), twin = MakeNoisy(d, 5);
          const HeldSurface expected = MakeNoisy(d, 5);
          RECT target = to, source = from;
          ASSERT_EQ(expected->StretchFromSurfaceNow(&target, twin.get(), &source, mode), VED_OK);
          ASSERT_EQ(surface->StretchFromSurfaceNow(&target, surface.get(), &source, mode), VED_OK);
          ASSERT_EQ(PictureOf(surface), PictureOf(expected))
              << format << ": " << from << " to " << to;
        }
      }
    }
  }
}

TEST(StretchFromSurfaceNow, OntoItselfWithoutMemoryStaysAsItWas) {
  const HeldSurface surface = MakeNoisy(Describe(40, 24, FORMAT_GRAY8), 5);
  const Bytes before = PictureOf(surface);
  RECT target = {0, 0, 20, 20};
  RefuseAllocation(1);
  const std::int32_t result =
      surface->StretchFromSurfaceNow(&target, surface.get(), nullptr, SCALE_NEAREST);
  RefuseAllocation(0);
  EXPECT_EQ(result, VED_E_OUTOFMEMORY);
  EXPECT_EQ(PictureOf(surface), before);
}

TEST(StretchFromSurfaceNow, ATargetRectangleOutsideIsInvalidAndChangesNothing) {
  const HeldSurface source = MakeTarget(8, 8, FORMAT_RGB24, 1, 99);
  const HeldSurface target = MakeTarget(16, 12, FORMAT_RGB24);
  for (RECT rect : {RECT{-1, 0, 4, 4}, RECT{0, -1, 4, 4}, RECT{0, 0, 17, 4}, RECT{0, 0, 4, 13}}) {
    EXPECT_EQ(target->StretchFromSurfaceNow(&rect, source.get(), nullptr, 0), VED_E_INVALIDARG);
  }
  EXPECT_EQ(DirtyRectOf(target), (RECT{2, 2, 4, 4}));
  EXPECT_EQ(PictureOf(target)[0], 0x55);
}

TEST(StretchFromSurfaceNow, ATargetRectangleOfWidthOneIsOkDrawsNothingAndLeavesTheDirtyRectAlone) {
  const HeldSurface source = MakeTarget(8, 8, FORMAT_RGB24, 1, 99);
  const HeldSurface target = MakeTarget(16, 12, FORMAT_RGB24);
  for (RECT rect : {RECT{8, 0, 9, 12}, RECT{0, 8, 16, 9}, RECT{9, 9, 3, 3}}) {
    EXPECT_EQ(target->StretchFromSurfaceNow(&rect, source.get(), nullptr, 0), VED_OK);
  }
  EXPECT_EQ(DirtyRectOf(target), (RECT{2, 2, 4, 4}));
  EXPECT_EQ(PictureOf(target), Bytes(PictureOf(target).size(), 0x55));
}

TEST(StretchFromSurfaceNow, ASourceRectangleThatIsRefusedHasMergedTheTargetRectangleAlready) {
  const HeldSurface source = MakeTarget(8, 8, FORMAT_RGB24, 1, 99);
  struct {
    RECT rect;
    std::int32_t result;
  } const cases[] = {{{3, 0, 4, 8}, VED_OK},
                     {{0, 3, 8, 4}, VED_OK},
                     {{-1, 0, 8, 8}, VED_E_INVALIDARG},
                     {{0, 0, 9, 8}, VED_E_INVALIDARG},
                     {{0, -1, 8, 8}, VED_E_INVALIDARG},
                     {{0, 0, 8, 9}, VED_E_INVALIDARG}};
  for (const auto& c : cases) {
    const HeldSurface target = MakeTarget(16, 12, FORMAT_RGB24);
    RECT to = {6, 6, 10, 9}, from = c.rect;
    EXPECT_EQ(target->StretchFromSurfaceNow(&to, source.get(), &from, 0), c.result) << c.rect;
    EXPECT_EQ(DirtyRectOf(target), (RECT{2, 2, 10, 9}));
    EXPECT_EQ(PictureOf(target), Bytes(PictureOf(target).size(), 0x55));
  }
}

TEST(StretchFromSurfaceNow, RectanglesAreTurnedOverInBottomUpPicturesAndTheCallersStay) {
  for (std::uint32_t targetOrder : {0u, 1u}) {
    for (std::uint32_t sourceOrder : {0u, 1u}) {
      const HeldSurface source = MakeNoisy(DescribeOriented(8, 10, FORMAT_RGB32, sourceOrder), 11);
      const HeldSurface target = MakeTarget(12, 14, FORMAT_RGB32, targetOrder);
      const Bytes from = PictureOf(source);
      RECT to = {2, 1, 6, 4}, part = {3, 2, 7, 5};
      ASSERT_EQ(target->StretchFromSurfaceNow(&to, source.get(), &part, SCALE_NEAREST), VED_OK);
      EXPECT_EQ(to, (RECT{2, 1, 6, 4}));
      EXPECT_EQ(part, (RECT{3, 2, 7, 5}));
      EXPECT_EQ(DirtyRectOf(target), (RECT{2, 1, 6, 4}));
      Bytes expected(12 * 14 * 4, 0x55);
      for (std::size_t y = 0; y < 3; ++y) {
        for (std::size_t i = 0; i < 16; ++i) {
          // Rows counted from the top of what is seen.
          const std::size_t toRow = targetOrder != 0 ? 1 + y : 13 - (1 + y);
          const std::size_t fromRow = sourceOrder != 0 ? 2 + y : 9 - (2 + y);
          expected[toRow * 48 + 2 * 4 + i] = from[fromRow * 32 + 3 * 4 + i];
        }
      }
      EXPECT_EQ(PictureOf(target), expected) << targetOrder << sourceOrder;
    }
  }
}

TEST(StretchFromSurfaceNow, GrayRectanglesAreNotTurnedOver) {
  const HeldSurface source = MakeNoisy(DescribeOriented(8, 8, FORMAT_GRAY8, 0), 12);
  const HeldSurface target = MakeTarget(8, 8, FORMAT_GRAY8, 0);
  const Bytes from = PictureOf(source);
  RECT to = {0, 0, 4, 2}, part = {4, 1, 8, 3};
  ASSERT_EQ(target->StretchFromSurfaceNow(&to, source.get(), &part, SCALE_NEAREST), VED_OK);
  Bytes expected(64, 0x55);
  for (std::size_t y = 0; y < 2; ++y) {
    for (std::size_t x = 0; x < 4; ++x) expected[8 * y + x] = from[8 * (1 + y) + 4 + x];
  }
  EXPECT_EQ(PictureOf(target), expected);
}

TEST(StretchFromSurfaceNow, FromRgbIntoPlanesConvertsTheSourceForGood) {
  for (std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32}) {
    const HeldSurface source = MakeTarget(8, 8, format, 0, 255);
    const HeldSurface target = MakeTarget(8, 8, FORMAT_YUV420);
    ASSERT_EQ(target->StretchFromSurfaceNow(nullptr, source.get(), nullptr, SCALE_NEAREST), VED_OK);
    EXPECT_EQ(DescriptionOf(source.get()).format, FORMAT_YUV420);
    Bytes white(96, 235);
    std::fill(white.begin() + 64, white.end(), std::uint8_t{128});
    EXPECT_EQ(PictureOf(target), white);
  }
}

TEST(StretchFromSurfaceNow, FromPlanesIntoRgbConvertsTheSourceToRgb24) {
  for (std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32}) {
    const HeldSurface source = MakeTarget(8, 8, FORMAT_YUV420, 1, 128);
    const HeldSurface target = MakeTarget(8, 8, format);
    ASSERT_EQ(target->StretchFromSurfaceNow(nullptr, source.get(), nullptr, SCALE_NEAREST), VED_OK);
    EXPECT_EQ(DescriptionOf(source.get()).format, FORMAT_RGB24);
    const Bytes from = PictureOf(source), to = PictureOf(target);
    EXPECT_NE(to[0], 0x55);
    EXPECT_EQ(to[0], from[0]);
    EXPECT_EQ(to[1], from[1]);
  }
}

TEST(StretchFromSurfaceNow, TheQueueOfTheSourceRuns) {
  const HeldSurface source = MakeTarget(8, 8, FORMAT_RGB32, 1, 99);
  source->QueueResize(4, 4, 0, 0);
  const HeldSurface target = MakeTarget(8, 8, FORMAT_RGB32);
  ASSERT_EQ(target->StretchFromSurfaceNow(nullptr, source.get(), nullptr, SCALE_NEAREST), VED_OK);
  EXPECT_EQ(DescriptionOf(source.get()).width, 4);
  EXPECT_EQ(PictureOf(target), Bytes(256, 99));
}

TEST(StretchFromSurfaceNow, ARectangleThatTheSourcesQueueLeavesBehindDrawsNothing) {
  const HeldSurface source = MakeTarget(8, 8, FORMAT_RGB32, 1, 99);
  source->QueueResize(4, 4, 0, 0);
  const HeldSurface target = MakeTarget(8, 8, FORMAT_RGB32);
  RECT part = {2, 2, 8, 8};
  ASSERT_EQ(target->StretchFromSurfaceNow(nullptr, source.get(), &part, SCALE_NEAREST), VED_OK);
  EXPECT_EQ(PictureOf(target), Bytes(256, 0x55));
}

TEST(StretchFromSurfaceNow, ATargetRectangleThatItsOwnQueueLeavesBehindDrawsNothing) {
  const HeldSurface surface = MakeTarget(64, 64, FORMAT_RGB32, 1, 99);
  surface->QueueResize(4, 4, 0, 0);
  RECT to = {20, 20, 64, 64};
  ASSERT_EQ(surface->StretchFromSurfaceNow(&to, surface.get(), nullptr, SCALE_NEAREST), VED_OK);
  EXPECT_EQ(PictureOf(surface), Bytes(64, 99));
}

TEST(StretchFromSurfaceNow, ASourceWithoutPixelsDrawsNothing) {
  const HeldSurface source = MakeRaw(Describe(8, 8, FORMAT_RGB24), 0);
  const HeldSurface target = MakeTarget(8, 8, FORMAT_RGB24);
  EXPECT_EQ(target->StretchFromSurfaceNow(nullptr, source.get(), nullptr, 0), VED_OK);
  EXPECT_EQ(PictureOf(target), Bytes(192, 0x55));
}

TEST(StretchFromSurfaceNow, IntoPackedIsUnsupportedAfterTheSourcesQueueRan) {
  const HeldSurface source = MakeTarget(8, 8, FORMAT_RGB24, 1, 99);
  source->QueueResize(4, 4, 0, 0);
  const HeldSurface target = MakeTarget(8, 8, FORMAT_YUY2);
  RECT to = {4, 4, 8, 8};
  EXPECT_EQ(target->StretchFromSurfaceNow(&to, source.get(), nullptr, 0), VED_E_UNSUPPORTED);
  EXPECT_EQ(DescriptionOf(source.get()).width, 4);
  EXPECT_EQ(DirtyRectOf(target), (RECT{2, 2, 8, 8}));
  EXPECT_EQ(PictureOf(target), Bytes(128, 0x55));
}

TEST(StretchFromSurfaceNow, GrayAndPackedSourcesAreNeverReadAsPlanes) {
  for (std::int32_t format : {FORMAT_GRAY8, FORMAT_YUY2}) {
    const HeldSurface source = MakeTarget(8, 8, format, 1, 99);
    const HeldSurface target = MakeTarget(8, 8, FORMAT_YUV420);
    EXPECT_EQ(target->StretchFromSurfaceNow(nullptr, source.get(), nullptr, 0), VED_OK);
    EXPECT_EQ(PictureOf(target), Bytes(96, 0x55));
    EXPECT_EQ(DescriptionOf(source.get()).format, format);
  }
}

TEST(StretchFromSurfaceNow, AGrayTargetTakesTheLumaOfPlanes) {
  const HeldSurface source = MakeNoisy(Describe(8, 8, FORMAT_YUV420), 13);
  Bytes luma = PictureOf(source);
  luma.resize(64);
  const HeldSurface target = MakeTarget(8, 8, FORMAT_GRAY8);
  ASSERT_EQ(target->StretchFromSurfaceNow(nullptr, source.get(), nullptr, SCALE_NEAREST), VED_OK);
  EXPECT_EQ(PictureOf(target), luma);
  EXPECT_EQ(DescriptionOf(source.get()).format, FORMAT_YUV420);
}

TEST(StretchFromSurfaceNow, PairsThatTheEngineDoesNotServeDrawNothing) {
  struct {
    std::int32_t from, to;
  } const pairs[] = {{FORMAT_GRAY8, FORMAT_RGB24},
                     {FORMAT_GRAY8, FORMAT_RGB32},
                     {FORMAT_YUY2, FORMAT_RGB24},
                     {FORMAT_RGB24, FORMAT_GRAY8},
                     {FORMAT_YUY2, FORMAT_GRAY8}};
  for (const auto& pair : pairs) {
    const HeldSurface source = MakeTarget(8, 8, pair.from, 1, 99);
    const HeldSurface target = MakeTarget(8, 8, pair.to);
    EXPECT_EQ(target->StretchFromSurfaceNow(nullptr, source.get(), nullptr, 1), VED_OK);
    EXPECT_EQ(PictureOf(target), Bytes(PictureOf(target).size(), 0x55));
  }
}

TEST(StretchFromSurface, FlushesThisSurfaceFirst) {
  const HeldSurface source = MakeTarget(8, 8, FORMAT_RGB32, 1, 99);
  const HeldSurface target = MakeTarget(8, 8, FORMAT_RGB32);
  target->QueueResize(16, 16, 0, 0);
  RECT to = {8, 8, 16, 16};
  ASSERT_EQ(target->StretchFromSurface(&to, source.get(), nullptr, SCALE_NEAREST), VED_OK);
  EXPECT_EQ(PictureOf(target)[4 * (16 * 15 + 15)], 99);
}

}  // namespace
}  // namespace zor::test
