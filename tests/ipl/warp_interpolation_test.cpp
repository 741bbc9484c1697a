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

/// Where a destination pixel lies in the source: 16.16 words, held to the picture.
struct Position {
  Position(const Affine& m, int firstRow, int column, int row, const Picture& source) {
    auto word = [](double v) { return static_cast<long long>(std::nearbyint(v * 65536)); };
    auto held = [](long long at, int size) {
      return std::min(std::max(at, 0ll), static_cast<long long>(size - 1) << 16);
    };
    x = held(word(firstRow * m.a1 + m.a2) + word(m.a1) * (row - firstRow) + word(m.a0) * column,
             source.width);
    y = held(word(firstRow * m.a4 + m.a5) + word(m.a4) * (row - firstRow) + word(m.a3) * column,
             source.height);
  }
  long long x, y;
};

TEST_F(Warp, LinearTakesFourteenBitFractionsAndHoldsToTheSource) {
  Picture from(5, 4, 3), to(9, 8, 3);
  FillNoise(from, 9);
  const double coeffs[] = {1.5, 0.25, 0.3, -0.2, 1.4, 1.1};
  iplWarpAffine(from.image, to.image, coeffs, IPL_INTER_LINEAR);
  int painted = 0;
  ForEachPainted(from, to, coeffs, [&](const Affine& m, int firstRow, int x, int y) {
    const Position at(m, firstRow, x, y, from);
    const long long xi = std::min(at.x / 65536, 3ll), yi = std::min(at.y / 65536, 2ll);
    const long long wx = (at.x - xi * 65536) / 4, wy = (at.y - yi * 65536) / 4;
    for (int c = 0; c < 3; ++c) {
      auto p = [&](long long dx, long long dy) {
        return static_cast<long long>(
            from.At(static_cast<int>(xi + dx), static_cast<int>(yi + dy))[c]);
      };
      const long long h0 = (p(0, 0) * (16384 - wx) + p(1, 0) * wx) / 256;
      const long long h1 = (p(0, 1) * (16384 - wx) + p(1, 1) * wx) / 256;
      EXPECT_EQ((h0 * (16384 - wy) + h1 * wy + 0x80000) / (1 << 20), to.At(x, y)[c])
          << x << "," << y;
    }
    ++painted;
  });
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
  int lastColumns = 0, lastRows = 0;
  ForEachPainted(from, to, coeffs, [&](const Affine& m, int firstRow, int x, int y) {
    const Position at(m, firstRow, x, y, from);
    auto base = [](long long position, long long lastIndex) {
      const long long index = position / 65536;
      return index < 1 ? 0 : index < lastIndex - 1 ? index - 1 : lastIndex - 3;
    };
    const long long bx = base(at.x, 6), by = base(at.y, 5);
    const long long ix = (at.x - bx * 65536 + 64) / 128, iy = (at.y - by * 65536 + 64) / 128;
    lastColumns += at.x / 65536 == 5;
    lastRows += at.y / 65536 == 4;
    for (int c = 0; c < 3; ++c) {
      long long sum = 0x80000;
      for (int j = 0; j < 4; ++j) {
        long long h = 0;
        for (int i = 0; i < 4; ++i) {
          h += from.At(static_cast<int>(bx) + i, static_cast<int>(by) + j)[c] * CubicWeight(i, ix);
        }
        sum += (h >> 8) * CubicWeight(j, iy);
      }
      const long long value = std::min(std::max(sum >> 20, 0ll), 255ll);
      EXPECT_EQ(value, to.At(x, y)[c]) << x << "," << y;
    }
  });
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
