// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include "drivers/driver_cases.h"

namespace zor::test {
namespace {

/// Opens a circle of masks, so that its surfaces can go.
void Open(const HeldSurface& surface) {
  surface->SetMask(MakeBlank(Describe(4, 4, FORMAT_GRAY8)).get());
}

TEST(ResizeNow, TheMaskFollowsWithoutFitAndByTheNearestPixel) {
  const HeldSurface alone = MakeNoisy(Describe(8, 8, FORMAT_GRAY8), 5);
  ASSERT_EQ(alone->ResizeNow(32, 16, 0, SCALE_NEAREST), VED_OK);
  const Bytes expected = BlockOf(alone.get(), 32 * 16);
  for (std::int32_t format : kFormats) {
    const HeldSurface surface = MakeEven(Describe(8, 8, format), 200);
    const HeldSurface mask = MakeNoisy(Describe(8, 8, FORMAT_GRAY8), 5);
    surface->SetMask(mask.get());
    ASSERT_EQ(surface->ResizeNow(32, 16, 1, SCALE_BILINEAR), VED_OK);
    const SurfaceDescription d = DescriptionOf(mask.get());
    EXPECT_EQ(d.width, 32);
    EXPECT_EQ(d.height, 16);
    EXPECT_EQ(BlockOf(mask.get(), 32 * 16), expected) << format;
  }
}

TEST(ResizeNow, ASurfaceThatIsItsOwnMaskIsResizedOnce) {
  const HeldSurface surface = MakeEven(Describe(8, 8, FORMAT_GRAY8), 200);
  const HeldSurface other = MakeEven(Describe(8, 8, FORMAT_GRAY8), 100);
  surface->SetMask(other.get());
  other->SetMask(surface.get());
  EXPECT_EQ(surface->ResizeNow(16, 16, 0, SCALE_NEAREST), VED_OK);
  EXPECT_EQ(DescriptionOf(surface.get()).width, 16);
  EXPECT_EQ(DescriptionOf(other.get()).width, 16);
  EXPECT_EQ(BlockOf(surface.get(), 256), Bytes(256, 200));
  surface->SetMask(surface.get());
  EXPECT_EQ(surface->ResizeNow(32, 8, 0, SCALE_NEAREST), VED_OK);
  EXPECT_EQ(BlockOf(surface.get(), 256), Bytes(256, 200));
  Open(surface);
  Open(other);
}

TEST(ResizeNow, InACircleOfMasksTheRestOfTheQueueRunsOnTheFinishedPicture) {
  const HeldSurface surface = MakeNoisy(Describe(58, 22, FORMAT_RGB32), 8);
  const HeldSurface expected = MakeNoisy(Describe(58, 22, FORMAT_RGB32), 8);
  const HeldSurface mask = MakeNoisy(Describe(58, 22, FORMAT_GRAY8), 9);
  surface->SetMask(mask.get());
  mask->SetMask(surface.get());
  for (const HeldSurface* s : {&surface, &expected}) {
    (*s)->QueueResize(40, 20, 0, 1);
    (*s)->QueueConvert(FORMAT_YUV420);
    EXPECT_EQ((*s)->Flush(), VED_OK);
  }
  const SurfaceDescription d = DescriptionOf(surface.get()), e = DescriptionOf(expected.get());
  EXPECT_EQ(0, std::memcmp(&d, &e, sizeof d));
  EXPECT_EQ(PictureOf(surface), PictureOf(expected));
  EXPECT_EQ(DescriptionOf(mask.get()).width, 40);
  Open(surface);
}

TEST(ConvertNow, InACircleOfMasksAFormatThatChangesDuringTheTrimIsLookedAtAgain) {
  const HeldSurface surface = MakeNoisy(Describe(59, 23, FORMAT_RGB32), 8);
  const HeldSurface mask = MakeNoisy(Describe(59, 23, FORMAT_GRAY8), 9);
  surface->SetMask(mask.get());
  mask->SetMask(surface.get());
  const HeldSurface expected = MakeNoisy(Describe(59, 23, FORMAT_RGB32), 8);
  surface->QueueConvert(FORMAT_YUV420);  // trims, and the next one runs meanwhile
  surface->QueueConvert(FORMAT_YUY2);
  surface->Flush();
  expected->ResizeNow(58, 22, 1, 1);
  // The mask's wish for the size that the picture has already takes a packed one through planes.
  for (const std::int32_t format : {FORMAT_YUY2, FORMAT_YUV420, FORMAT_YUY2, FORMAT_YUV420}) {
    expected->ConvertNow(format);
  }
  const SurfaceDescription d = DescriptionOf(surface.get());
  EXPECT_EQ(d.format, FORMAT_YUV420);
  EXPECT_EQ(d.stride, 58);
  EXPECT_EQ(PictureOf(surface), BlockOf(expected.get(), PictureBytes(d)));
  Open(surface);
}

TEST(RotateNow, ASurfaceThatIsItsOwnMaskIsTurnedOnce) {
  const HeldSurface surface = MakeEven(Describe(8, 4, FORMAT_GRAY8), 200);
  surface->SetMask(surface.get());
  EXPECT_EQ(surface->RotateNow(90), VED_OK);
  EXPECT_EQ(DescriptionOf(surface.get()).width, 4);
  EXPECT_EQ(DescriptionOf(surface.get()).height, 8);
  Open(surface);
}

}  // namespace
}  // namespace zor::test
