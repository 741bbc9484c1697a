// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "support/guarded_memory.h"
#include "support/surfaces.h"

namespace zor::test {
namespace {

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

}  // namespace
}  // namespace zor::test
