// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include "platform/memory.h"
#include "support/surfaces.h"
#include "surface/surface_buffer.h"

namespace zor::test {
namespace {

TEST(GetPixels, OfASurfaceWithoutPixelsLeavesTheResultAlone) {
  CZorSurfaceBuffer* surface = CZorSurfaceBuffer::Create(Describe(8, 8, FORMAT_RGB24));
  std::uint8_t here = 0;
  std::uint8_t* pixels = &here;
  EXPECT_EQ(surface->GetPixels(&pixels), VED_OK);
  EXPECT_EQ(pixels, &here);
  EXPECT_EQ(surface->ReadPixels(&here, 1, 1), VED_OK);
  EXPECT_EQ(here, 0);
  surface->ScalarDeletingDestructor(1);
}

TEST(Storage, SizesUnderOneAllocateNothing) {
  CZorSurfaceBuffer* surface = CZorSurfaceBuffer::Create(Describe(8, 8, FORMAT_RGB24));
  const std::int64_t before = LiveAllocations();
  EXPECT_FALSE(surface->AllocatePixels(0));
  EXPECT_FALSE(surface->AllocatePixels(-1));
  EXPECT_EQ(LiveAllocations(), before);
  surface->ScalarDeletingDestructor(1);
}

TEST(Storage, TheBlockIsFreedOnlyWithAnOwningBit) {
  for (const std::uint32_t flags : {0u, 2u, 0xFFFFFFFAu, 1u, 4u, 5u, 7u}) {
    CZorSurfaceBuffer* surface = CZorSurfaceBuffer::Create(Describe(8, 8, FORMAT_RGB24));
    ASSERT_TRUE(surface->AllocatePixels(192));
    surface->SetStorageFlags(flags);
    const std::int64_t before = LiveAllocations();
    surface->FreePixels();
    const bool owned = (flags & 5) != 0;
    EXPECT_EQ(LiveAllocations(), before - (owned ? 1 : 0)) << flags;
    std::uint8_t* pixels = nullptr;
    surface->GetPixels(&pixels);
    EXPECT_EQ(pixels == nullptr, owned);
    surface->SetStorageFlags(1);
    surface->ScalarDeletingDestructor(1);
  }
}

}  // namespace
}  // namespace zor::test
