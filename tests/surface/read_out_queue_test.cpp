// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

// Read-outs of surfaces with a queue, whose last operation goes straight to the host.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "support/guarded_memory.h"
#include "support/surfaces.h"
#include "support/with_features.h"

namespace zor::test {
namespace {

constexpr std::uint8_t kFill = 0xC3;

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

}  // namespace
}  // namespace zor::test
