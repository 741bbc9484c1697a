// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "platform/memory.h"
#include "support/guarded_memory.h"
#include "support/surfaces.h"
#include "support/with_features.h"
#include "surface/surface_buffer.h"

namespace {

using zor::CZorSurfaceBuffer;
using zor::LiveAllocations;
using zor::test::BlockOf;
using zor::test::Describe;
using zor::test::DescriptionOf;
using zor::test::GuardedMemory;
using zor::test::HeldSurface;
using zor::test::kWords;
using zor::test::MakeBlank;
using zor::test::MakeSurface;
using zor::test::Noise;
using zor::test::PictureBytes;
using zor::test::PixelsOf;
using zor::test::WithFeatures;
using Bytes = std::vector<std::uint8_t>;

constexpr std::uint8_t kFill = 0xC3;

/// What a read-out must give, row by row and byte by byte.
class Expected {
 public:
  Expected(const Bytes& block, const SurfaceDescription& description, std::size_t room)
      : block_(block), d_(description), memory_(room, kFill) {}

  const Bytes& Read(std::int32_t stride, std::uint32_t orientation) {
    const bool same = orientation == d_.Orientation;
    const std::int32_t row = std::min(d_.stride, stride);
    std::int32_t at = 0;
    for (std::int32_t y = 0; y < d_.height; ++y, at += stride) {
      Put(at, d_.stride * (same ? y : d_.height - 1 - y), row);
    }
    if (d_.format != FORMAT_YUV420) return memory_;
    const std::int32_t rows = d_.height / 2;
    const std::int32_t luma = d_.stride * d_.height;
    const std::int32_t second = same ? luma + luma / 4 : luma + d_.stride * rows / 2;
    for (const std::int32_t plane : {luma, second}) {
      const std::int32_t last = (rows - 1) * d_.stride / 2;
      for (std::int32_t y = 0; y < rows; ++y, at += stride / 2) {
        Put(at, plane + (same ? y * (d_.stride / 2) : last - y * (d_.stride / 2)), row / 2);
      }
    }
    return memory_;
  }

 private:
  void Put(std::int32_t at, std::int32_t from, std::int32_t count) {
    std::memcpy(memory_.data() + at, block_.data() + from, static_cast<std::size_t>(count));
  }

