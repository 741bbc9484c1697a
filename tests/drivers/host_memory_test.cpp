// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include <string>

#include "drivers/driver_cases.h"
#include "platform/memory.h"

namespace zor::test {
namespace {

struct Pair {
  std::int32_t from;
  std::int32_t to;
};

constexpr Pair kPairs[] = {{1, 2}, {1, 4}, {1, 5}, {2, 1}, {2, 4}, {2, 5}, {4, 1},
                           {4, 2}, {4, 5}, {4, 6}, {5, 1}, {5, 2}, {5, 4}};

bool IsPlanar(std::int32_t format) {
  return format == FORMAT_YUV420 || format == FORMAT_YVU420;
}

std::size_t HostBytes(std::int32_t stride, std::int32_t height, std::int32_t format) {
  const auto rows = static_cast<std::size_t>(stride) * static_cast<std::size_t>(height);
  return IsPlanar(format) ? rows * 3 / 2 : rows;
}

std::int32_t NaturalStride(std::int32_t width, std::int32_t format) {
  return format == 1   ? (3 * width + 3) / 4 * 4
         : format == 2 ? 4 * width
         : format == 5 ? 2 * width
                       : width;
}

std::string NameOf(const Pair& pair, std::int32_t width, std::int32_t height, std::uint32_t word) {
  return std::to_string(pair.from) + " to " + std::to_string(pair.to) + ", " +
         std::to_string(width) + "x" + std::to_string(height) + ", word " + std::to_string(word);
}

/// Converts straight into memory.
void ConvertInto(const HeldSurface& surface, std::int32_t format, std::uint8_t* memory,
                 std::int32_t stride, std::uint32_t orientation, std::int32_t result = VED_OK) {
  surface->QueueConvert(format);
  ASSERT_EQ(surface->ReadPixels(memory, stride, orientation), result);
}

TEST(HostMemory, NoConversionLeavesItAtAnyWidthHeightOrStride) {
  for (const Pair& pair : kPairs) {
    for (std::uint32_t word : kWords) {
      const WithFeatures features(word);
      for (std::int32_t width : {4, 5, 8, 9, 10, 16, 17, 24, 25, 40}) {
        for (std::int32_t height : {4, 5, 6, 9}) {
          const HeldSurface surface = MakeNoisy(Describe(width, height, pair.from), 21);
          const std::int32_t natural = NaturalStride(width, pair.to);
          for (std::int32_t stride : {1, 4, width / 2, natural - 1, natural, natural + 5}) {
            for (std::uint32_t orientation : {0u, 1u}) {
              for (auto edge : {GuardedMemory::Edge::kStart, GuardedMemory::Edge::kEnd}) {
                GuardedMemory memory(HostBytes(stride, height, pair.to), edge);
                ConvertInto(surface, pair.to, memory.data(), stride, orientation);
                ASSERT_TRUE(memory.GuardsIntact())
                    << NameOf(pair, width, height, word) << ", stride " << stride;
              }
            }
          }
        }
      }
    }
  }
}

/// What a conversion leaves in memory that held one byte before.
Bytes Converted(const SurfaceDescription& d, const Pair& pair, std::int32_t stride,
                std::uint8_t before) {
  const HeldSurface surface = MakeNoisy(d, 22);
  Bytes memory(HostBytes(stride, d.height, pair.to), before);
  // Bottom-up memory takes the same row order as a new block.
  ConvertInto(surface, pair.to, memory.data(), stride, 0);
  return memory;
}

TEST(NewBlock, HoldsWhatDirectOutputGivesAndZerosWhereNothingIsWritten) {
  for (const Pair& pair : kPairs) {
    if (pair.to == FORMAT_YVU420) continue;
    for (std::uint32_t word : kWords) {
      const WithFeatures features(word);
      for (std::int32_t width = 4; width <= 36; ++width) {
        for (std::int32_t height : {4, 5, 6}) {
          const bool trimmed = pair.from <= 2 && pair.to == FORMAT_YUV420;
          if (trimmed && ((width | height) & 1) != 0) continue;
          const SurfaceDescription d = DescribeOriented(width, height, pair.from, height & 1);
          const std::int32_t stride = NaturalStride(width, pair.to);
          Bytes expected = Converted(d, pair, stride, 0xA5);
          const Bytes other = Converted(d, pair, stride, 0x5A);
          for (std::size_t i = 0; i < expected.size(); ++i) {
            if (expected[i] != other[i]) expected[i] = 0;
          }

          const HeldSurface surface = MakeNoisy(d, 22);
          // Memory of the same size that was in use a moment ago.
          constexpr std::size_t kMuch = 16384;
          for (std::size_t bytes = 256; bytes <= kMuch; bytes += 64) {
            void* const dirty = AllocateBytes(bytes);
            std::memset(dirty, 0xEE, bytes);
            FreeBytes(dirty);
          }
          ASSERT_EQ(surface->ConvertNow(pair.to), VED_OK);
          ASSERT_EQ(DescriptionOf(surface.get()).stride, stride);
          ASSERT_EQ(BlockOf(surface.get(), expected.size()), expected)
              << NameOf(pair, width, height, word);
        }
      }
    }
  }
}

TEST(HostMemory, WithoutMemoryForAScratchBlockItStaysAsItWas) {
  const HeldSurface surface = MakeNoisy(Describe(7, 6, FORMAT_YUV420), 24);
  const SurfaceDescription before = DescriptionOf(surface.get());
  Bytes memory(28 * 6, 0xD1);
  surface->QueueConvert(FORMAT_RGB32);
  RefuseAllocation(1);
  const std::int32_t result = surface->ReadPixels(memory.data(), 28, 1);
  RefuseAllocation(0);
  EXPECT_EQ(result, VED_E_OUTOFMEMORY);
  EXPECT_EQ(memory, Bytes(memory.size(), 0xD1));
  const SurfaceDescription after = DescriptionOf(surface.get());
  EXPECT_EQ(std::memcmp(&before, &after, sizeof before), 0);
}

TEST(HostMemory, AnOddRgbPictureGoesToPlanesInItsOwnSize) {
  // The trimming resize draws into the host's memory, and the conversion then writes over it.
  const SurfaceDescription d = DescribeOriented(7, 5, FORMAT_RGB32, 0);
  const HeldSurface surface = MakeEven(d, 255);
  GuardedMemory memory(HostBytes(8, 5, FORMAT_YUV420), GuardedMemory::Edge::kEnd);
  ConvertInto(surface, FORMAT_YUV420, memory.data(), 8, 0);
  EXPECT_TRUE(memory.GuardsIntact());
  const SurfaceDescription after = DescriptionOf(surface.get());
  EXPECT_EQ(after.width, 7);
  EXPECT_EQ(after.height, 5);
  EXPECT_EQ(after.format, FORMAT_RGB32);
  EXPECT_EQ(after.DirtyRect, (RECT{0, 0, 5, 4}));
  EXPECT_EQ(memory.data()[8], 235);
}

}  // namespace
}  // namespace zor::test
