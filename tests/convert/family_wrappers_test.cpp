// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include <functional>

#include "convert/feature_word.h"
#include "convert/form_choice.h"
#include "convert/rgb_packing.h"
#include "convert/rgb_to_yuv420.h"
#include "convert/rgb_to_yuy2.h"
#include "convert/wrappers.h"
#include "convert/yuv420_to_yuy2.h"
#include "convert/yuy2_rgb.h"
#include "convert/yuy2_to_yuv420.h"
#include "support/guarded_memory.h"

namespace zor::test {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t kWords[] = {kFeatureSse2 | kFeatureMmx, kFeatureSse2, kFeatureMmx,
                                    kFeatureMmx | kFeatureSse,  kFeatureSse,  0};

enum class Chosen { kSse2, kMmx, kPlain };

Chosen ChosenFor(std::uint32_t word) {
  if ((word & kFeatureSse2) != 0) return Chosen::kSse2;
  return (word & kFeatureMmx) != 0 ? Chosen::kMmx : Chosen::kPlain;
}

/// Any wrapper, with all that some of them take.
struct Call {
  std::uint8_t* source;
  std::int32_t sourceStride;
  std::uint8_t* target;
  std::int32_t targetStride;
  std::int32_t width;
  std::int32_t height;
  std::uint32_t features;
  std::int32_t bitDepth;
  std::uint32_t orientation;
};

struct Wrapper {
  const char* name;
  std::function<std::uint32_t(const Call&)> call;
  bool hasDepth;
};

const Wrapper kWrappers[] = {
    {"RGB to YUV420",
     [](const Call& c) {
       return ConvertRgbToYuv420(c.source, c.sourceStride, c.target, c.targetStride, c.width,
                                 c.height, c.features, c.bitDepth, c.orientation);
     },
     true},
    {"YUV420 to YUY2",
     [](const Call& c) {
       return ConvertYuv420ToYuy2(c.source, c.sourceStride, c.target, c.targetStride, c.width,
                                  c.height, c.features);
     },
     false},
    {"YUY2 to YUV420",
     [](const Call& c) {
       return ConvertYuy2ToYuv420(c.source, c.sourceStride, c.target, c.targetStride, c.width,
                                  c.height, c.features);
     },
     false},
    {"RGB24 to RGB32",
     [](const Call& c) {
       return PackRgb24ToRgb32(c.source, c.sourceStride, c.target, c.targetStride, c.width,
                               c.height, c.features, c.orientation);
     },
     false},
    {"RGB32 to RGB24",
     [](const Call& c) {
       return PackRgb32ToRgb24(c.source, c.sourceStride, c.target, c.targetStride, c.width,
                               c.height, c.features, c.orientation);
     },
     false},
    {"RGB to YUY2",
     [](const Call& c) {
       return ConvertRgbToYuy2(c.source, c.sourceStride, c.target, c.targetStride, c.width,
                               c.height, c.features, c.bitDepth, c.orientation);
     },
     true},
    {"YUY2 to RGB",
     [](const Call& c) {
       return ConvertYuy2ToRgb(c.source, c.sourceStride, c.target, c.targetStride, c.width,
                               c.height, c.features, c.bitDepth, c.orientation);
     },
     true},
};

TEST(Wrappers, ANullAddressGivesZeroBeforeAnythingElseIsLookedAt) {
  std::uint8_t byte[256] = {};
  for (const Wrapper& wrapper : kWrappers) {
    for (std::int32_t depth : {24, 32, 16}) {
      EXPECT_EQ(wrapper.call({nullptr, 8, byte, 8, 2, 2, 0, depth, 1}), 0u) << wrapper.name;
      EXPECT_EQ(wrapper.call({byte, 8, nullptr, 8, 2, 2, 0, depth, 1}), 0u) << wrapper.name;
    }
  }
}

TEST(Wrappers, AnotherDepthDoesNothingAndGivesOne) {
  for (const Wrapper& wrapper : kWrappers) {
    if (!wrapper.hasDepth) continue;
    for (std::int32_t depth : {0, 8, 16, 31}) {
      Bytes source(64, 3), target(64, 5);
      EXPECT_EQ(wrapper.call({source.data(), 8, target.data(), 8, 2, 2, ~0u, depth, 1}), 1u);
      EXPECT_EQ(target, Bytes(64, 5)) << wrapper.name;
    }
  }
}

TEST(Wrappers, ASizeWithoutPixelsDoesNothing) {
  for (const Wrapper& wrapper : kWrappers) {
    for (std::uint32_t features : kWords) {
      for (const auto& [width, height] :
           {std::pair{0, 4}, std::pair{4, 0}, std::pair{-4, 4}, std::pair{4, -4}}) {
        Bytes source(256, 3), target(256, 5);
        EXPECT_EQ(wrapper.call({source.data() + 128, 8, target.data() + 128, 8, width, height,
                                features, 32, 1}),
                  1u);
        EXPECT_EQ(target, Bytes(256, 5)) << wrapper.name;
      }
    }
  }
}

/// A picture of 48 x 8 pixels in any packed format, with room for any target.
constexpr std::int32_t kWidth = 48;
constexpr std::int32_t kHeight = 8;

TEST(Wrappers, RgbToYuv420TakesTheFormOfTheWordAndReadsBottomUpAtZero) {
  for (std::int32_t depth : {24, 32}) {
    const std::int32_t stride = kWidth * depth / 8;
    Bytes source =
        Noise(static_cast<std::uint64_t>(depth)).Bytes(static_cast<std::size_t>(stride) * kHeight);
    for (std::uint32_t orientation : {0u, 1u, 7u}) {
      for (std::uint32_t word : kWords) {
        Bytes target(kWidth * kHeight * 2, 1), expected = target;
        EXPECT_EQ(ConvertRgbToYuv420(source.data(), stride, target.data(), kWidth, kWidth, kHeight,
                                     word, depth, orientation),
                  1u);
        (depth == 24 ? ConvertRgb24ToYuv420Plain : ConvertRgb32ToYuv420Plain)(
            expected.data(), expected.data() + kWidth * kHeight * 5 / 4,
            expected.data() + kWidth * kHeight, kWidth, kWidth / 2, source.data(), stride, kWidth,
            orientation == 0 ? -kHeight : kHeight);
        EXPECT_EQ(target, expected) << depth << ", " << word;
      }
    }
  }
}

TEST(Wrappers, RgbToYuv420FindsUAQuarterOfTheLumaBehindV) {
  // Stride 7, height 6: V at 42, U at 42 + 42 / 4 = 52, rows of 3 bytes.
  Bytes source(6 * 6 * 4, 0), target(80, 9);
  for (std::size_t i = 0; i < source.size(); i += 4) source[i] = 255;  // blue: U 239, V 110
  ConvertRgbToYuv420(source.data(), 24, target.data(), 7, 6, 6, 0, 32, 1);
  for (std::size_t i = 0; i < 9; ++i) {
    EXPECT_EQ(target[42 + i], 110);
    EXPECT_EQ(target[52 + i], 239);
  }
  EXPECT_EQ(target[51], 9);
  EXPECT_EQ(target[61], 9);
}

TEST(Wrappers, Yuy2KernelsFindTheSecondPlaneByTruncatedHalves) {
  // Stride 7, height 6: V at 42, U at 42 + (7 / 2) x 6 / 2 = 51.
  Bytes source(12 * 6, 0), target(80, 9);
  for (std::size_t i = 0; i < source.size(); i += 4) {
    source[i + 1] = 50;
    source[i + 3] = 60;
  }
  ConvertYuy2ToYuv420(source.data(), 12, target.data(), 7, 6, 6, 0);
  for (std::size_t i = 0; i < 9; ++i) {
    EXPECT_EQ(target[42 + i], 60);
    EXPECT_EQ(target[51 + i], 50);
  }
  EXPECT_EQ(target[60], 9);
  Bytes back(12 * 6, 1);
  ConvertYuv420ToYuy2(target.data(), 7, back.data(), 12, 6, 6, 0);
  EXPECT_EQ(back, source);
}

TEST(Wrappers, Yuv420AndYuy2TakeTheFormOfTheWordInBothDirections) {
  Bytes planes = Noise(61).Bytes(kWidth * kHeight * 3 / 2);
  Bytes packed = Noise(62).Bytes(kWidth * kHeight * 2);
  constexpr std::int32_t kLuma = kWidth * kHeight;
  for (std::uint32_t word : kWords) {
    const Chosen chosen = ChosenFor(word);
    Bytes target(kLuma * 2, 1), expected = target;
    ConvertYuv420ToYuy2(planes.data(), kWidth, target.data(), kWidth * 2, kWidth, kHeight, word);
    (chosen == Chosen::kMmx ? ConvertYuv420ToYuy2Mmx : ConvertYuv420ToYuy2Plain)(
        expected.data(), kWidth * 2, planes.data(), planes.data() + kLuma * 5 / 4,
        planes.data() + kLuma, kWidth, kWidth / 2, kWidth, kHeight);
    EXPECT_EQ(target, expected) << word;

    target.assign(kLuma * 3 / 2, 1);
    expected = target;
    ConvertYuy2ToYuv420(packed.data(), kWidth * 2, target.data(), kWidth, kWidth, kHeight, word);
    (chosen == Chosen::kMmx ? ConvertYuy2ToYuv420Mmx : ConvertYuy2ToYuv420Plain)(
        expected.data(), expected.data() + kLuma * 5 / 4, expected.data() + kLuma, kWidth,
        kWidth / 2, packed.data(), kWidth * 2, kWidth, kHeight);
    EXPECT_EQ(target, expected) << word;
  }
}

TEST(Wrappers, RgbAndYuy2TakeTheFormOfTheWordAndReadBottomUpAtZero) {
  for (std::int32_t depth : {24, 32}) {
    const std::int32_t stride = kWidth * depth / 8;
    Bytes rgb = Noise(63).Bytes(kWidth * kHeight * 4 + 64);
    Bytes yuy2 = Noise(64).Bytes(kWidth * kHeight * 2);
    for (std::uint32_t orientation : {0u, 1u}) {
      const std::int32_t height = orientation == 0 ? -kHeight : kHeight;
      for (std::uint32_t word : kWords) {
        const Chosen chosen = ChosenFor(word);
        Bytes target(kWidth * kHeight * 2, 1), expected = target;
        ConvertRgbToYuy2(rgb.data(), stride, target.data(), kWidth * 2, kWidth, kHeight, word,
                         depth, orientation);
        RgbToYuy2Kernel* const fromRgb =
            chosen == Chosen::kSse2
                ? (depth == 24 ? ConvertRgb24ToYuy2Sse2 : ConvertRgb32ToYuy2Sse2)
                : (depth == 24 ? ConvertRgb24ToYuy2Plain : ConvertRgb32ToYuy2Plain);
        fromRgb(expected.data(), kWidth * 2, rgb.data(), stride, kWidth, height);
        EXPECT_EQ(target, expected) << depth << ", " << word;

        target.assign(static_cast<std::size_t>(stride) * kHeight, 1);
        expected = target;
        ConvertYuy2ToRgb(yuy2.data(), kWidth * 2, target.data(), stride, kWidth, kHeight, word,
                         depth, orientation);
        const FormChoice<Yuy2ToRgbKernel> toRgb =
            depth == 24 ? FormChoice<Yuy2ToRgbKernel>{ConvertYuy2ToRgb24Sse2, ConvertYuy2ToRgb24Mmx,
                                                      ConvertYuy2ToRgb24Plain}
                        : FormChoice<Yuy2ToRgbKernel>{ConvertYuy2ToRgb32Sse2, ConvertYuy2ToRgb32Mmx,
                                                      ConvertYuy2ToRgb32Plain};
        Yuy2ToRgbKernel* const kernel = chosen == Chosen::kSse2  ? toRgb.sse2
                                        : chosen == Chosen::kMmx ? toRgb.mmx
                                                                 : toRgb.plain;
        kernel(expected.data(), stride, yuy2.data(), kWidth * 2, kWidth, height);
        EXPECT_EQ(target, expected) << depth << ", " << word;
      }
    }
  }
}

TEST(Wrappers, PackingReadsBottomUpAtZeroAndIsOneFormForEveryWord) {
  Bytes source = Noise(65).Bytes(kWidth * kHeight * 4);
  for (std::uint32_t word : kWords) {
    for (std::uint32_t orientation : {0u, 1u}) {
      const std::int32_t height = orientation == 0 ? -kHeight : kHeight;
      Bytes target(kWidth * kHeight * 4, 1), expected = target;
      PackRgb24ToRgb32(source.data(), kWidth * 3, target.data(), kWidth * 4, kWidth, kHeight, word,
                       orientation);
      ConvertRgb24ToRgb32(expected.data(), kWidth * 4, source.data(), kWidth * 3, kWidth, height);
      EXPECT_EQ(target, expected);
      PackRgb32ToRgb24(source.data(), kWidth * 4, target.data(), kWidth * 3, kWidth, kHeight, word,
                       orientation);
      ConvertRgb32ToRgb24(expected.data(), kWidth * 3, source.data(), kWidth * 4, kWidth, height);
      EXPECT_EQ(target, expected);
    }
  }
}

TEST(Wrappers, GiveOneForEveryPictureThatTheyConvert) {
  for (const Wrapper& wrapper : kWrappers) {
    for (std::uint32_t features : kWords) {
      for (std::int32_t depth : {24, 32}) {
        for (std::uint32_t orientation : {0u, 1u}) {
          Bytes source(1024, 90), target(1024, 5);
          EXPECT_EQ(wrapper.call({source.data() + 256, 64, target.data() + 256, 64, 16, 4, features,
                                  depth, orientation}),
                    1u);
          EXPECT_NE(target, Bytes(1024, 5)) << wrapper.name;
        }
      }
    }
  }
}

TEST(Wrappers, OneRowIsConvertedWhereRowsStandAlone) {
  for (std::uint32_t features : kWords) {
    const Bytes rgb(64, 100);
    Bytes target(64, 5);
    EXPECT_EQ(PackRgb24ToRgb32(rgb.data(), 3, target.data(), 4, 1, 1, features, 1), 1u);
    EXPECT_EQ(Bytes(target.begin(), target.begin() + 5), (Bytes{100, 100, 100, 0, 5}));
    EXPECT_EQ(PackRgb32ToRgb24(rgb.data(), 4, target.data() + 8, 3, 1, 1, features, 0), 1u);
    EXPECT_EQ(Bytes(target.begin() + 8, target.begin() + 12), (Bytes{100, 100, 100, 5}));
    // Grey 100 is luma ((220 x 100) >> 8) + 16 = 101; eight columns are whole blocks.
    Bytes source = rgb;
    EXPECT_EQ(ConvertRgbToYuy2(source.data(), 32, target.data() + 16, 16, 8, 1, features, 32, 1),
              1u);
    for (std::size_t i = 0; i < 16; ++i) EXPECT_EQ(target[16 + i], i % 2 == 0 ? 101 : 128);
    // Black comes back as black by either arithmetic.
    const Bytes black = {16, 128, 16, 128};
    EXPECT_EQ(ConvertYuy2ToRgb(black.data(), 4, target.data() + 40, 8, 2, 1, features, 32, 1), 1u);
    EXPECT_EQ(Bytes(target.begin() + 40, target.begin() + 49), (Bytes{0, 0, 0, 0, 0, 0, 0, 0, 5}));
    // From planes only the SSE2 form to RGB24 knows rows that aren't in pairs: white is 254.
    const Bytes white = {235, 235, 235, 235, 128, 128, 128, 128};
    EXPECT_EQ(ConvertYuv420ToRgb(white.data(), 4, target.data() + 50, 12, 4, 1, features, 24, 0),
              1u);
    const bool sse2 = ChosenFor(features) == Chosen::kSse2;
    EXPECT_EQ(Bytes(target.begin() + 50, target.begin() + 62), Bytes(12, sse2 ? 254 : 5));
  }
}

TEST(Wrappers, BothRowOrdersOfAPackedPictureCanBeTold) {
  // What the form tests above could not see if both orders gave the same bytes.
  const std::uint8_t source[6] = {1, 2, 3, 4, 5, 6};
  std::uint8_t target[8];
  PackRgb24ToRgb32(source, 3, target, 4, 1, 2, 0, 1);
  EXPECT_EQ(target[0], 1);
  PackRgb24ToRgb32(source, 3, target, 4, 1, 2, 0, 0);
  EXPECT_EQ(target[0], 4);
}

}  // namespace
}  // namespace zor::test