  const Bytes& block_;
  SurfaceDescription d_;
  Bytes memory_;
};

/// A surface whose whole block, padding and planes, is noise.
HeldSurface Noisy(const SurfaceDescription& description, Bytes& block) {
  HeldSurface surface = MakeBlank(description);
  // The planes of odd strides and heights reach a few bytes beyond stride x height x 3 / 2.
  const auto luma = static_cast<std::size_t>(description.stride * description.height);
  const auto chroma =
      static_cast<std::size_t>((description.stride + 1) / 2 * ((description.height + 1) / 2));
  block = Noise(21).Bytes(description.format == FORMAT_YUV420
                              ? std::max(luma + luma / 4 + chroma, luma * 3 / 2)
                              : luma);
  std::memcpy(PixelsOf(surface), block.data(), block.size());
  return surface;
}

TEST(ReadPixels, NullMemoryAndStridesUnderOneAreInvalid) {
  const HeldSurface surface = MakeBlank(Describe(8, 8, FORMAT_RGB24));
  Bytes memory(256, kFill);
  EXPECT_EQ(surface->ReadPixels(nullptr, 24, 1), VED_E_INVALIDARG);
  EXPECT_EQ(surface->ReadPixels(memory.data(), 0, 1), VED_E_INVALIDARG);
  EXPECT_EQ(surface->ReadPixels(memory.data(), -24, 1), VED_E_INVALIDARG);
  EXPECT_EQ(memory, Bytes(256, kFill));
}

TEST(ReadPixels, AnInvalidCallDoesNotFlush) {
  const HeldSurface surface = MakeBlank(Describe(8, 8, FORMAT_RGB24));
  surface->QueueConvert(99);
  EXPECT_EQ(surface->ReadPixels(nullptr, 24, 1), VED_E_INVALIDARG);
  EXPECT_EQ(surface->Flush(), VED_E_UNSUPPORTED);
}

TEST(ReadPixels, TheOtherOrientationGivesTheRowsInReverse) {
  SurfaceDescription description = Describe(4, 4, FORMAT_RGB32);
  const Bytes source = Noise(22).Bytes(64);
  const HeldSurface surface = MakeSurface(description, source);
  Bytes memory(64, kFill);
  EXPECT_EQ(surface->ReadPixels(memory.data(), 16, 0), VED_OK);
  for (std::size_t y = 0; y < 4; ++y) {
    EXPECT_EQ(std::memcmp(&memory[y * 16], &source[(3 - y) * 16], 16), 0);
  }
}

TEST(ReadPixels, AStrideShorterThanTheSurfacesCutsEachRow) {
  const Bytes source = Noise(23).Bytes(64);
  const HeldSurface surface = MakeSurface(Describe(4, 4, FORMAT_RGB32), source);
  Bytes memory(28, kFill);
  EXPECT_EQ(surface->ReadPixels(memory.data(), 7, 1), VED_OK);
  for (std::size_t y = 0; y < 4; ++y) {
    EXPECT_EQ(std::memcmp(&memory[y * 7], &source[y * 16], 7), 0);
  }
}

TEST(ReadPixels, EveryFormatStrideOrientationAndSizeGivesExactlyItsRows) {
  const std::int32_t kFormats[] = {FORMAT_RGB24, FORMAT_RGB32, FORMAT_YUV420, FORMAT_YUY2};
  for (const std::int32_t format : kFormats) {
    for (const auto& [width, height] : {std::pair{4, 4}, {5, 5}, {6, 7}, {7, 4}, {17, 9}}) {
      for (const std::int32_t wider : {0, 1, 5}) {
        for (const std::uint32_t own : {0u, 1u, 2u}) {
          SurfaceDescription description = Describe(width, height, format);
          description.stride += wider;
          description.Orientation = own;
          Bytes block;
          const HeldSurface surface = Noisy(description, block);
          for (const std::int32_t stride :
               {description.stride, description.stride + 1, description.stride + 6,
                description.stride - 1, 3, 2, 1}) {
            for (const std::uint32_t asked : {0u, 1u}) {
              const auto plane = static_cast<std::size_t>(stride * height);
              const std::size_t room =
                  format == FORMAT_YUV420
                      ? plane + static_cast<std::size_t>(2 * (stride / 2) * (height / 2))
                      : plane;
              GuardedMemory memory(room, GuardedMemory::Edge::kEnd, kFill);
              ASSERT_EQ(surface->ReadPixels(memory.data(), stride, asked), VED_OK);
              ASSERT_EQ(memory.Copy(), Expected(block, description, room).Read(stride, asked))
                  << "format " << format << " " << width << " x " << height << " stride "
                  << description.stride << " to " << stride << " order " << own << asked;
              ASSERT_TRUE(memory.GuardsIntact());
            }
          }
          ASSERT_EQ(BlockOf(surface.get(), block.size()), block);
        }
      }
    }
  }
}

TEST(ReadPixels, APlanarPictureOfOneToThreeRowsGivesTheChromaRowsThatItHas) {
  for (std::int32_t height = 1; height <= 3; ++height) {
    const HeldSurface surface = MakeBlank(Describe(8, 8, FORMAT_YUV420));
    ASSERT_EQ(surface->ResizeNow(6, height, 0, 0), VED_OK);
    const SurfaceDescription description = DescriptionOf(surface.get());
    ASSERT_EQ(description.height, height);
    const auto room = static_cast<std::size_t>(6 * height + 2 * 3 * (height / 2));
    const Bytes block = Noise(24).Bytes(static_cast<std::size_t>(6 * height * 3 / 2));
    std::uint8_t* pixels = nullptr;
    surface->GetPixels(&pixels);
    std::memcpy(pixels, block.data(), block.size());
    for (const std::uint32_t asked : {0u, 1u}) {
      GuardedMemory memory(room, GuardedMemory::Edge::kEnd, kFill);
      ASSERT_EQ(surface->ReadPixels(memory.data(), 6, asked), VED_OK);
      EXPECT_EQ(memory.Copy(), Expected(block, description, room).Read(6, asked))
          << height << " rows in order " << asked;
      EXPECT_TRUE(memory.GuardsIntact());
    }
  }
}

TEST(ReadPixels, NothingInFrontOfTheMemoryIsTouched) {
  for (const std::int32_t format : {FORMAT_RGB24, FORMAT_YUV420}) {
    Bytes block;
    const HeldSurface surface = Noisy(Describe(10, 6, format), block);
    GuardedMemory memory(block.size(), GuardedMemory::Edge::kStart, kFill);
    EXPECT_EQ(surface->ReadPixels(memory.data(), format == FORMAT_RGB24 ? 32 : 10, 0), VED_OK);
    EXPECT_TRUE(memory.GuardsIntact());
  }
}

TEST(ReadPixels, AGraySurfaceSucceedsAndWritesNothing) {
  const HeldSurface surface = MakeBlank(Describe(8, 8, FORMAT_GRAY8));
  Bytes memory(64, kFill);
  EXPECT_EQ(surface->ReadPixels(memory.data(), 8, 1), VED_OK);
  EXPECT_EQ(memory, Bytes(64, kFill));
}

TEST(ReadPixels, AFailingOnlyRecordIsTheResultAndIsGone) {
  const HeldSurface surface = MakeBlank(Describe(8, 8, FORMAT_RGB24));
  Bytes memory(192, kFill);
  surface->QueueConvert(99);
  EXPECT_EQ(surface->ReadPixels(memory.data(), 24, 1), VED_E_UNSUPPORTED);
  EXPECT_EQ(memory, Bytes(192, kFill));
  EXPECT_EQ(surface->ReadPixels(memory.data(), 24, 1), VED_OK);
  EXPECT_EQ(memory, Bytes(192, 0));
}

TEST(ReadPixels, WithTwoRecordsAFailureOfTheFirstLeavesTheSecondQueued) {
  const HeldSurface surface = MakeBlank(Describe(8, 8, FORMAT_RGB24));
  Bytes memory(192, kFill);
  surface->QueueConvert(99);
  surface->QueueConvert(98);
  EXPECT_EQ(surface->ReadPixels(memory.data(), 24, 1), VED_E_UNSUPPORTED);
  EXPECT_EQ(surface->Flush(), VED_E_UNSUPPORTED);  // the second one
  EXPECT_EQ(surface->Flush(), VED_OK);
  EXPECT_EQ(memory, Bytes(192, kFill));
}

TEST(ReadPixels, AfterAFailedOneNothingReachesTheHostsMemory) {
  const HeldSurface surface = MakeBlank(Describe(8, 8, FORMAT_RGB24));
  Bytes memory(400, kFill);
  surface->QueueConvert(99);
  EXPECT_EQ(surface->ReadPixels(memory.data(), 24, 1), VED_E_UNSUPPORTED);
  EXPECT_EQ(surface->ResizeNow(8, 8, 0, 0), VED_OK);
  EXPECT_EQ(surface->ConvertNow(FORMAT_RGB24), VED_OK);
  EXPECT_EQ(surface->ResizeNow(12, 12, 0, 0), VED_OK);
  EXPECT_EQ(surface->ConvertNow(FORMAT_YUV420), VED_OK);
  EXPECT_EQ(memory, Bytes(400, kFill));
  EXPECT_EQ(DescriptionOf(surface.get()).width, 12);
  EXPECT_EQ(DescriptionOf(surface.get()).format, FORMAT_YUV420);
}

/// The bytes of a planar picture of one luma value and neutral chroma.
Bytes EvenBytes(std::size_t pixels, std::uint8_t luma) {
  Bytes bytes(pixels * 3 / 2, 128);
  std::memset(bytes.data(), luma, pixels);
  return bytes;
}

HeldSurface Even(std::int32_t width, std::int32_t height, std::uint8_t luma) {
  return MakeSurface(Describe(width, height, FORMAT_YUV420),
                     EvenBytes(static_cast<std::size_t>(width * height), luma));
}

TEST(ReadPixels, AQueuedResizeGoesToTheHostAndTheSurfaceKeepsItsSize) {
  const HeldSurface surface = Even(16, 16, 90);
  surface->QueueResize(8, 8, 0, 0);
  GuardedMemory memory(96, GuardedMemory::Edge::kEnd, kFill);
  EXPECT_EQ(surface->ReadPixels(memory.data(), 8, 1), VED_OK);
  EXPECT_EQ(memory.Copy(), EvenBytes(64, 90));
  EXPECT_EQ(DescriptionOf(surface.get()).width, 16);
  EXPECT_EQ(DescriptionOf(surface.get()).height, 16);
  EXPECT_EQ(DescriptionOf(surface.get()).stride, 16);
  // The record is gone: the next read-out gives the picture as it is.
  Bytes whole(384, kFill);
  EXPECT_EQ(surface->ReadPixels(whole.data(), 16, 1), VED_OK);
  EXPECT_EQ(whole, BlockOf(surface.get(), 384));
}

TEST(ReadPixels, AfterwardsNothingReachesTheHostsMemory) {
  const HeldSurface surface = Even(8, 8, 90);
  surface->QueueConvert(FORMAT_YUV420);  // the surface's own format: the rows are copied out
  Bytes memory(96, kFill);
  EXPECT_EQ(surface->ReadPixels(memory.data(), 8, 1), VED_OK);
  EXPECT_EQ(memory, EvenBytes(64, 90));
  memory.assign(96, kFill);
  EXPECT_EQ(surface->ConvertNow(FORMAT_YUV420), VED_OK);
  EXPECT_EQ(surface->ResizeNow(8, 8, 0, 0), VED_OK);
  EXPECT_EQ(memory, Bytes(96, kFill));
}

TEST(ReadPixels, AfterwardsOperationsChangeTheSurfaceAgain) {
  for (const bool queued : {false, true}) {
    const HeldSurface surface = Even(8, 8, 90);
    if (queued) surface->QueueConvert(FORMAT_YUV420);
    Bytes memory(96, kFill);
    ASSERT_EQ(surface->ReadPixels(memory.data(), 8, 1), VED_OK);
    ASSERT_EQ(surface->ResizeNow(16, 12, 0, 0), VED_OK);
    EXPECT_EQ(DescriptionOf(surface.get()).width, 16);
    ASSERT_EQ(surface->ConvertNow(FORMAT_RGB24), VED_OK);
    EXPECT_EQ(DescriptionOf(surface.get()).format, FORMAT_RGB24);
    EXPECT_EQ(memory, EvenBytes(64, 90));
  }
}

TEST(ReadPixels, AQueuedConversionGivesRgbToTheHostAndTheSurfaceStaysPlanar) {
  // Video black and white with neutral chroma. By tables white is (9535 x 219) >> 13 = 254, in the
  // blocks of 16 columns of the SSE2 form (219 x 74) >> 6 = 253; 8 columns are tail.
  const struct {
    std::uint32_t word;
    std::int32_t width;
    std::uint8_t luma, rgb;
  } kCases[] = {
      {kWords[0], 8, 16, 0},     {kWords[0], 8, 235, 254},  {kWords[0], 16, 16, 0},
      {kWords[0], 16, 235, 253}, {kWords[1], 8, 235, 254},  {kWords[1], 16, 235, 254},
      {kWords[2], 16, 16, 0},    {kWords[2], 16, 235, 254},
  };
  for (const auto& [word, width, luma, rgb] : kCases) {
    const WithFeatures features(word);
    const auto pixels = static_cast<std::size_t>(width * 8);
    const HeldSurface surface = Even(width, 8, luma);
    surface->QueueConvert(FORMAT_RGB24);
    Bytes memory(pixels * 3, kFill);
    EXPECT_EQ(surface->ReadPixels(memory.data(), width * 3, 1), VED_OK);
    EXPECT_EQ(memory, Bytes(pixels * 3, rgb)) << "word " << word << " width " << width;
    EXPECT_EQ(DescriptionOf(surface.get()).format, FORMAT_YUV420);
    EXPECT_EQ(BlockOf(surface.get(), pixels * 3 / 2), EvenBytes(pixels, luma));
    Bytes planar(pixels * 3 / 2, kFill);
    EXPECT_EQ(surface->ReadPixels(planar.data(), width, 1), VED_OK);  // the queue is empty
    EXPECT_EQ(planar, EvenBytes(pixels, luma));
  }
}

TEST(ReadPixels, AQueuedResizeOfAPackedPictureGivesTheUnresizedOne) {
  const SurfaceDescription description = Describe(16, 8, FORMAT_YUY2);
  const Bytes packed = Noise(24).Bytes(PictureBytes(description));
  const HeldSurface surface = MakeSurface(description, packed);
  surface->QueueResize(8, 4, 0, 0);
  GuardedMemory memory(packed.size() * 3 / 2, GuardedMemory::Edge::kEnd, kFill);
  EXPECT_EQ(surface->ReadPixels(memory.data(), 32, 1), VED_OK);
  const Bytes all = memory.Copy();
  EXPECT_EQ(Bytes(all.begin(), all.begin() + 256), packed);
  EXPECT_EQ(DescriptionOf(surface.get()).width, 16);
  EXPECT_EQ(BlockOf(surface.get(), 256), packed);
}

TEST(Flush, AQueuedResizeOfAPackedSurfaceGivesAPackedOneOfTheNewSize) {
  const SurfaceDescription description = Describe(16, 8, FORMAT_YUY2);
  Bytes packed(PictureBytes(description), 128);
  for (std::size_t i = 0; i < packed.size(); i += 2) packed[i] = 90;
  const HeldSurface surface = MakeSurface(description, packed);
  surface->QueueResize(8, 4, 0, 0);
  EXPECT_EQ(surface->Flush(), VED_OK);
  const SurfaceDescription actual = DescriptionOf(surface.get());
  EXPECT_EQ(actual.format, FORMAT_YUY2);
  EXPECT_EQ(actual.width, 8);
  EXPECT_EQ(actual.height, 4);
  EXPECT_EQ(actual.stride, 16);
  EXPECT_EQ(BlockOf(surface.get(), 64), Bytes(packed.begin(), packed.begin() + 64));
}

TEST(ReadPixels, EarlierRecordsOfTheFlushTakeEffectOnTheSurface) {
  const HeldSurface surface = Even(16, 16, 90);
  surface->QueueResize(8, 8, 0, 0);
  surface->QueueResize(4, 4, 0, 0);
  Bytes memory(24, kFill);
  EXPECT_EQ(surface->ReadPixels(memory.data(), 4, 1), VED_OK);
  EXPECT_EQ(DescriptionOf(surface.get()).width, 8);
  EXPECT_EQ(memory, EvenBytes(16, 90));
}

TEST(ReadPixels, OfASurfaceThatIsItsOwnMaskStillGivesThePicture) {
  // The resize makes the mask follow: the surface flushes itself, and its last record with it.
  const HeldSurface surface = Even(16, 16, 90);
  surface->SetMask(surface.get());
  surface->QueueResize(8, 8, 0, 0);
  surface->QueueConvert(FORMAT_YUV420);
  Bytes memory(96, kFill);
  EXPECT_EQ(surface->ReadPixels(memory.data(), 8, 1), VED_OK);
  EXPECT_EQ(memory, EvenBytes(64, 90));
  EXPECT_EQ(DescriptionOf(surface.get()).width, 8);
  // The ring is opened, or the surface would never go.
  const HeldSurface other = Even(8, 8, 0);
  surface->SetMask(other.get());
}

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
