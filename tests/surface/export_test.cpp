// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gmock/gmock.h>

#include "surface/export_cases.h"

namespace zor::test {
namespace {

using testing::Each;

TEST(Export, OtherKindsAreUnsupportedAfterTheFlush) {
  const HeldSurface surface = Noisy(Describe(8, 8, FORMAT_RGB24));
  for (const std::uint32_t kind : {0u, 3u, 0xFFFFFFFFu}) {
    EXPECT_EQ(FailToExport(surface, kind), VED_E_UNSUPPORTED);
  }
  surface->QueueConvert(99);
  EXPECT_EQ(FailToExport(surface, 3), VED_E_UNSUPPORTED);
  std::uint8_t* pixels = nullptr;
  EXPECT_EQ(surface->GetPixels(&pixels), VED_OK);  // the record is gone
}

TEST(Export, PerformsTheQueueOnTheSurfaceAndExportsWhatComesOfIt) {
  const HeldSurface surface = Noisy(Describe(8, 8, FORMAT_YUV420));
  surface->QueueResize(12, 6, 0, 0);
  surface->QueueConvert(FORMAT_RGB32);
  const ExportedDib dib(surface.get());
  EXPECT_EQ(dib.At<std::int32_t>(4), 12);
  EXPECT_EQ(dib.At<std::uint16_t>(14), 32);
  EXPECT_EQ(DescriptionOf(surface.get()).format, FORMAT_RGB32);
  EXPECT_EQ(DescriptionOf(surface.get()).Orientation, 0u);
  EXPECT_EQ(dib.Pixels(288), BlockOf(surface.get(), 288));
  surface->QueueConvert(FORMAT_RGB24);
  const ExportedDraw draw(surface.get());
  EXPECT_EQ(draw.desc.ddpfPixelFormat.dwRGBBitCount, 24u);
  EXPECT_EQ(DescriptionOf(surface.get()).format, FORMAT_RGB24);
}

TEST(Export, NullPointersAreInvalidAndNothingIsFlushed) {
  const HeldSurface surface = Noisy(Describe(8, 8, FORMAT_RGB24));
  surface->QueueConvert(99);
  void* image = nullptr;
  std::uint32_t flag = 77;
  for (const std::uint32_t kind : {kDraw, kDib}) {
    EXPECT_EQ(surface->ExportImage(kind, nullptr, &flag), VED_E_INVALIDARG);
    EXPECT_EQ(surface->ExportImage(kind, &image, nullptr), VED_E_INVALIDARG);
  }
  EXPECT_EQ(surface->Flush(), VED_E_UNSUPPORTED);
}

TEST(Export, OfASurfaceWithoutPixelsGivesEmptyImages) {
  CZorSurfaceBuffer* surface = CZorSurfaceBuffer::Create(Describe(8, 8, FORMAT_RGB24));
  {
    const ExportedDib dib(surface);
    EXPECT_THAT(dib.Pixels(192), Each(0));
    const ExportedDraw draw(surface);
    EXPECT_THAT(draw.memory, Each(0));
  }
  surface->ScalarDeletingDestructor(1);
}

}  // namespace
}  // namespace zor::test
