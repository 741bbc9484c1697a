// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert_public/pairs.h"

#include <algorithm>

#include "convert/wrappers.h"
#include "platform/memory.h"
#include "platform/pixel_block.h"

namespace zor::test {
namespace {

constexpr std::size_t kGuard = 1024;

struct Layout {
  std::int32_t bitsPerPixel;
  std::uint32_t orientation;
  std::int32_t stride;
  std::size_t bytes;
};

Layout LayoutOf(std::int32_t format, std::int32_t width, std::int32_t height) {
  const auto size = [&](std::int32_t stride) { return static_cast<std::size_t>(stride * height); };
  switch (format) {
    case 1: {
      const std::int32_t stride = (width * 3 + 3) / 4 * 4;
      return {24, 0, stride, size(stride)};
    }
    case 2:
      return {32, 0, width * 4, size(width * 4)};
    case 5:
      return {16, 1, width * 2, size(width * 2)};
    default:
      return {12, 1, width, size(width) * 3 / 2};
  }
}

/// Calls the pair's wrapper on a picture with zeros in front and behind, as a block has them.
void CallWrapper(const FormatPair& pair, const Bytes& picture, std::int32_t sourceStride,
                 std::uint8_t* target, std::int32_t targetStride, std::int32_t width,
                 std::int32_t height, std::uint32_t flip) {
  const std::int32_t depth = pair.from <= 2 ? pair.from * 8 + 16 : pair.to * 8 + 16;
  const std::uint32_t word = CpuFeatureWord;
  Bytes block(picture.size() + 2 * kGuard, 0);
  std::uint8_t* source = block.data() + kGuard;
  std::memcpy(source, picture.data(), picture.size());
  if (pair.from == 1 && pair.to == 2) {
    PackRgb24ToRgb32(source, sourceStride, target, targetStride, width, height, word, 1);
  } else if (pair.from == 2 && pair.to == 1) {
    PackRgb32ToRgb24(source, sourceStride, target, targetStride, width, height, word, 1);
  } else if (pair.from <= 2 && pair.to == 4) {
    ConvertRgbToYuv420(source, sourceStride, target, targetStride, width, height, word, depth,
                       flip);
  } else if (pair.from <= 2) {
    ConvertRgbToYuy2(source, sourceStride, target, targetStride, width, height, word, depth, flip);
  } else if (pair.from == 4 && pair.to <= 2) {
    ConvertYuv420ToRgb(source, sourceStride, target, targetStride, width, height, word, depth,
                       flip);
  } else if (pair.from == 4) {
    ConvertYuv420ToYuy2(source, sourceStride, target, targetStride, width, height, word);
  } else if (pair.to <= 2) {
    ConvertYuy2ToRgb(source, sourceStride, target, targetStride, width, height, word, depth, flip);
  } else {
    ConvertYuy2ToYuv420(source, sourceStride, target, targetStride, width, height, word);
  }
}

constexpr std::int32_t kWidth = 48;
constexpr std::int32_t kHeight = 20;

TEST(ConvertNow, EveryPairMakesANewBlockInBothRowOrders) {
  for (const FormatPair& pair : kPairs) {
    if (pair.to == 6) continue;
    for (std::uint32_t word : kWords) {
      const WithFeatures features(word);
      for (std::uint32_t orientation : {0u, 1u}) {
        const SurfaceDescription d = DescribeOriented(kWidth, kHeight, pair.from, orientation);
        const Bytes picture = Picture(d);
        const HeldSurface surface = MakePicture(d, picture);
        ASSERT_EQ(surface->ConvertNow(pair.to), VED_OK) << NameOf(pair);

        const Layout layout = LayoutOf(pair.to, kWidth, kHeight);
        const SurfaceDescription after = DescriptionOf(surface.get());
        EXPECT_EQ(after.format, pair.to);
        EXPECT_EQ(after.bitsPerPixel, layout.bitsPerPixel);
        EXPECT_EQ(after.Orientation, layout.orientation);
        EXPECT_EQ(after.stride, layout.stride);
        EXPECT_EQ(after.width, kWidth);
        EXPECT_EQ(after.height, kHeight);

        Bytes expected(layout.bytes);
        CallWrapper(pair, picture, d.stride, expected.data(), layout.stride, kWidth, kHeight,
                    orientation);
        EXPECT_EQ(BlockOf(surface.get(), layout.bytes), expected)
            << NameOf(pair) << ", word " << word << ", orientation " << orientation;
      }
    }
  }
}

TEST(ConvertNow, ANewBlockIsOwnedAndTheOldOneFreedOnlyIfItWas) {
  for (std::uint32_t flags : {0u, 1u, 2u, 4u, 5u}) {
    const std::int64_t live = LiveAllocations();
    std::uint8_t* old = nullptr;
    const bool owned = (flags & 5) != 0;
    {
      const SurfaceDescription d = DescribeOriented(kWidth, kHeight, 1, 0);
      const HeldSurface surface = MakePicture(d, Picture(d));
      surface->GetPixels(&old);
      surface->SetStorageFlags(flags);
      const std::int64_t before = LiveAllocations();
      ASSERT_EQ(surface->ConvertNow(2), VED_OK);
      EXPECT_EQ(LiveAllocations(), before + (owned ? 0 : 1)) << flags;
    }
    EXPECT_EQ(LiveAllocations(), live + (owned ? 0 : 1)) << flags;
    if (!owned) FreePixelBlock(old);
  }
}

TEST(ConvertNow, EveryPairWritesIntoHostMemoryInBothRowOrdersAndLeavesTheSurface) {
  for (const FormatPair& pair : kPairs) {
    if (pair.to == 6) continue;
    for (std::uint32_t word : kWords) {
      const WithFeatures features(word);
      for (std::uint32_t orientation : {0u, 1u}) {
        for (std::uint32_t wanted : {0u, 1u}) {
          const SurfaceDescription d = DescribeOriented(kWidth, kHeight, pair.from, orientation);
          const Bytes picture = Picture(d);
          const HeldSurface surface = MakePicture(d, picture);
          const SurfaceDescription before = DescriptionOf(surface.get());
          surface->QueueConvert(pair.to);
          const std::int32_t stride = LayoutOf(pair.to, kWidth, kHeight).stride + 16;
          const std::size_t bytes =
              static_cast<std::size_t>(stride * kHeight) * (pair.to == 4 ? 3 : 2) / 2;
          Bytes memory(bytes, 0xD1), expected = memory;
          ASSERT_EQ(surface->ReadPixels(memory.data(), stride, wanted), VED_OK) << NameOf(pair);
          CallWrapper(pair, picture, d.stride, expected.data(), stride, kWidth, kHeight,
                      orientation != wanted ? 1 : 0);
          EXPECT_EQ(memory, expected)
              << NameOf(pair) << ", word " << word << ", " << orientation << " asked as " << wanted;
          const SurfaceDescription after = DescriptionOf(surface.get());
          EXPECT_EQ(std::memcmp(&after, &before, sizeof after), 0);
          EXPECT_EQ(BlockOf(surface.get(), picture.size()), picture) << NameOf(pair);
        }
      }
    }
  }
}

TEST(ConvertNow, RgbComesOutUprightInItsNewRowOrder) {
  // A bottom-up RGB32 picture whose top row is white becomes a top-down planar one, and back.
  const SurfaceDescription d = DescribeOriented(32, 8, 2, 0);
  Bytes picture(PictureBytes(d), 0);
  std::fill(picture.end() - 2 * 128, picture.end(), std::uint8_t{255});  // top two rows
  const HeldSurface surface = MakePicture(d, picture);
  ASSERT_EQ(surface->ConvertNow(4), VED_OK);
  const Bytes planes = BlockOf(surface.get(), 32 * 8);
  EXPECT_EQ(planes[0], 235);
  EXPECT_EQ(planes[7 * 32], 16);
}

TEST(ConvertNow, ItsOwnFormatIsOkAndChangesNoPixel) {
  for (std::int32_t format : {1, 2, 4, 5}) {
    const SurfaceDescription d = DescribeOriented(16, 8, format, 1);
    const Bytes picture = Picture(d);
    const HeldSurface surface = MakePicture(d, picture);
    EXPECT_EQ(surface->ConvertNow(format), VED_OK);
    EXPECT_EQ(BlockOf(surface.get(), picture.size()), picture);
    EXPECT_EQ(DescriptionOf(surface.get()).Orientation, 1u);
  }
}

TEST(ConvertNow, PairsOutsideOfTheMatrixAreUnsupportedAndChangeNothing) {
  constexpr FormatPair kOthers[] = {{3, 1}, {3, 2}, {3, 4},  {3, 5}, {3, 6}, {1, 6},
                                    {2, 6}, {5, 6}, {1, 3},  {2, 3}, {4, 3}, {5, 3},
                                    {1, 0}, {4, 7}, {5, -1}, {1, 99}};
  for (const FormatPair& pair : kOthers) {
    // Odd sizes: the trimming belongs to valid pairs only.
    const bool planar = pair.from == 4;
    const SurfaceDescription d = DescribeOriented(planar ? 8 : 7, planar ? 8 : 5, pair.from, 1);
    const HeldSurface surface = MakeBlank(d);
    EXPECT_EQ(surface->ConvertNow(pair.to), VED_E_UNSUPPORTED) << NameOf(pair);
    EXPECT_EQ(DescriptionOf(surface.get()).width, d.width);
    EXPECT_EQ(DescriptionOf(surface.get()).format, pair.from);
  }
}

TEST(ConvertNow, OddRgbIsTrimmedToEvenSizesOnTheWayToPlanes) {
  for (std::int32_t format : {1, 2}) {
    const HeldSurface surface = MakeBlank(DescribeOriented(7, 5, format, 0));
    ASSERT_EQ(surface->ConvertNow(4), VED_OK);
    const SurfaceDescription after = DescriptionOf(surface.get());
    EXPECT_EQ(after.width, 6);
    EXPECT_EQ(after.height, 4);
    EXPECT_EQ(after.stride, 6);
  }
}

TEST(ConvertNow, OddRgbIsNotTrimmedOnTheWayToYuy2) {
  const HeldSurface surface = MakeBlank(DescribeOriented(7, 5, 1, 0));
  ASSERT_EQ(surface->ConvertNow(5), VED_OK);
  EXPECT_EQ(DescriptionOf(surface.get()).width, 7);
  EXPECT_EQ(DescriptionOf(surface.get()).stride, 14);
}

TEST(ConvertNow, ColumnsThatTheTailOfYuy2LeavesAloneHoldNoOldMemory) {
  const WithFeatures features(kAllBits);
  for (std::int32_t format : {1, 2}) {
    const HeldSurface surface = MakeBlank(DescribeOriented(1004, 8, format, 0));
    // Used memory of the size of the target's block is lying about.
    for (int i = 0; i < 4; ++i) {
      const SurfaceDescription d = DescribeOriented(1004, 8, 5, 1);
      MakePicture(d, Bytes(PictureBytes(d), 0xEE));
    }
    ASSERT_EQ(surface->ConvertNow(5), VED_OK);
    const Bytes block = BlockOf(surface.get(), 2008 * 8);
    for (std::size_t y = 0; y < 8; ++y) {
      for (std::size_t i = 2000; i < 2008; ++i) ASSERT_EQ(block[2008 * y + i], 0);
    }
  }
}

TEST(ConvertNow, PlanarOfWidthSixBecomesRgb24OfStrideTwenty) {
  const HeldSurface surface = MakeBlank(DescribeOriented(6, 4, 4, 1));
  ASSERT_EQ(surface->ConvertNow(1), VED_OK);
  EXPECT_EQ(DescriptionOf(surface.get()).stride, 20);
}

TEST(ConvertNow, ExchangingThePlanesTwiceGivesTheSameBytesAndKeepsFormatFour) {
  for (std::uint32_t word : kWords) {
    const WithFeatures features(word);
    const SurfaceDescription d = DescribeOriented(48, 10, 4, 1);
    const Bytes picture = Picture(d);
    const HeldSurface surface = MakePicture(d, picture);
    ASSERT_EQ(surface->ConvertNow(6), VED_OK);
    EXPECT_EQ(DescriptionOf(surface.get()).format, 4);
    Bytes expected = picture;
    std::swap_ranges(expected.begin() + 480, expected.begin() + 600, expected.begin() + 600);
    EXPECT_EQ(BlockOf(surface.get(), picture.size()), expected);
    ASSERT_EQ(surface->ConvertNow(6), VED_OK);
    EXPECT_EQ(DescriptionOf(surface.get()).format, 4);
    EXPECT_EQ(BlockOf(surface.get(), picture.size()), picture);
  }
}

TEST(ConvertNow, ExchangingIntoHostMemoryWritesTheSecondPlaneFirst) {
  const SurfaceDescription d = DescribeOriented(48, 10, 4, 1);
  const Bytes picture = Picture(d);
  const HeldSurface surface = MakePicture(d, picture);
  surface->QueueConvert(6);
  Bytes memory(720);
  ASSERT_EQ(surface->ReadPixels(memory.data(), 48, 1), VED_OK);
  Bytes expected = picture;
  std::swap_ranges(expected.begin() + 480, expected.begin() + 600, expected.begin() + 600);
  EXPECT_EQ(memory, expected);
  EXPECT_EQ(BlockOf(surface.get(), picture.size()), picture);
}

TEST(MaskFromAlpha, EveryTargetOfRgb32KeepsTheTurnedComplementOfAlpha) {
  for (std::int32_t format : {1, 4, 5}) {
    const SurfaceDescription d = DescribeOriented(24, 6, 2, 0);
    const Bytes picture = Picture(d);
    const HeldSurface surface = MakePicture(d, picture);
    ASSERT_EQ(surface->ConvertNow(format), VED_OK);
    HeldSurface mask;
    surface->GetMask(mask.Reset());
    ASSERT_TRUE(mask) << format;
    const SurfaceDescription m = DescriptionOf(mask.get());
    EXPECT_EQ(m.format, FORMAT_GRAY8);
    EXPECT_EQ(m.width, 24);
    EXPECT_EQ(m.height, 6);
    EXPECT_EQ(m.Orientation, 1u);
    const Bytes samples = BlockOf(mask.get(), 24 * 6);
    for (std::size_t y = 0; y < 6; ++y) {
      for (std::size_t x = 0; x < 24; ++x) {
        ASSERT_EQ(samples[24 * y + x], 255 - picture[96 * (5 - y) + 4 * x + 3]) << format;
      }
    }
  }
}

TEST(MaskFromAlpha, AMaskThatIsThereStays) {
  const HeldSurface surface = MakeBlank(DescribeOriented(8, 8, 2, 0));
  const HeldSurface own = MakeBlank(DescribeOriented(8, 8, 3, 1));
  surface->SetMask(own.get());
  ASSERT_EQ(surface->ConvertNow(4), VED_OK);
  HeldSurface mask;
  surface->GetMask(mask.Reset());
  EXPECT_EQ(mask.get(), own.get());
}

TEST(MaskFromAlpha, DirectOutputAndOtherSourcesMakeNone) {
  const HeldSurface direct = MakeBlank(DescribeOriented(8, 8, 2, 0));
  direct->QueueConvert(1);
  Bytes memory(24 * 8);
  ASSERT_EQ(direct->ReadPixels(memory.data(), 24, 0), VED_OK);
  HeldSurface mask;
  direct->GetMask(mask.Reset());
  EXPECT_FALSE(mask);
  const HeldSurface packed = MakeBlank(DescribeOriented(8, 8, 1, 0));
  ASSERT_EQ(packed->ConvertNow(2), VED_OK);
  packed->GetMask(mask.Reset());
  EXPECT_FALSE(mask);
}

TEST(MaskFromAlpha, WithoutMemoryForItTheConversionGoesOn) {
  // The first request of a conversion is the target's block, the next ones make the mask.
  const SurfaceDescription d = DescribeOriented(8, 8, 2, 0);
  for (std::uint64_t refused = 2; refused <= 3; ++refused) {
    const HeldSurface surface = MakePicture(d, Picture(d));
    RefuseAllocation(refused);
    const std::int32_t result = surface->ConvertNow(1);
    RefuseAllocation(0);
    EXPECT_EQ(result, VED_OK);
    HeldSurface mask;
    surface->GetMask(mask.Reset());
    EXPECT_FALSE(mask) << refused;
    EXPECT_EQ(DescriptionOf(surface.get()).format, 1);
  }
}

TEST(ConvertNow, WithoutMemoryForTheTargetNothingChanges) {
  for (const FormatPair& pair : kPairs) {
    if (pair.to == 6) continue;
    const SurfaceDescription d = DescribeOriented(16, 8, pair.from, 1);
    const Bytes picture = Picture(d);
    const HeldSurface surface = MakePicture(d, picture);
    RefuseAllocation(1);
    const std::int32_t result = surface->ConvertNow(pair.to);
    RefuseAllocation(0);
    EXPECT_EQ(result, VED_E_OUTOFMEMORY) << NameOf(pair);
    EXPECT_EQ(DescriptionOf(surface.get()).format, pair.from);
    EXPECT_EQ(BlockOf(surface.get(), picture.size()), picture);
  }
}

TEST(PackedQueue, AResizeGoesThroughPlanesAndBackToYuy2) {
  const SurfaceDescription d = DescribeOriented(32, 16, 5, 1);
  const HeldSurface surface = MakePicture(d, Picture(d));
  ASSERT_EQ(surface->QueueResize(16, 8, 0, 1), VED_OK);
  ASSERT_EQ(surface->Flush(), VED_OK);
  const SurfaceDescription after = DescriptionOf(surface.get());
  EXPECT_EQ(after.format, 5);
  EXPECT_EQ(after.width, 16);
  EXPECT_EQ(after.height, 8);
  EXPECT_EQ(after.stride, 32);
}

TEST(PackedQueue, DirectOutputOfAResizeGivesThePackedPictureAtItsOldSize) {
  const SurfaceDescription d = DescribeOriented(32, 16, 5, 1);
  const Bytes picture = Picture(d);
  const HeldSurface surface = MakePicture(d, picture);
  ASSERT_EQ(surface->QueueResize(16, 8, 0, 1), VED_OK);
  Bytes memory(4096, 1);
  ASSERT_EQ(surface->ReadPixels(memory.data(), 64, 1), VED_OK);
  EXPECT_EQ(Bytes(memory.begin(), memory.begin() + 1024), picture);
  EXPECT_EQ(DescriptionOf(surface.get()).width, 32);
}

}  // namespace
}  // namespace zor::test
