// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/area.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/memory.h"
#include "scale/scale_cases.h"

namespace zor::test {
namespace {

void ExpectSame(GuardedPicture& target, GuardedPicture& source) {
  ExpectAtEveryLevel(
      target, source, "area",
      [&](std::uint8_t* bytes) {
        RefArea({bytes, target.width, target.height, target.stride}, source.Ref());
      },
      [&] {
        EXPECT_TRUE(AreaScale(
            {target.data(), target.width, target.height, target.stride, target.channels},
            {source.data(), source.width, source.height, source.stride, source.channels}, 0));
      });
}

TEST(AreaScaler, SmallSizesWithOneThreeAndFourChannelsMatchTheStatement) {
  Noise noise(1);
  for (const int channels : {1, 3, 4}) {
    for (int sw = 2; sw <= 40; ++sw) {
      for (int dw = 1; dw < sw; ++dw) {
        const unsigned n = noise.Next();
        const int sh = noise.Range(2, 20);
        const int dh = noise.Range(1, sh - 1);
        GuardedPicture source(sw, sh, sw * channels + noise.Range(0, 3), channels, EdgeOf(n), n);
        GuardedPicture target(dw, dh, dw * channels + noise.Range(0, 3), channels, EdgeOf(n >> 1),
                              n + 1);
        ExpectSame(target, source);
        if (HasFatalFailure()) return;
      }
    }
  }
}

TEST(AreaScaler, WidthsAroundTheVectorsMatchTheStatementAtManyRatios) {
  Noise noise(2);
  const int widths[] = {16, 17, 33, 48, 63, 64, 65, 96, 127, 128, 129, 200, 400};
  for (const int channels : {1, 3, 4}) {
    for (const int sw : widths) {
      for (int dw = 1; dw < sw; dw += 1 + dw / 3) {
        const unsigned n = noise.Next();
        const int sh = noise.Range(2, 9);
        GuardedPicture source(sw, sh, sw * channels, channels, EdgeOf(n), n);
        GuardedPicture target(dw, noise.Range(1, sh - 1), dw * channels, channels, EdgeOf(n >> 1),
                              n + 1);
        ExpectSame(target, source);
        if (HasFatalFailure()) return;
      }
    }
  }
}

TEST(AreaScaler, LargePicturesMatchTheStatement) {
  const int shapes[][4] = {{1920, 30, 1280, 20},
                           {1920, 27, 854, 12},
                           {1000, 100, 999, 99},
                           {3000, 40, 37, 5},
                           {1024, 64, 128, 8}};
  unsigned n = 0;
  for (const auto& s : shapes) {
    for (const int channels : {1, 3, 4}) {
      ++n;
      GuardedPicture source(s[0], s[1], s[0] * channels, channels, EdgeOf(n), n);
      GuardedPicture target(s[2], s[3], s[2] * channels + 1, channels, EdgeOf(n), n + 70);
      ExpectSame(target, source);
      if (HasFatalFailure()) return;
    }
  }
}

TEST(AreaScaler, RowsThatLieOverEachOtherKeepWhatTheLaterOneStores) {
  for (const int channels : {1, 3, 4}) {
    for (const int less : {1, 16, 40}) {
      GuardedPicture source(150, 30, 150 * channels, channels, EdgeOf(0), 3);
      GuardedPicture target(100, 20, 100 * channels, channels, EdgeOf(1), 4);
      const int stride = 100 * channels - less;
      ExpectAtEveryLevel(
          target, source, "area over itself",
          [&](std::uint8_t* bytes) {
            RefArea({bytes, 100, 20, stride}, source.Ref());
          },
          [&] {
            EXPECT_TRUE(AreaScale({target.data(), 100, 20, stride, channels},
                                  {source.data(), 150, 30, source.stride, channels}, 0));
          });
    }
  }
}

TEST(AreaScaler, TwoToOneIsATrueRoundedMean) {
  for (const int channels : {1, 3, 4}) {
    GuardedPicture source(40, 20, 40 * channels, channels, EdgeOf(0), 3);
    GuardedPicture target(20, 10, 20 * channels, channels, EdgeOf(0), 4);
    AreaScale({target.data(), 20, 10, 20 * channels, channels},
              {source.data(), 40, 20, 40 * channels, channels}, 0);
    for (int y = 0; y < 10; ++y) {
      for (int v = 0; v < 20 * channels; ++v) {
        const int at = v / channels * 2 * channels + v % channels;
        const std::uint8_t* upper = source.data() + 2 * y * 40 * channels + at;
        const std::uint8_t* lower = upper + 40 * channels;
        const int sum = upper[0] + upper[channels] + lower[0] + lower[channels];
        ASSERT_EQ((sum + 2) / 4, target.data()[y * 20 * channels + v]);
      }
    }
  }
}

TEST(AreaScaler, ThreeToTwoGivesTheMiddlePixelHalfToEachSide) {
  // Rows alike, so that only the columns count: (2 a + b) / 3 and (b + 2 c) / 3.
  GuardedPicture source(3, 3, 3, 1, EdgeOf(0), 5);
  for (int y = 0; y < 3; ++y) {
    source.data()[3 * y] = 90;
    source.data()[3 * y + 1] = 30;
    source.data()[3 * y + 2] = 240;
  }
  GuardedPicture target(2, 2, 2, 1, EdgeOf(0), 6);
  AreaScale({target.data(), 2, 2, 2, 1}, {source.data(), 3, 3, 3, 1}, 0);
  EXPECT_EQ((std::vector<std::uint8_t>{70, 170, 70, 170}), target.Copy());
}

TEST(AreaScaler, TheFourthByteIsAveragedLikeTheOthers) {
  const std::uint8_t source[] = {0, 0, 0, 10, 0, 0, 0, 20, 0, 0, 0, 30, 0, 0, 0, 200};
  std::uint8_t target[4] = {1, 1, 1, 1};
  AreaScale({target, 1, 1, 4, 4}, {source, 2, 2, 8, 4}, 0);
  EXPECT_EQ(0, target[0]);
  EXPECT_EQ(65, target[3]);
}

TEST(AreaScaler, TailsUnderAThousandthOfAPixelAreDropped) {
  // 2001 rows to 2000: the first destination row ends 0.0005 rows behind source row 0, which is not
  // enough for a share of it to be carried on; 0.9995 of the way into a row is.
  const int rows = 2001;
  std::vector<std::uint8_t> source(2 * rows, 0);
  source[0] = source[1] = 200;
  std::vector<std::uint8_t> target(2000, 9);
  AreaScale({target.data(), 1, 2000, 1, 1}, {source.data(), 2, rows, 2, 1}, 0);
  std::vector<std::uint8_t> expected(2000, 9);
  RefArea({expected.data(), 1, 2000, 1}, {source.data(), 2, rows, 2, 1});
  EXPECT_EQ(expected, target);
  EXPECT_EQ(200, target[0]);

  // Across: 2.0004 pixels a column leave the 0.0004 out, so column 0 doesn't see pixel 2.
  std::vector<std::uint8_t> wide(5001 * 2, 0);
  for (int y = 0; y < 2; ++y) std::fill_n(wide.begin() + 5001 * y + 2, 4999, 255);
  std::vector<std::uint8_t> narrow(2500, 9);
  AreaScale({narrow.data(), 2500, 1, 2500, 1}, {wide.data(), 5001, 2, 5001, 1}, 0);
  EXPECT_EQ(0, narrow[0]);
  EXPECT_EQ(255, narrow[1]);
}

TEST(AreaScaler, EqualSizesCopyOneBlockByTheSourcesStride) {
  std::vector<std::uint8_t> source(40);
  Noise(7).Fill(source.data(), source.size());
  std::vector<std::uint8_t> target(80, 9);
  EXPECT_TRUE(AreaScale({target.data(), 6, 5, 16, 1}, {source.data(), 6, 5, 8, 1}, 80));
  EXPECT_TRUE(std::equal(source.begin(), source.end(), target.begin()));
  EXPECT_EQ(40, std::count(target.begin(), target.end(), 9) -
                    std::count(source.begin(), source.end(), 9));
}

TEST(AreaScaler, EqualSizesCopyNoMoreThanThePicturesHold) {
  std::vector<std::uint8_t> source(40);
  Noise(8).Fill(source.data(), source.size());
  std::vector<std::uint8_t> target(40, 9);
  EXPECT_TRUE(AreaScale({target.data(), 6, 5, 6, 1}, {source.data(), 6, 5, 8, 1}, 30));
  EXPECT_TRUE(std::equal(source.begin(), source.begin() + 30, target.begin()));
  EXPECT_EQ(10, std::count(target.begin() + 30, target.end(), 9));
}

TEST(AreaScaler, WhiteStaysWhiteAtEveryRatio) {
  // A mean is never more than its greatest sample, but sums of rounded weights can be: none may
  // reach 256, where the byte would turn over to 0.
  for (int sw = 2; sw <= 64; ++sw) {
    for (int dw = 1; dw < sw; ++dw) {
      const std::vector<std::uint8_t> source(static_cast<std::size_t>(sw) * sw, 255);
      std::vector<std::uint8_t> target(static_cast<std::size_t>(dw) * dw, 9);
      AreaScale({target.data(), dw, dw, dw, 1}, {source.data(), sw, sw, sw, 1}, 0);
      ASSERT_EQ(std::vector<std::uint8_t>(target.size(), 255), target) << sw << " to " << dw;
    }
  }
}

TEST(AreaScaler, PositionsRoundedBehindTheRowReadNothingOutsideOfThePicture) {
  // Above 32768 a float's last place is worth 0.0039, so that the last column's end can come to lie
  // a pixel further. Sizes for which it does are looked for with the definition's own arithmetic.
  int found = 0;
  for (int sw = 40001; sw < 60000 && found < 3; sw += 37) {
    for (int dw = sw - 1; dw > sw - 40 && found < 3; --dw) {
      const float sx = static_cast<float>(static_cast<double>(sw) / dw);
      const float x2 = static_cast<float>(dw - 1) * sx + sx;
      if (!(x2 - static_cast<float>(sw) > 0.001f)) continue;
      ++found;
      GuardedPicture source(sw, 3, sw, 1, GuardedMemory::Edge::kEnd, found);
      GuardedPicture target(dw, 2, dw, 1, EdgeOf(0), 9);
      ExpectSame(target, source);
    }
  }
  EXPECT_EQ(3, found);
}

TEST(AreaScaler, RefusedMemoryLeavesTheTargetAsItWas) {
  GuardedPicture source(100, 20, 100, 1, EdgeOf(0), 10);
  GuardedPicture target(70, 13, 70, 1, EdgeOf(0), 11);
  const std::vector<std::uint8_t> before = target.Copy();
  const auto scale = [&] {
    return AreaScale({target.data(), 70, 13, 70, 1}, {source.data(), 100, 20, 100, 1}, 0);
  };
  RefuseAllocation(0);
  ASSERT_TRUE(scale());
  const std::uint64_t requests = CountAllocations();
  ASSERT_GT(requests, 0u);
  ASSERT_NE(before, target.Copy());
  std::copy(before.begin(), before.end(), target.data());
  for (std::uint64_t k = 1; k <= requests; ++k) {
    RefuseAllocation(k);
    EXPECT_FALSE(scale()) << k;
    RefuseAllocation(0);
    EXPECT_EQ(before, target.Copy()) << k;
  }
  EXPECT_EQ(0, LiveAllocations());
}

}  // namespace
}  // namespace zor::test
