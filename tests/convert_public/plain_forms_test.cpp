// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <algorithm>
#include <functional>

#include "convert/rgb_packing.h"
#include "convert/rgb_to_yuv420.h"
#include "convert/rgb_to_yuy2.h"
#include "convert/yuv420_to_rgb.h"
#include "convert/yuv420_to_yuy2.h"
#include "convert/yuy2_rgb.h"
#include "convert/yuy2_to_yuv420.h"
#include "convert_public/pairs.h"

namespace zor::test {
namespace {

constexpr std::int32_t kWidth = 50;
constexpr std::int32_t kHeight = 20;
constexpr std::int32_t kLuma = kWidth * kHeight;

/// A conversion by the plain form of its kernel, called directly.
using PlainForm = std::function<void(std::uint8_t* target, std::uint8_t* source)>;

/// Between packed pictures of a row's bytes.
template <class Kernel>
PlainForm Packed(Kernel* kernel, std::int32_t targetStride, std::int32_t sourceStride) {
  return [=](std::uint8_t* target, std::uint8_t* source) {
    kernel(target, targetStride, source, sourceStride, kWidth, kHeight);
  };
}
/// To planes: V stands in front of U.
template <class Kernel>
PlainForm ToPlanes(Kernel* kernel, std::int32_t sourceStride) {
  return [=](std::uint8_t* target, std::uint8_t* source) {
    kernel(target, target + kLuma * 5 / 4, target + kLuma, kWidth, kWidth / 2, source, sourceStride,
           kWidth, kHeight);
  };
}
/// From planes; at a negative height the target is written upside down.
template <class Kernel>
PlainForm FromPlanes(Kernel* kernel, std::int32_t targetStride, std::int32_t height) {
  return [=](std::uint8_t* target, std::uint8_t* source) {
    kernel(target, targetStride, source, source + kLuma * 5 / 4, source + kLuma, kWidth, kWidth / 2,
           kWidth, height);
  };
}

struct PlainPair {
  FormatPair pair;
  PlainForm convert;
};

std::vector<PlainPair> PlainPairs() {
  constexpr std::int32_t k24 = 152;  // 150 bytes in whole words
  constexpr std::int32_t k32 = 200;
  constexpr std::int32_t kYuy2 = 100;
  return {{{1, 2}, Packed(ConvertRgb24ToRgb32, k32, k24)},
          {{1, 4}, ToPlanes(ConvertRgb24ToYuv420Plain, k24)},
          {{1, 5}, Packed(ConvertRgb24ToYuy2Plain, kYuy2, k24)},
          {{2, 1}, Packed(ConvertRgb32ToRgb24, k24, k32)},
          {{2, 4}, ToPlanes(ConvertRgb32ToYuv420Plain, k32)},
          {{2, 5}, Packed(ConvertRgb32ToYuy2Plain, kYuy2, k32)},
          {{4, 1}, FromPlanes(ConvertYuv420ToRgb24Plain, k24, -kHeight)},
          {{4, 2}, FromPlanes(ConvertYuv420ToRgb32Plain, k32, -kHeight)},
          {{4, 5}, FromPlanes(ConvertYuv420ToYuy2Plain, kYuy2, kHeight)},
          {{4, 6},
           [](std::uint8_t* target, std::uint8_t* source) {
             std::copy_n(source, kLuma, target);
             std::copy_n(source + kLuma, kLuma / 4, target + kLuma * 5 / 4);
             std::copy_n(source + kLuma * 5 / 4, kLuma / 4, target + kLuma);
           }},
          {{5, 1}, Packed(ConvertYuy2ToRgb24Plain, k24, kYuy2)},
          {{5, 2}, Packed(ConvertYuy2ToRgb32Plain, k32, kYuy2)},
          {{5, 4}, ToPlanes(ConvertYuy2ToYuv420Plain, kYuy2)}};
}

TEST(PlainForms, ConvertEveryPairWhereTheWordHasNeitherBit23NorBit26) {
  const std::vector<PlainPair> pairs = PlainPairs();
  ASSERT_EQ(pairs.size(), std::size(kPairs));
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    ASSERT_EQ(NameOf(pairs[i].pair), NameOf(kPairs[i]));
    for (const std::uint32_t word : {0u, ~(1u << 23 | 1u << 26)}) {
      const WithFeatures features(word);
      const SurfaceDescription d = DescribeOriented(kWidth, kHeight, pairs[i].pair.from, 1);
      Bytes picture = Picture(d);
      const HeldSurface surface = MakePicture(d, picture);
      ASSERT_EQ(surface->ConvertNow(pairs[i].pair.to), VED_OK) << NameOf(kPairs[i]);
      Bytes expected(PictureBytes(DescriptionOf(surface.get())));
      pairs[i].convert(expected.data(), picture.data());
      EXPECT_EQ(BlockOf(surface.get(), expected.size()), expected)
          << NameOf(kPairs[i]) << ", word " << word;
    }
  }
}

}  // namespace
}  // namespace zor::test
