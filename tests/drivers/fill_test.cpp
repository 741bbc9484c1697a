// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "surface/fill.h"

#include <gtest/gtest.h>

#include <cmath>

#include "drivers/driver_cases.h"

namespace zor::test {
namespace {

constexpr std::uint8_t kOld = 0x77;

/// The stated bytes of a fill, one pixel after the other, in a copy of the memory. A write outside
/// of it throws.
struct Canvas {
  Bytes bytes;
  void Put(std::int64_t at, std::uint32_t value) {
    bytes.at(static_cast<std::size_t>(at)) = static_cast<std::uint8_t>(value);
  }
};

struct Case {
  std::int32_t width, height, stride;
  const RECT* rect;
  std::uint32_t colour;

  RECT Area() const {
    if (rect != nullptr) return *rect;
    return RECT{0, 0, width, height};
  }
};

void StateRgb(Canvas* canvas, const Case& c, std::int32_t bits) {
  const std::int32_t pixel = bits / 8;
  if (pixel < 2 || pixel > 4) return;
  const RECT area = c.Area();
  // Byte 0 of the colour is red: pixels are blue, green, red, 0.
  const std::uint32_t word[4] = {c.colour >> 16 & 255, c.colour >> 8 & 255, c.colour & 255, 0};
  const bool black = (c.colour & 0xFFFFFF) == 0;
  for (std::int64_t y = area.top; y < area.bottom; ++y) {
    const std::int64_t row = y * c.stride + std::int64_t{area.left} * pixel;
    const std::int64_t count = area.right - area.left;
    for (std::int64_t i = 0; i < count * pixel; ++i) canvas->Put(row + i, word[i % pixel]);
    // A coloured row of 3-byte pixels spills the top byte of its last store.
    const std::int64_t spill = row + count * 3;
    if (pixel == 3 && !black && spill < std::int64_t{c.stride} * c.height) canvas->Put(spill, 0);
  }
}

/// @return luma, first chroma, second chroma of a colour word: byte 0 is blue.
void StateYuv(std::uint32_t colour, std::uint32_t out[3]) {
  const double b = colour & 255, g = colour >> 8 & 255, r = colour >> 16 & 255;
  out[0] = static_cast<std::uint32_t>(std::floor((66 * r + 129 * g + 25 * b + 128) / 256) + 16);
  out[1] = static_cast<std::uint32_t>(std::floor((112 * b - 38 * r - 74 * g + 128) / 256) + 128);
  out[2] = static_cast<std::uint32_t>(std::floor((112 * r - 94 * g - 18 * b + 128) / 256) + 128);
}

void StatePlanar(Canvas* canvas, const Case& c) {
  std::uint32_t yuv[3];
  StateYuv(c.colour, yuv);
  const std::int64_t s = c.stride, plane = s * c.height;
  if (c.rect == nullptr) {
    for (std::int64_t i = 0; i < plane; ++i) canvas->Put(i, yuv[0]);
    for (std::int64_t i = 0; i < (s / 2) * c.height / 2; ++i) {
      canvas->Put(plane + i, yuv[1]);
      canvas->Put(plane + plane / 4 + i, yuv[2]);
    }
    return;
  }
  const RECT area = *c.rect;
  for (std::int64_t y = area.top; y < area.bottom; ++y) {
    for (std::int64_t x = area.left; x < area.right; ++x) canvas->Put(y * s + x, yuv[0]);
  }
  const std::int64_t corner = (area.top / 2) * s / 2 + area.left / 2;
  for (int part = 1; part <= 2; ++part) {
    const std::int64_t start = plane + (part == 2 ? plane / 4 : 0) + corner;
    for (std::int64_t y = 0; y < (area.bottom - area.top) / 2; ++y) {
      for (std::int64_t x = 0; x < (area.right - area.left) / 2; ++x) {
        canvas->Put(start + y * (s / 2) + x, yuv[part]);
      }
    }
  }
}

void StatePacked(Canvas* canvas, const Case& c) {
  std::uint32_t yuv[3];
  StateYuv(c.colour, yuv);
  const std::uint32_t word[4] = {yuv[1], yuv[0], yuv[2], yuv[0]};
  const RECT area = c.Area();
  const std::int64_t width = area.right - area.left;
  for (std::int64_t y = 0; y < area.bottom - area.top; ++y) {
    const std::int64_t row = y * c.stride;
    for (std::int64_t i = 0; i < width / 2 * 4; ++i) canvas->Put(row + i, word[i % 4]);
    if (width % 2 != 0) {
      canvas->Put(row + width / 2 * 4, yuv[0]);
      canvas->Put(row + width / 2 * 4 + 1, yuv[2]);
    }
  }
}

constexpr std::uint32_t kColours[] = {0, 0x0000FF, 0xFF0000, 0x12345678, 0xFF000000, 0x00FF00};

/// Calls check for every rectangle of pictures of several sizes, and for none.
template <class Check>
void ForRectangles(Check check) {
  for (std::int32_t width : {1, 2, 5, 8, 33}) {
    for (std::int32_t height : {1, 2, 5, 6}) {
      check(width, height, nullptr);
      for (std::int32_t left = 0; left < width; left += width / 4 + 1) {
        for (std::int32_t top = 0; top < height; ++top) {
          for (std::int32_t right = left + 1; right <= width; right += width / 4 + 1) {
            for (std::int32_t bottom = top + 1; bottom <= height; ++bottom) {
              const RECT rect = {left, top, right, bottom};
              check(width, height, &rect);
            }
          }
        }
      }
    }
  }
}

TEST(FillColour, FollowsTheIntegerMatrixWithBlueInByteZero) {
  for (std::uint32_t b = 0; b < 256; b += 5) {
    for (std::uint32_t g = 0; g < 256; g += 5) {
      for (std::uint32_t r = 0; r < 256; r += 5) {
        std::uint32_t expected[3];
        StateYuv(b | g << 8 | r << 16, expected);
        const FillYuv yuv = FillColourToYuv(b | g << 8 | r << 16 | 0xAB000000u);
        ASSERT_EQ(yuv.y, expected[0]);
        ASSERT_EQ(yuv.u, expected[1]);
        ASSERT_EQ(yuv.v, expected[2]);
      }
    }
  }
}

TEST(FillColour, BlackIsVideoBlackAndPureBlueIsLumaFortyOne) {
  const FillYuv black = FillColourToYuv(0), blue = FillColourToYuv(0x0000FF);
  EXPECT_EQ(black.y, 16);
  EXPECT_EQ(black.u, 128);
  EXPECT_EQ(black.v, 128);
  EXPECT_EQ(blue.y, 41);
  EXPECT_EQ(blue.u, 240);
  EXPECT_EQ(blue.v, 110);
}

TEST(FillRectRgb, PaintsTheStatedBytesOfEveryRectangleAndNoOthers) {
  ForRectangles([](std::int32_t width, std::int32_t height, const RECT* rect) {
    for (std::int32_t bits : {8, 16, 24, 32}) {
      for (std::int32_t padding : {0, 1, 4}) {
        const std::int32_t stride = width * bits / 8 + padding;
        for (std::uint32_t colour : kColours) {
          GuardedMemory memory(static_cast<std::size_t>(stride * height), GuardedMemory::Edge::kEnd,
                               kOld);
          Canvas canvas{Bytes(memory.size(), kOld)};
          std::memset(memory.data(), kOld, memory.size());
          const Case c{width, height, stride, rect, colour};
          StateRgb(&canvas, c, bits);
          ASSERT_EQ(FillRectRgb(memory.data(), width, height, stride, rect, bits, colour), 1u);
          ASSERT_EQ(memory.Copy(), canvas.bytes) << width << "x" << height << " " << bits
                                                 << " bits, colour " << colour << ", " << c.Area();
          ASSERT_TRUE(memory.GuardsIntact());
        }
      }
    }
  });
}

TEST(FillRectYuv420, PaintsTheStatedBytesOfEveryRectangleAndNoOthers) {
  ForRectangles([](std::int32_t width, std::int32_t height, const RECT* rect) {
    for (std::int32_t padding : {0, 1, 4}) {
      const std::int32_t stride = width + padding;
      for (std::uint32_t colour : kColours) {
        GuardedMemory memory(static_cast<std::size_t>(stride * height * 3 / 2),
                             GuardedMemory::Edge::kEnd, kOld);
        std::memset(memory.data(), kOld, memory.size());
        Canvas canvas{Bytes(memory.size(), kOld)};
        const Case c{width, height, stride, rect, colour};
        StatePlanar(&canvas, c);
        ASSERT_EQ(FillRectYuv420(memory.data(), width, height, stride, rect, colour), 1u);
        ASSERT_EQ(memory.Copy(), canvas.bytes)
            << width << "x" << height << ", colour " << colour << ", " << c.Area();
        ASSERT_TRUE(memory.GuardsIntact());
      }
    }
  });
}

TEST(FillRectPacked422, StartsAtThePicturesFirstByteWhateverTheRectanglesPosition) {
  ForRectangles([](std::int32_t width, std::int32_t height, const RECT* rect) {
    for (std::int32_t padding : {0, 3}) {
      const std::int32_t stride = width * 2 + padding;
      for (std::uint32_t colour : kColours) {
        GuardedMemory memory(static_cast<std::size_t>(stride * height), GuardedMemory::Edge::kEnd,
                             kOld);
        std::memset(memory.data(), kOld, memory.size());
        Canvas canvas{Bytes(memory.size(), kOld)};
        const Case c{width, height, stride, rect, colour};
        StatePacked(&canvas, c);
        ASSERT_EQ(FillRectPacked422(memory.data(), width, height, stride, rect, colour), 1u);
        ASSERT_EQ(memory.Copy(), canvas.bytes)
            << width << "x" << height << ", colour " << colour << ", " << c.Area();
        ASSERT_TRUE(memory.GuardsIntact());
      }
    }
  });
}

TEST(FillRect, NullPixelsAndRectanglesOutOfBoundsGiveZeroAndThoseWithoutAreaOne) {
  struct {
    RECT rect;
    std::uint32_t result;
  } const cases[] = {{{-1, 0, 4, 4}, 0}, {{0, -1, 4, 4}, 0}, {{0, 0, 9, 4}, 0},
                     {{0, 0, 4, 7}, 0},  {{8, 0, 8, 6}, 1},  {{0, 3, 8, 3}, 1},
                     {{5, 4, 2, 6}, 1},  {{-1, 3, 8, 3}, 0}, {{0, 0, INT32_MIN, 6}, 1}};
  Bytes memory(8 * 6 * 4, kOld);
  const Bytes before = memory;
  for (const auto& c : cases) {
    EXPECT_EQ(FillRectRgb(memory.data(), 8, 6, 32, &c.rect, 32, 0xFFFFFF), c.result) << c.rect;
    EXPECT_EQ(FillRectYuv420(memory.data(), 8, 6, 8, &c.rect, 0xFFFFFF), c.result) << c.rect;
    EXPECT_EQ(FillRectPacked422(memory.data(), 8, 6, 16, &c.rect, 0xFFFFFF), c.result) << c.rect;
  }
  for (const auto& [width, height] : {std::pair{0, 6}, {8, 0}, {-8, 6}, {8, -6}}) {
    EXPECT_EQ(FillRectRgb(memory.data(), width, height, 32, nullptr, 32, 1), 1u);
    EXPECT_EQ(FillRectYuv420(memory.data(), width, height, 8, nullptr, 1), 1u);
    EXPECT_EQ(FillRectPacked422(memory.data(), width, height, 16, nullptr, 1), 1u);
  }
  EXPECT_EQ(memory, before);
  EXPECT_EQ(FillRectRgb(nullptr, 8, 6, 32, nullptr, 32, 1), 0u);
  EXPECT_EQ(FillRectYuv420(nullptr, 8, 6, 8, nullptr, 1), 0u);
  EXPECT_EQ(FillRectPacked422(nullptr, 8, 6, 16, nullptr, 1), 0u);
}

TEST(FillRectRgb, ADepthThatMovesCornersOutOfTheMemoryPaintsNothing) {
  // 816 bits make 102 "bytes per pixel", which rows take as 2 and corners as 102.
  const RECT corner = {6, 4, 8, 6};
  GuardedMemory memory(16 * 6, GuardedMemory::Edge::kEnd, kOld);
  std::memset(memory.data(), kOld, memory.size());
  const Bytes before = memory.Copy();
  EXPECT_EQ(FillRectRgb(memory.data(), 8, 6, 16, &corner, 816, 0x010203), 1u);
  EXPECT_EQ(memory.Copy(), before);
  EXPECT_EQ(FillRectRgb(memory.data(), 8, 6, 16, nullptr, 816, 0x010203), 1u);
  Bytes painted;
  for (int i = 0; i < 8 * 6; ++i) painted.insert(painted.end(), {0x01, 0x02});
  EXPECT_EQ(memory.Copy(), painted);
}

TEST(FillRow24, SpillsTheTopByteBehindItsLastPixelUnlessTheMemoryEndsThere) {
  Bytes row(10, kOld);
  FillRow24(row.data(), 0xAABBCCDD, 3, row.data() + 10);
  EXPECT_EQ(row, (Bytes{0xDD, 0xCC, 0xBB, 0xDD, 0xCC, 0xBB, 0xDD, 0xCC, 0xBB, 0xAA}));
  row.assign(10, kOld);
  FillRow24(row.data(), 0xAABBCCDD, 3, row.data() + 9);
  EXPECT_EQ(row[8], 0xBB);
  EXPECT_EQ(row[9], kOld);
}

TEST(FillRow16, TakesTheLowHalfOfTheWordAtOddAndEvenCounts) {
  for (std::int32_t count = 0; count < 9; ++count) {
    Bytes row(20, kOld);
    FillRow16(row.data(), 0xFFFF2211, count);
    for (std::int32_t i = 0; i < 20; ++i) {
      EXPECT_EQ(row[static_cast<std::size_t>(i)], i >= 2 * count ? kOld : i % 2 ? 0x22 : 0x11);
    }
  }
}

TEST(FillRow32, StoresTheWholeWord) {
  for (std::int32_t count = 0; count < 20; ++count) {
    Bytes row(80, kOld);
    FillRow32(row.data(), 0x44332211, count);
    for (std::int32_t i = 0; i < 80; ++i) {
      EXPECT_EQ(row[static_cast<std::size_t>(i)], i >= 4 * count ? kOld : 0x11 * (i % 4 + 1));
    }
  }
}

TEST(FillRows, TakesTwoThreeFourAndOneHundredAndTwoBytesAndPaintsNothingForOthers) {
  for (std::int32_t bytes : {-3, 0, 1, 2, 3, 4, 5, 8, 101, 102, 103}) {
    for (std::uint32_t value : {0u, 0x00332211u}) {
      Bytes memory(3 * 20, kOld);
      FillRows(memory.data(), 20, bytes, 4, 3, value, memory.data() + memory.size());
      const std::int32_t pixel = bytes == 102 ? 2 : bytes >= 2 && bytes <= 4 ? bytes : 0;
      for (std::int32_t i = 0; i < 60; ++i) {
        const std::int32_t x = i % 20;
        const bool spill = pixel == 3 && value != 0 && x == 12;
        const std::uint32_t expected = spill            ? 0
                                       : x >= pixel * 4 ? kOld
                                                        : value >> 8 * (x % pixel) & 255;
        EXPECT_EQ(memory[static_cast<std::size_t>(i)], expected) << bytes << " bytes at " << i;
      }
    }
  }
}

TEST(FillRows, RowsThatRunUpwardEachSpillIntoTheRowDoneBefore) {
  // Three tight rows of two 3-byte pixels, from the last one in memory up: each next row's top byte
  // falls on the first byte of the row before it, and only there.
  Bytes memory(18, kOld);
  FillRows(memory.data() + 12, -6, 3, 2, 3, 0xAABBCCDD, memory.data() + 18);
  EXPECT_EQ(memory, (Bytes{0xDD, 0xCC, 0xBB, 0xDD, 0xCC, 0xBB, 0xAA, 0xCC, 0xBB, 0xDD, 0xCC, 0xBB,
                           0xAA, 0xCC, 0xBB, 0xDD, 0xCC, 0xBB}));
}

TEST(FillRows, AHeightOfZeroOrLessPaintsNothing) {
  Bytes memory(60, kOld);
  for (std::int32_t height : {0, -1, INT32_MIN}) {
    FillRows(memory.data(), 20, 4, 4, height, 1, memory.data() + 60);
    FillRows(memory.data(), 20, 4, 4, height, 0, memory.data() + 60);
  }
  EXPECT_EQ(memory, Bytes(60, kOld));
}

}  // namespace
}  // namespace zor::test
