// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include <cstring>

#include "convert/feature_word.h"
#include "convert/rgb_packing.h"
#include "convert/rgb_to_yuv420.h"
#include "convert/rgb_to_yuy2.h"
#include "convert/streaming.h"
#include "convert/yuv420_to_yuy2.h"
#include "convert/yuy2_rgb.h"
#include "convert/yuy2_to_yuv420.h"
#include "platform/pixel_block.h"
#include "support/guarded_memory.h"

namespace zor::test {
namespace {

/// A picture large enough, and on whole lines, to be written past the caches; the width leaves an
/// overlapping last block. Each conversion is compared with itself in a target that is off its
/// lines by one byte, which is never streamed; the forms themselves are tested on small pictures.
class Streamed : public testing::TestWithParam<VectorLevel> {
 protected:
  static constexpr std::int32_t kWidth = 2016;
  static constexpr std::int32_t kHeight = 2996;
  static constexpr std::int32_t kStride = 2048;  // of luma
  static constexpr std::int64_t kLuma = std::int64_t{kStride} * kHeight;

  void SetUp() override {
    LimitInnerVectorLevel(GetParam());
    source_ = AllocatePixelBlock(4 * kLuma, kWidth, kHeight, BlockContents::kUnset);
    aligned_ = AllocatePixelBlock(4 * kLuma, kWidth, kHeight, BlockContents::kZero);
    shifted_ = AllocatePixelBlock(4 * kLuma + 1, kWidth, kHeight, BlockContents::kZero);
    ASSERT_TRUE(source_ != nullptr && aligned_ != nullptr && shifted_ != nullptr);
    std::uint32_t state = 1;
    for (std::int64_t i = 0; i < 4 * kLuma; ++i) {
      state = state * 1664525u + 1013904223u;
      source_[i] = static_cast<std::uint8_t>(state >> 24);
    }
  }
  void TearDown() override {
    for (std::uint8_t* block : {source_, aligned_, shifted_}) FreePixelBlock(block);
    LimitInnerVectorLevel(VectorLevel::kAvx512);
  }

  template <class Convert>
  void ExpectSame(std::int64_t bytes, const Convert& convert) {
    convert(aligned_);
    convert(shifted_ + 1);
    EXPECT_EQ(std::memcmp(aligned_, shifted_ + 1, static_cast<std::size_t>(bytes)), 0);
  }

  std::uint8_t* source_ = nullptr;
  std::uint8_t* aligned_ = nullptr;
  std::uint8_t* shifted_ = nullptr;
};

TEST_P(Streamed, PlanesOfRgbAreTheSamePastTheCaches) {
  ASSERT_TRUE(
      PlanesArePastCaches(aligned_, aligned_, aligned_, kStride, kStride / 2, kWidth, kHeight));
  for (auto* kernel : {ConvertRgb32ToYuv420Sse2, ConvertRgb24ToYuv420Sse2}) {
    ExpectSame(kLuma * 3 / 2, [&](std::uint8_t* target) {
      kernel(target, target + kLuma, target + kLuma * 5 / 4, kStride, kStride / 2, source_,
             4 * kStride, kWidth, kHeight);
    });
  }
}

TEST_P(Streamed, PlanesOfYuy2AreTheSamePastTheCaches) {
  ExpectSame(kLuma * 3 / 2, [&](std::uint8_t* target) {
    ConvertYuy2ToYuv420Sse2(target, target + kLuma, target + kLuma * 5 / 4, kStride, kStride / 2,
                            source_, 2 * kStride, kWidth, kHeight);
  });
}

TEST_P(Streamed, RowsOfYuy2AreTheSamePastTheCaches) {
  ASSERT_TRUE(RowsArePastCaches(aligned_, 2 * kStride, 2 * kWidth, kHeight));
  ExpectSame(kLuma * 2, [&](std::uint8_t* target) {
    ConvertYuv420ToYuy2Sse2(target, 2 * kStride, source_, source_ + kLuma, source_ + kLuma * 5 / 4,
                            kStride, kStride / 2, kWidth, kHeight);
  });
  for (auto* kernel : {ConvertRgb32ToYuy2Sse2, ConvertRgb24ToYuy2Sse2}) {
    ExpectSame(kLuma * 2, [&](std::uint8_t* target) {
      kernel(target, 2 * kStride, source_, 4 * kStride, kWidth, kHeight);
    });
  }
}

TEST_P(Streamed, RowsOfRgbAreTheSamePastTheCaches) {
  for (auto* kernel :
       {ConvertYuy2ToRgb32Sse2, ConvertYuy2ToRgb24Sse2, ConvertRgb24ToRgb32, ConvertRgb32ToRgb24}) {
    ExpectSame(kLuma * 4, [&](std::uint8_t* target) {
      kernel(target, 4 * kStride, source_, 4 * kStride, kWidth, kHeight);
    });
  }
}

INSTANTIATE_TEST_SUITE_P(Levels, Streamed,
                         testing::Values(VectorLevel::kSse2, VectorLevel::kAvx2,
                                         VectorLevel::kAvx512));

}  // namespace
}  // namespace zor::test
