// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include "drivers/driver_cases.h"
#include "platform/memory.h"

namespace zor::test {
namespace {

/// The host's memory behind a resize: exactly what it is defined to clear.
struct HostPicture {
  HostPicture(std::int32_t stride, std::int32_t height)
      : memory(static_cast<std::size_t>(stride) * static_cast<std::size_t>(height) * 3 / 2,
               GuardedMemory::Edge::kEnd, 0xD1) {
    std::memset(memory.data(), 0xD1, memory.size());
  }
  GuardedMemory memory;
};

TEST(DirectResize, ClearsOneAndAHalfTimesThePictureWhateverTheFormat) {
  for (std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32, FORMAT_GRAY8, FORMAT_YUV420}) {
    const HeldSurface surface = MakeEven(Describe(8, 8, format), 200);
    const std::int32_t stride = 16 * 4 + 8;
    HostPicture host(stride, 12);
    surface->QueueResize(16, 12, 0, SCALE_NEAREST);
    ASSERT_EQ(surface->ReadPixels(host.memory.data(), stride, 1), VED_OK);
    const Bytes bytes = host.memory.Copy();
    const std::size_t row = format == FORMAT_RGB32 ? 64 : format == FORMAT_RGB24 ? 48 : 16;
    const std::size_t plane = static_cast<std::size_t>(stride) * 12;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      const bool luma = i < plane && i % static_cast<std::size_t>(stride) < row;
      const bool chroma = format == FORMAT_YUV420 && i >= plane && (i - plane) % 36 < 8;
      ASSERT_EQ(bytes[i], luma || chroma ? 200 : i < plane ? 16 : 128) << format << " at " << i;
    }
    EXPECT_TRUE(host.memory.GuardsIntact());
  }
}

TEST(DirectResize, LeavesTheSurfaceButForItsDirtyRect) {
  for (std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32, FORMAT_GRAY8, FORMAT_YUV420}) {
    const HeldSurface surface = MakeNoisy(Describe(8, 8, format), 7);
    const HeldSurface mask = MakeEven(Describe(8, 8, FORMAT_GRAY8), 1);
    surface->SetMask(mask.get());
    surface->SetAspectRatio(1, 1);
    std::uint8_t* const pixels = PixelsOf(surface);
    SurfaceDescription before = DescriptionOf(surface.get());
    HostPicture host(80, 8);
    surface->QueueResize(20, 8, 1, SCALE_BILINEAR);
    ASSERT_EQ(surface->ReadPixels(host.memory.data(), 80, 1), VED_OK);
    const SurfaceDescription after = DescriptionOf(surface.get());
    EXPECT_EQ(after.DirtyRect, (RECT{6, 0, 14, 8}));
    before.DirtyRect = after.DirtyRect;
    EXPECT_EQ(std::memcmp(&before, &after, sizeof before), 0);
    EXPECT_EQ(PixelsOf(surface), pixels);
    EXPECT_TRUE(HasAspect(surface));
    EXPECT_EQ(DescriptionOf(mask.get()).width, 8);
  }
}

TEST(DirectResize, ToTheSameSizeCopiesTheRows) {
  const HeldSurface surface = MakeNoisy(Describe(8, 6, FORMAT_RGB32), 8);
  const Bytes pixels = BlockOf(surface.get(), 32 * 6);
  Bytes memory(32 * 6, 0);
  surface->QueueResize(8, 6, 1, SCALE_BILINEAR);
  ASSERT_EQ(surface->ReadPixels(memory.data(), 32, 1), VED_OK);
  EXPECT_EQ(memory, pixels);
}

TEST(DirectResize, TheOtherRowOrderTurnsRgbOver) {
  const HeldSurface surface = MakeNoisy(DescribeOriented(8, 8, FORMAT_RGB32, 0), 9);
  const Bytes pixels = BlockOf(surface.get(), 32 * 8);
  HostPicture host(64, 16);
  surface->QueueResize(16, 16, 0, SCALE_NEAREST);
  ASSERT_EQ(surface->ReadPixels(host.memory.data(), 64, 1), VED_OK);
  for (std::size_t y = 0; y < 16; ++y) {
    for (std::size_t i = 0; i < 64; ++i) {
      ASSERT_EQ(host.memory.data()[64 * y + i], pixels[(15 - y) / 2 * 32 + i / 8 * 4 + i % 4]);
    }
  }
}

TEST(DirectResize, BandsOfTheOtherRowOrderWalkUpFromTheStartSoThatOnlyOneRowIsPainted) {
  const HeldSurface surface = MakeEven(DescribeOriented(8, 8, FORMAT_RGB32, 0), 200);
  HostPicture host(80, 8);
  surface->QueueResize(20, 8, 1, SCALE_NEAREST);
  ASSERT_EQ(surface->ReadPixels(host.memory.data(), 80, 1), VED_OK);
  const Bytes bytes = host.memory.Copy();
  for (std::size_t y = 0; y < 8; ++y) {
    for (std::size_t x = 0; x < 20; ++x) {
      // Other rows show the planar black from before.
      const std::uint8_t band = y == 0 ? 0 : 16;
      ASSERT_EQ(bytes[80 * y + 4 * x], x >= 6 && x < 14 ? 200 : band) << x << "," << y;
    }
  }
  EXPECT_TRUE(host.memory.GuardsIntact());
}

TEST(DirectResize, NeverLeavesTheHostsMemoryAtAnyStride) {
  for (std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32, FORMAT_GRAY8, FORMAT_YUV420}) {
    const HeldSurface surface = MakeNoisy(Describe(16, 8, format), 10);
    for (const auto& [width, height] : {std::pair{20, 40}, {40, 20}, {7, 9}, {9, 5}, {4, 4}}) {
      for (std::int32_t stride : {1, 2, 3, 4, 5, 7, 16, 19, 20, 21, 80, 161}) {
        for (std::uint32_t orientation : {0u, 1u}) {
          for (std::int32_t fit : {0, 1}) {
            for (auto edge : {GuardedMemory::Edge::kStart, GuardedMemory::Edge::kEnd}) {
              GuardedMemory memory(static_cast<std::size_t>(stride * height * 3 / 2), edge);
              surface->QueueResize(width, height, fit, SCALE_BILINEAR);
              ASSERT_EQ(surface->ReadPixels(memory.data(), stride, orientation), VED_OK);
              ASSERT_TRUE(memory.GuardsIntact())
                  << "format " << format << ", " << width << "x" << height << ", stride " << stride
                  << ", orientation " << orientation << ", fit " << fit;
            }
          }
        }
      }
    }
  }
}

TEST(DirectResize, WithoutMemoryForAScratchBlockTheHostsMemoryStays) {
  const HeldSurface surface = MakeNoisy(Describe(8, 8, FORMAT_RGB32), 10);
  Bytes memory(4 * 16 * 3 / 2, 0xD1);
  surface->QueueResize(16, 16, 0, SCALE_NEAREST);
  RefuseAllocation(1);
  const std::int32_t result = surface->ReadPixels(memory.data(), 4, 1);
  RefuseAllocation(0);
  EXPECT_EQ(result, VED_E_OUTOFMEMORY);
  EXPECT_EQ(memory, Bytes(memory.size(), 0xD1));
}

}  // namespace
}  // namespace zor::test
