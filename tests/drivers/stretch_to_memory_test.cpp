// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include "drivers/driver_cases.h"

namespace zor::test {
namespace {

TEST(StretchToMemoryNow, NullMemoryAndEmptySizesAreInvalid) {
  const HeldSurface surface = MakeTarget(8, 8, FORMAT_RGB24);
  Bytes memory(1000, 0xD1);
  EXPECT_EQ(surface->StretchToMemoryNow(nullptr, nullptr, nullptr, 8, 8, 24, 0), VED_E_INVALIDARG);
  for (const auto& [width, height] : {std::pair{0, 8}, {8, 0}, {-1, 8}, {8, -1}}) {
    EXPECT_EQ(surface->StretchToMemoryNow(nullptr, nullptr, memory.data(), width, height, 24, 0),
              VED_E_INVALIDARG);
  }
  EXPECT_EQ(memory, Bytes(1000, 0xD1));
}

TEST(StretchToMemoryNow, RectanglesOutsideAreInvalidAndSmallOnesOk) {
  const HeldSurface surface = MakeTarget(8, 8, FORMAT_RGB24);
  Bytes memory(16 * 16 * 3, 0xD1);
  struct {
    RECT rect;
    std::int32_t result;
  } const cases[] = {{{-1, 0, 8, 8}, VED_E_INVALIDARG},
                     {{0, -1, 8, 8}, VED_E_INVALIDARG},
                     {{3, 0, 4, 8}, VED_OK},
                     {{0, 3, 8, 4}, VED_OK}};
  for (const auto& c : cases) {
    RECT rect = c.rect;
    EXPECT_EQ(surface->StretchToMemoryNow(&rect, nullptr, memory.data(), 16, 16, 48, 0), c.result);
    EXPECT_EQ(surface->StretchToMemoryNow(nullptr, &rect, memory.data(), 16, 16, 48, 0), c.result);
  }
  RECT wide = {0, 0, 9, 8}, wider = {0, 0, 17, 8}, high = {0, 0, 8, 9}, higher = {0, 0, 8, 17};
  EXPECT_EQ(surface->StretchToMemoryNow(&wide, nullptr, memory.data(), 16, 16, 48, 0),
            VED_E_INVALIDARG);
  EXPECT_EQ(surface->StretchToMemoryNow(&high, nullptr, memory.data(), 16, 16, 48, 0),
            VED_E_INVALIDARG);
  EXPECT_EQ(surface->StretchToMemoryNow(nullptr, &wider, memory.data(), 16, 16, 48, 0),
            VED_E_INVALIDARG);
  EXPECT_EQ(surface->StretchToMemoryNow(nullptr, &higher, memory.data(), 16, 16, 48, 0),
            VED_E_INVALIDARG);
  EXPECT_EQ(memory, Bytes(memory.size(), 0xD1));
}

TEST(StretchToMemoryNow, AStrideUnderOneIsTheNaturalOne) {
  struct {
    std::int32_t format, width, stride, row;
  } const cases[] = {{FORMAT_RGB24, 10, 32, 30},
                     {FORMAT_RGB32, 10, 40, 40},
                     {FORMAT_GRAY8, 10, 12, 10},
                     {FORMAT_YUV420, 10, 10, 10}};
  for (const auto& c : cases) {
    for (std::int32_t stride : {0, -1, INT32_MIN}) {
      const HeldSurface surface = MakeTarget(8, 8, c.format, 1, 99);
      const auto plane = static_cast<std::size_t>(c.stride) * 6;
      GuardedMemory memory(c.format == FORMAT_YUV420 ? plane * 3 / 2 : plane,
                           GuardedMemory::Edge::kEnd, 0xD1);
      std::memset(memory.data(), 0xD1, memory.size());
      ASSERT_EQ(surface->StretchToMemoryNow(nullptr, nullptr, memory.data(), c.width, 6, stride,
                                            SCALE_NEAREST),
                VED_OK);
      const Bytes bytes = memory.Copy();
      for (std::size_t i = 0; i < bytes.size(); ++i) {
        const bool padding = static_cast<std::int32_t>(i) % c.stride >= c.row;
        ASSERT_EQ(bytes[i], padding ? 0xD1 : 99) << c.format << " at " << i;
      }
      EXPECT_TRUE(memory.GuardsIntact());
    }
  }
}

TEST(StretchToMemoryNow, RectanglesCountInMemoryRowsAndTheDirtyRectStays) {
  for (std::uint32_t orientation : {0u, 1u}) {
    SurfaceDescription d = DescribeOriented(8, 10, FORMAT_RGB32, orientation);
    d.DirtyRect = {2, 2, 4, 4};
    const HeldSurface surface = MakeNoisy(d, 14);
    const Bytes from = PictureOf(surface);
    Bytes memory(64 * 12, 0xD1), expected = memory;
    RECT part = {3, 2, 7, 5}, to = {4, 1, 8, 4};
    ASSERT_EQ(surface->StretchToMemoryNow(&part, &to, memory.data(), 16, 12, 64, SCALE_NEAREST),
              VED_OK);
    for (std::size_t y = 0; y < 3; ++y) {
      for (std::size_t i = 0; i < 16; ++i) {
        expected[64 * (1 + y) + 16 + i] = from[32 * (2 + y) + 12 + i];
      }
    }
    EXPECT_EQ(memory, expected) << orientation;
    EXPECT_EQ(part, (RECT{3, 2, 7, 5}));
    EXPECT_EQ(to, (RECT{4, 1, 8, 4}));
    EXPECT_EQ(DirtyRectOf(surface), (RECT{2, 2, 4, 4}));
  }
}

TEST(StretchToMemoryNow, PackedAndUnknownFormatsAreUnsupported) {
  const HeldSurface packed = MakeTarget(8, 8, FORMAT_YUY2);
  Bytes memory(256, 0xD1);
  EXPECT_EQ(packed->StretchToMemoryNow(nullptr, nullptr, memory.data(), 8, 8, 16, 0),
            VED_E_UNSUPPORTED);
  SurfaceDescription d = Describe(8, 8, FORMAT_GRAY8);
  d.format = 9;
  const HeldSurface unknown = MakeRaw(d, 64);
  EXPECT_EQ(unknown->StretchToMemoryNow(nullptr, nullptr, memory.data(), 8, 8, 16, 0),
            VED_E_UNSUPPORTED);
  EXPECT_EQ(memory, Bytes(256, 0xD1));
}

TEST(StretchToMemoryNow, ASurfaceWithoutPixelsDrawsNothing) {
  const HeldSurface empty = MakeRaw(Describe(8, 8, FORMAT_RGB24), 0);
  Bytes memory(256, 0xD1);
  EXPECT_EQ(empty->StretchToMemoryNow(nullptr, nullptr, memory.data(), 8, 8, 24, 0), VED_OK);
  EXPECT_EQ(memory, Bytes(256, 0xD1));
}

TEST(StretchToMemoryNow, NeverLeavesTheHostsMemoryAtAnyStride) {
  for (std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32, FORMAT_GRAY8, FORMAT_YUV420}) {
    const bool planar = format == FORMAT_YUV420;
    const HeldSurface surface = MakeNoisy(Describe(16, 8, format), 15);
    for (const auto& [width, height] : {std::pair{20, 40}, {40, 20}, {7, 9}, {9, 5}, {2, 2}}) {
      for (std::int32_t stride : {1, 2, 3, 4, 5, 7, 16, 19, 20, 21, 80, 161}) {
        for (ScaleMode mode : {SCALE_NEAREST, SCALE_BILINEAR, SCALE_BOX, SCALE_AREA}) {
          for (auto edge : {GuardedMemory::Edge::kStart, GuardedMemory::Edge::kEnd}) {
            for (bool whole : {true, false}) {
              const auto bytes = static_cast<std::size_t>(stride * height);
              GuardedMemory memory(planar ? bytes * 3 / 2 : bytes, edge);
              RECT to = {width - 2, height - 2, width, height};
              ASSERT_EQ(surface->StretchToMemoryNow(nullptr, whole ? nullptr : &to, memory.data(),
                                                    width, height, stride, mode),
                        VED_OK);
              ASSERT_TRUE(memory.GuardsIntact())
                  << "format " << format << ", " << width << "x" << height << ", stride " << stride;
            }
          }
        }
      }
    }
  }
}

TEST(StretchToMemory, FlushesFirst) {
  const HeldSurface surface = MakeTarget(8, 8, FORMAT_RGB32, 1, 99);
  surface->QueueConvert(FORMAT_RGB24);
  Bytes memory(24 * 8, 0xD1);
  ASSERT_EQ(surface->StretchToMemory(nullptr, nullptr, memory.data(), 8, 8, 24, SCALE_NEAREST),
            VED_OK);
  EXPECT_EQ(memory, Bytes(24 * 8, 99));
}

}  // namespace
}  // namespace zor::test
