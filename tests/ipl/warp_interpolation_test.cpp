// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "warp_fixture.h"

// Linear and cubic interpolation by their definitions.
namespace zor::test {
namespace {

TEST_F(Warp, CubicWithAThreePixelHighSourceIsLinear) {
  Picture from(9, 3, 1), linear(20, 20, 1), cubic(20, 20, 1), tall(9, 5, 1), a(20, 20, 1),
      b(20, 20, 1);
  FillNoise(from, 6);
  FillNoise(tall, 6);
  iplRotate(from.image, linear.image, 30, 3, 9, IPL_INTER_LINEAR);
  iplRotate(from.image, cubic.image, 30, 3, 9, IPL_INTER_CUBIC);
  EXPECT_EQ(linear.bytes, cubic.bytes);
  iplRotate(tall.image, a.image, 30, 3, 9, IPL_INTER_LINEAR);
  iplRotate(tall.image, b.image, 30, 3, 9, IPL_INTER_CUBIC);
  EXPECT_NE(a.bytes, b.bytes);
}

TEST_F(Warp, LinearTakesFourteenBitFractionsAndHoldsToTheSource) {
  Picture from(5, 4, 3), to(9, 8, 3);
  FillNoise(from, 9);
  const double coeffs[] = {1.5, 0.25, 0.3, -0.2, 1.4, 1.1};
  iplWarpAffine(from.image, to.image, coeffs, IPL_INTER_LINEAR);
  double quad[8];
  Corners(coeffs, 5, 4, quad);
  const Affine m = Inverse(quad, 5, 4);
  int first = 0, last = -1;
  ASSERT_TRUE(ClippedRows(quad, 9, 8, &first, &last));
  int painted = 0;
  for (int y = first; y <= last; ++y) {
    int start = 0, end = -1;
    if (!RowSpan(quad, y, 9, &start, &end)) continue;
    for (int x = start; x <= end; ++x) {
      auto word = [](double v) { return static_cast<long long>(std::nearbyint(v * 65536)); };
      long long fx = word(first * m.a1 + m.a2) + word(m.a1) * (y - first) + word(m.a0) * x;
      long long fy = word(first * m.a4 + m.a5) + word(m.a4) * (y - first) + word(m.a3) * x;
      fx = std::min(std::max(fx, 0ll), 4ll << 16);
      fy = std::min(std::max(fy, 0ll), 3ll << 16);
      const long long xi = std::min(fx / 65536, 3ll), yi = std::min(fy / 65536, 2ll);
      const long long wx = (fx - xi * 65536) / 4, wy = (fy - yi * 65536) / 4;
      for (int c = 0; c < 3; ++c) {
        auto p = [&](long long dx, long long dy) {
          return static_cast<long long>(
              from.At(static_cast<int>(xi + dx), static_cast<int>(yi + dy))[c]);
        };
        const long long h0 = (p(0, 0) * (16384 - wx) + p(1, 0) * wx) / 256;
        const long long h1 = (p(0, 1) * (16384 - wx) + p(1, 1) * wx) / 256;
        ASSERT_EQ((h0 * (16384 - wy) + h1 * wy + 0x80000) / (1 << 20), to.At(x, y)[c])
            << x << "," << y;
      }
      ++painted;
    }
  }
  EXPECT_GT(painted, 20);
}

/// The cubic weight of a node at t = i / 512, in 14 bits: the product over the other nodes of
/// (t - other) / (node - other).
long long CubicWeight(int node, long long i) {
  // The last two of the table are the mirrored first two.
  if (node > 1) return CubicWeight(3 - node, 1536 - i);
  const double t = static_cast<double>(i) / 512;
  double weight = 1;
  for (int other = 0; other < 4; ++other) {
    if (other != node) weight *= (t - other) / (node - other);
  }
  return static_cast<long long>(std::nearbyint(weight * 16384));
}

TEST_F(Warp, CubicTakesFourByFourPixelsThatAllLieInTheSource) {
  Picture from(7, 6, 3), to(17, 16, 3);
  FillNoise(from, 11);
  const double coeffs[] = {2.2, 0.25, 0.3, -0.2, 2.3, 1.6};
  iplWarpAffine(from.image, to.image, coeffs, IPL_INTER_CUBIC);
  double quad[8];
  Corners(coeffs, 7, 6, quad);
  const Affine m = Inverse(quad, 7, 6);
  int first = 0, last = -1;
  ASSERT_TRUE(ClippedRows(quad, 17, 16, &first, &last));
  int lastColumns = 0, lastRows = 0;
  for (int y = first; y <= last; ++y) {
    int start = 0, end = -1;
    if (!RowSpan(quad, y, 17, &start, &end)) continue;
    for (int x = start; x <= end; ++x) {
      auto word = [](double v) { return static_cast<long long>(std::nearbyint(v * 65536)); };
      long long fx = word(first * m.a1 + m.a2) + word(m.a1) * (y - first) + word(m.a0) * x;
      long long fy = word(first * m.a4 + m.a5) + word(m.a4) * (y - first) + word(m.a3) * x;
      fx = std::min(std::max(fx, 0ll), 6ll << 16);
      fy = std::min(std::max(fy, 0ll), 5ll << 16);
      auto base = [](long long at, long long lastIndex) {
        const long long index = at / 65536;
        return index < 1 ? 0 : index < lastIndex - 1 ? index - 1 : lastIndex - 3;
      };
      const long long bx = base(fx, 6), by = base(fy, 5);
      const long long ix = (fx - bx * 65536 + 64) / 128, iy = (fy - by * 65536 + 64) / 128;
      lastColumns += fx / 65536 == 5;
      lastRows += fy / 65536 == 4;
      for (int c = 0; c < 3; ++c) {
        long long sum = 0x80000;
        for (int j = 0; j < 4; ++j) {
          long long h = 0;
          for (int i = 0; i < 4; ++i) {
            h +=
                from.At(static_cast<int>(bx) + i, static_cast<int>(by) + j)[c] * CubicWeight(i, ix);
          }
          sum += (h >> 8) * CubicWeight(j, iy);
        }
        const long long value = std::min(std::max(sum >> 20, 0ll), 255ll);
        ASSERT_EQ(value, to.At(x, y)[c]) << x << "," << y;
      }
    }
  }
  // Cells between the last two columns and rows, whose neighbourhood is moved inwards.
  EXPECT_GT(lastColumns, 5);
  EXPECT_GT(lastRows, 5);
}

TEST_F(Warp, CubicWeightsAtTheMiddleAreTheTextbookOnes) {
  // One row of four equal rows, sampled half way between columns 1 and 2: index 768, weights
  // -1024, 9216, 9216, -1024 of 16384.
  Picture from(4, 4, 1), to(10, 4, 1);
  const int row[] = {10, 200, 100, 250};
  for (int y = 0; y < 4; ++y) {
    for (int x = 0; x < 4; ++x) from.At(x, y)[0] = static_cast<std::uint8_t>(row[x]);
  }
  const double coeffs[] = {2, 0, 0, 0, 1, 0};  // source column 1.5 lands on column 3
  iplWarpAffine(from.image, to.image, coeffs, IPL_INTER_CUBIC);
  const int h = (-1024 * 10 + 9216 * 200 + 9216 * 100 - 1024 * 250) >> 8;
  EXPECT_EQ((h * 16384 + 0x80000) >> 20, to.At(3, 1)[0]);
  // Whole positions give the pixel back.
  for (int x = 0; x < 4; ++x) EXPECT_EQ(row[x], to.At(2 * x, 2)[0]);
}

}  // namespace
}  // namespace zor::test
