// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include <cstring>

#include "platform/memory.h"
#include "support/probe_surface.h"
#include "support/surfaces.h"

namespace zor::test {
namespace {

HeldSurface Noisy(const SurfaceDescription& description) {
  return MakeNoisy(description, 31);
}

HeldSurface CloneOf(IZorSurface* surface) {
  HeldSurface clone;
  EXPECT_EQ(surface->Clone(clone.Reset()), VED_OK);
  EXPECT_TRUE(clone);
  return clone;
}

TEST(Clone, NullIsInvalid) {
  EXPECT_EQ(MakeBlank(Describe(8, 8, FORMAT_RGB24))->Clone(nullptr), VED_E_INVALIDARG);
}

TEST(Clone, OtherStorageKindsAreUnsupported) {
  ProbeSurface probe(Describe(8, 8, FORMAT_RGB24));
  probe.description().StorageKind = 3;
  IZorSurface* const untouched = &probe;
  IZorSurface* out = untouched;
  EXPECT_EQ(probe.Clone(&out), VED_E_UNSUPPORTED);
  EXPECT_EQ(out, untouched);
}

TEST(Clone, HasTheDescriptionAndPixelsOfEveryFormat) {
  for (const std::int32_t format :
       {FORMAT_RGB24, FORMAT_RGB32, FORMAT_GRAY8, FORMAT_YUV420, FORMAT_YUY2}) {
    for (const auto& [width, height] : {std::pair{8, 6}, {7, 5}}) {
      SurfaceDescription description = Describe(width, height, format);
      description.DirtyRect = {1, 2, 3, 4};
      description.Orientation = 0;
      description.ComposeInPlace = 1;
      const HeldSurface surface = Noisy(description);
      const HeldSurface clone = CloneOf(surface.get());
      const SurfaceDescription a = DescriptionOf(surface.get());
      const SurfaceDescription b = DescriptionOf(clone.get());
      EXPECT_EQ(std::memcmp(&a, &b, sizeof a), 0);
      const std::size_t bytes = PictureBytes(description);
      EXPECT_EQ(BlockOf(clone.get(), bytes), BlockOf(surface.get(), bytes));
      EXPECT_EQ(CountOf(clone.get()), 1u);
    }
  }
}

TEST(Clone, HasPixelsOfItsOwn) {
  const HeldSurface surface = Noisy(Describe(8, 8, FORMAT_RGB32));
  const Bytes before = BlockOf(surface.get(), 256);
  const HeldSurface clone = CloneOf(surface.get());
  std::memset(PixelsOf(clone), 0, 256);
  EXPECT_EQ(BlockOf(surface.get(), 256), before);
}

TEST(Clone, TakesAspectRatioAndRectanglesButNoColourOpacityOrChildren) {
  const HeldSurface surface = Noisy(Describe(8, 8, FORMAT_RGB32));
  const HeldSurface child = Noisy(Describe(8, 8, FORMAT_RGB32));
  surface->SetAspectRatio(16, 9);
  surface->SetSourceRect(1, 2, 3, 4);
  surface->SetDestRect(5, 6, 70, 80);
  surface->SetBackColor(0x123456);
  surface->SetOpacity(99);
  surface->AddChild(child.get());
  const HeldSurface clone = CloneOf(surface.get());
  std::int32_t a = 0;
  std::int32_t b = 0;
  clone->GetAspectRatio(&a, &b);
  EXPECT_EQ(a, 16);
  EXPECT_EQ(b, 9);
  RECT rect = {};
  clone->GetSourceRect(&rect);
  EXPECT_EQ(rect.left, 1);
  EXPECT_EQ(rect.top, 2);
  EXPECT_EQ(rect.right, 3);
  EXPECT_EQ(rect.bottom, 4);
  clone->GetDestRect(&rect);
  EXPECT_EQ(rect.left, 5);
  EXPECT_EQ(rect.top, 6);
  EXPECT_EQ(rect.right, 70);
  EXPECT_EQ(rect.bottom, 80);
  std::uint32_t word = 0;
  clone->GetBackColor(&word);
  EXPECT_EQ(word, 0xFF000000u);
  clone->GetOpacity(&word);
  EXPECT_EQ(word, 0u);
  EXPECT_EQ(clone->GetChildCount(), 0);
  IZorSurface* mask = nullptr;
  EXPECT_EQ(clone->GetMask(&mask), E_FAIL);
}

TEST(Clone, OfASurfaceWithAMaskHasAMaskOfItsOwn) {
  const HeldSurface surface = Noisy(Describe(8, 8, FORMAT_RGB32));
  const HeldSurface mask = Noisy(Describe(8, 8, FORMAT_GRAY8));
  surface->SetMask(mask.get());
  const HeldSurface clone = CloneOf(surface.get());
  HeldSurface cloned;
  ASSERT_EQ(clone->GetMask(cloned.Reset()), VED_OK);
  EXPECT_NE(cloned.get(), mask.get());
  EXPECT_EQ(CountOf(cloned.get()), 2u);
  EXPECT_EQ(CountOf(mask.get()), 2u);
  EXPECT_EQ(BlockOf(cloned.get(), 64), BlockOf(mask.get(), 64));
  PixelsOf(cloned)[0] ^= 0xFF;
  EXPECT_NE(BlockOf(cloned.get(), 64), BlockOf(mask.get(), 64));
}

TEST(Clone, FlushesTheQueueAndAFailureOfItIsTheResult) {
  const HeldSurface surface = Noisy(Describe(8, 8, FORMAT_RGB32));
  const std::int64_t before = LiveAllocations();
  surface->QueueConvert(99);
  IZorSurface* out = surface.get();
  EXPECT_EQ(surface->Clone(&out), VED_E_UNSUPPORTED);
  EXPECT_EQ(out, nullptr);
  EXPECT_EQ(LiveAllocations(), before);
  EXPECT_EQ(surface->Flush(), VED_OK);
}

TEST(Clone, OfASurfaceTooSmallForABuilderGivesItsCodeAndStoresNothing) {
  const HeldSurface surface = Noisy(Describe(8, 8, FORMAT_RGB32));
  ASSERT_EQ(surface->ResizeNow(2, 2, 0, 0), VED_OK);
  const std::int64_t before = LiveAllocations();
  IZorSurface* out = surface.get();
  EXPECT_EQ(surface->Clone(&out), VED_E_INVALIDARG);
  EXPECT_EQ(out, surface.get());
  EXPECT_EQ(LiveAllocations(), before);
}

/// Copies what it can: the clone is made for the size from before the flush.
TEST(Clone, WithAQueueThatMakesTheSurfaceSmallerCopiesTheSmallerBlock) {
  const HeldSurface surface = Noisy(Describe(32, 32, FORMAT_YUV420));
  surface->QueueResize(8, 8, 0, 0);
  HeldSurface clone;
  const std::int32_t result = surface->Clone(clone.Reset());
  ASSERT_EQ(result, VED_OK);
  EXPECT_EQ(DescriptionOf(clone.get()).width, 32);
  EXPECT_EQ(DescriptionOf(surface.get()).width, 8);
  const Bytes block = BlockOf(clone.get(), 32 * 32 * 3 / 2);
  EXPECT_EQ(Bytes(block.begin(), block.begin() + 96), BlockOf(surface.get(), 96));
  // What the smaller block doesn't reach keeps the look of a blank picture.
  for (std::size_t i = 96; i < 1024; ++i) ASSERT_EQ(block[i], 16) << i;
  for (std::size_t i = 1024; i < block.size(); ++i) ASSERT_EQ(block[i], 128) << i;
}

TEST(Clone, WithAQueueThatMakesTheSurfaceLargerCopiesTheSmallerBlock) {
  const HeldSurface surface = Noisy(Describe(8, 8, FORMAT_YUV420));
  surface->QueueResize(32, 32, 0, 0);
  HeldSurface clone;
  ASSERT_EQ(surface->Clone(clone.Reset()), VED_OK);
  EXPECT_EQ(DescriptionOf(clone.get()).width, 8);
  EXPECT_EQ(BlockOf(clone.get(), 96), BlockOf(surface.get(), 96));
}

TEST(Clone, AMaskThatCannotBeClonedGivesTheFailureAndNull) {
  const HeldSurface surface = Noisy(Describe(8, 8, FORMAT_RGB32));
  const HeldSurface mask = Noisy(Describe(8, 8, FORMAT_GRAY8));
  surface->SetMask(mask.get());
  mask->QueueConvert(99);
  const std::int64_t before = LiveAllocations();
  IZorSurface* out = surface.get();
  EXPECT_EQ(surface->Clone(&out), VED_E_UNSUPPORTED);
  EXPECT_EQ(out, nullptr);
  EXPECT_LE(LiveAllocations(), before);
}

TEST(Clone, OfASurfaceThatIsItsOwnMaskFails) {
  const HeldSurface first = Noisy(Describe(8, 8, FORMAT_GRAY8));
  const HeldSurface second = Noisy(Describe(8, 8, FORMAT_GRAY8));
  first->SetMask(second.get());
  second->SetMask(first.get());
  const std::int64_t before = LiveAllocations();
  IZorSurface* out = first.get();
  EXPECT_EQ(first->Clone(&out), VED_E_INVALIDARG);
  EXPECT_EQ(out, nullptr);
  EXPECT_EQ(LiveAllocations(), before);
  // The ring is opened, or the two would never go.
  const HeldSurface other = Noisy(Describe(8, 8, FORMAT_GRAY8));
  second->SetMask(other.get());
}

TEST(Clone, EveryRefusedAllocationIsOutOfMemoryAndLeavesNothing) {
  const HeldSurface surface = Noisy(Describe(8, 8, FORMAT_RGB32));
  const HeldSurface mask = Noisy(Describe(8, 8, FORMAT_GRAY8));
  surface->SetMask(mask.get());
  const std::int64_t before = LiveAllocations();
  RefuseAllocation(0);
  CloneOf(surface.get());
  // Builder, object and block, for the surface and for its mask.
  const std::uint64_t requests = CountAllocations();
  EXPECT_EQ(requests, 6u);
  EXPECT_EQ(LiveAllocations(), before);
  for (std::uint64_t k = 1; k <= requests; ++k) {
    IZorSurface* out = nullptr;
    RefuseAllocation(k);
    EXPECT_EQ(surface->Clone(&out), VED_E_OUTOFMEMORY) << k;
    RefuseAllocation(0);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(LiveAllocations(), before) << k;
  }
}

}  // namespace
}  // namespace zor::test
