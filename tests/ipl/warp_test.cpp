// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "ipl/iplborde.h"
#include "ipl/iplwarp.h"
#include "ipl/ownrect.h"
#include "ipl/warp_reference.h"
#include "platform/memory.h"
#include "support/guarded_memory.h"

namespace zor::test {
namespace {

std::vector<std::string> messages;
std::vector<std::int32_t> statuses;

std::int32_t Remember(std::int32_t status, const char*, const char* message, const char*,
                      std::int32_t) {
  messages.push_back(message);
  statuses.push_back(status);
  return status;
}

class Warp : public ::testing::Test {
 protected:
  void SetUp() override {
    messages.clear();
    statuses.clear();
    iplSetStatus(0);
    iplRedirectError(Remember);
  }
  void TearDown() override {
    iplRedirectError(nullptr);
    iplSetStatus(0);
  }
};

void FillNoise(Picture& p, std::uint64_t seed) {
  Noise noise(seed);
  noise.Fill(p.bytes.data(), p.bytes.size());
}

TEST_F(Warp, NothingOutsideOfEitherPictureIsTouched) {
  using Edge = GuardedMemory::Edge;
  Noise noise(3);
  for (const Edge edge : {Edge::kStart, Edge::kEnd}) {
    for (const int channels : {1, 3, 4}) {
      for (int degrees = 0; degrees < 360; degrees += 1) {
        const int w = 5 + degrees % 13, h = 4 + degrees % 7;
        const auto step = static_cast<std::size_t>(w * channels);
        GuardedMemory from(step * static_cast<std::size_t>(h), edge);
        GuardedMemory to(30 * static_cast<std::size_t>(channels) * 30, edge, 9);
        noise.Fill(from.data(), from.size());
        Picture s(w, h, channels, w * channels), d(30, 30, channels, 30 * channels);
        s.image->imageData = from.data();
        d.image->imageData = to.data();
        const double shift = (degrees % 5) * 3.5 - 2;
        iplRotate(s.image, d.image, degrees, shift + 8, shift + 9, degrees % 3);
        iplRotate(s.image, d.image, degrees / 90 * 90, 12, 11, 0);
        ASSERT_TRUE(from.GuardsIntact() && to.GuardsIntact());
      }
    }
  }
}

TEST_F(Warp, AnglesMinus90And270And630TakeTheSameExactPath) {
  Picture from(5, 3, 3);
  FillNoise(from, 1);
  std::vector<std::vector<std::uint8_t>> results;
  for (const double angle : {-90.0, 270.0, 630.0}) {
    Picture to(3, 5, 3);
    iplRotate(from.image, to.image, angle, 2, 0, 0);
    // x' = 2 - y, y' = x
    for (int y = 0; y < 3; ++y) {
      for (int x = 0; x < 5; ++x) {
        for (int c = 0; c < 3; ++c) ASSERT_EQ(from.At(x, y)[c], to.At(2 - y, x)[c]) << angle;
      }
    }
  }
}

TEST_F(Warp, RightAnglesMovePixelsAndClipToTheDestination) {
  Noise noise(8);
  for (const int channels : {1, 3, 4}) {
    for (const int angle : {90, 180, 270}) {
      for (int turn = 0; turn < 60; ++turn) {
        Picture from(noise.Range(1, 70), noise.Range(1, 70), channels);
        Picture to(noise.Range(1, 70), noise.Range(1, 70), channels),
            expected(to.width, to.height, channels);
        FillNoise(from, static_cast<std::uint64_t>(turn));
        const int xs = noise.Range(-10, 80), ys = noise.Range(-10, 80);
        for (int y = 0; y < from.height; ++y) {
          for (int x = 0; x < from.width; ++x) {
            const int tx = angle == 90 ? y + xs : angle == 180 ? xs - x : xs - y;
            const int ty = angle == 90 ? ys - x : angle == 180 ? ys - y : x + ys;
            if (tx < 0 || ty < 0 || tx >= to.width || ty >= to.height) continue;
            std::copy_n(from.At(x, y), channels, expected.At(tx, ty));
          }
        }
        iplRotate(from.image, to.image, angle, xs, ys, WARP_EDGE_BLEND);
        ASSERT_EQ(expected.bytes, to.bytes) << angle << " turn " << turn;
      }
    }
  }
}

TEST_F(Warp, Angle360TakesTheWarpAndGivesAPlainCopyAtWholeShifts) {
  Picture from(8, 8, 4), to(8, 8, 4);
  FillNoise(from, 2);
  iplRotate(from.image, to.image, 360, 0, 0, 0);
  EXPECT_EQ(from.bytes, to.bytes);
}

TEST_F(Warp, ZeroDegreesOver8x8YieldsEightRowsOfSpans0To7) {
  const double quad[] = {0, 0, 7, 0, 7, 7, 0, 7};
  std::int32_t *starts = nullptr, *ends = nullptr, first = -1, last = -1;
  ASSERT_EQ(1, iplClipQuadToSpans(quad, 0, 0, 7, 7, 1, &starts, &ends, &first, &last));
  EXPECT_EQ(0, first);
  EXPECT_EQ(7, last);
  for (int row = 0; row < 8; ++row) {
    EXPECT_EQ(0, starts[row]);
    EXPECT_EQ(7, ends[row]);
  }
  iplFreeAligned(starts);
  iplFreeAligned(ends);
}

TEST_F(Warp, HalfPixelShiftAt90DegreesGoesThroughTheWarpAndStaysUnblended) {
  Picture from(6, 4, 1), to(12, 12, 1), blended(12, 12, 1);
  FillNoise(from, 3);
  iplRotate(from.image, to.image, 90, 2.5, 8, 0);
  iplRotate(from.image, blended.image, 90, 2.5, 8, WARP_EDGE_BLEND);
  Picture expected(12, 12, 1);
  const double coeffs[] = {0, 1, 2.5, -1, 0, 8};
  ReferenceWarp(from, expected, coeffs);
  EXPECT_EQ(expected.bytes, to.bytes);
  EXPECT_EQ(to.bytes, blended.bytes);
  // Columns 3 to 5 hold the interior of 2.5 to 5.5; a move would have filled four.
  EXPECT_EQ(0, to.At(2, 5)[0]);
  EXPECT_NE(0, to.At(3, 5)[0]);
}

TEST_F(Warp, SourceOnePixelWideIsRefused) {
  Picture from(1, 8, 1), to(8, 8, 1);
  iplRotate(from.image, to.image, 30, 0, 0, 0);
  ASSERT_FALSE(messages.empty());
  EXPECT_EQ("srcImage Rectangle ROI is degenerate to length or point", messages[0]);
  EXPECT_EQ(-5, statuses[0]);
  EXPECT_EQ(-1, statuses.back());  // the backtrace of the rotation
}

TEST_F(Warp, SourceOnePixelWideEndsTheProcessInTheDefaultMode) {
  iplRedirectError(nullptr);
  Picture from(1, 8, 1), to(8, 8, 1);
  EXPECT_EXIT(iplRotate(from.image, to.image, 30, 0, 0, 0), ::testing::ExitedWithCode(1), "");
}

TEST_F(Warp, DestinationOutsideOfTheImageStaysWithoutAReport) {
  Picture from(8, 8, 3), to(8, 8, 3);
  FillNoise(to, 4);
  const auto before = to.bytes;
  iplRotate(from.image, to.image, 20, 100, 100, 0);
  iplRotate(from.image, to.image, 90, 100, -100, 0);
  EXPECT_EQ(before, to.bytes);
  EXPECT_TRUE(messages.empty());
}

TEST_F(Warp, DegenerateMatricesAreRefused) {
  Picture from(8, 8, 1), to(8, 8, 1);
  for (const auto& m :
       {std::vector<double>{1, 0, 0, 0, 0, 0}, std::vector<double>{1e-4, 0, 0, 0, 1e-4, 0}}) {
    messages.clear();
    iplSetStatus(0);
    iplWarpAffine(from.image, to.image, m.data(), 0);
    ASSERT_FALSE(messages.empty());
    EXPECT_EQ("Determinant of transform matrix == 0.0", messages[0]);
  }
  messages.clear();
  iplSetStatus(0);
  const double fine[] = {1e-3, 0, 0, 0, 1.01e-4, 0};  // determinant 1.01e-07
  iplWarpAffine(from.image, to.image, fine, 0);
  EXPECT_TRUE(messages.empty());
}

TEST_F(Warp, TheSameHeaderTwiceIsRefusedAndTwoHeadersOnTheSamePixelsAreNot) {
  Picture a(8, 8, 1), b(8, 8, 1);
  iplRotate(a.image, a.image, 90, 7, 0, 0);
  ASSERT_FALSE(messages.empty());
  EXPECT_EQ("This function is not in-place function", messages[0]);
  messages.clear();
  iplSetStatus(0);
  b.image->imageData = a.bytes.data();
  iplRotate(a.image, b.image, 180, 7, 7, 0);
  EXPECT_TRUE(messages.empty());
}

TEST_F(Warp, PairsThatDifferAreReportedOneByOne) {
  Picture from(8, 8, 3), to(8, 8, 3);
  to.image->depth = 16;
  to.image->origin = 1;
  to.image->dataOrder = 1;
  const double coeffs[] = {1, 0, 0, 0, 1, 0};
  iplWarpAffine(from.image, to.image, coeffs, 0);
  EXPECT_EQ((std::vector<std::string>{"srcImage->depth != dstImage->depth",
                                      "srcImage->origin != dstImage->origin",
                                      "srcImage->dataOrder != dstImage->dataOrder"}),
            messages);
  messages.clear();
  iplSetStatus(0);
  Picture one(8, 8, 1);
  iplWarpAffine(from.image, one.image, coeffs, 0);
  EXPECT_EQ("Number of processed channels of srcImage != Number of processed channels of dstImage",
            messages.at(0));
  messages.clear();
  iplSetStatus(0);
  Picture other(8, 8, 3);
  iplWarpAffine(from.image, other.image, coeffs, 3);
  EXPECT_EQ(
      "interpolate != IPL_INTER_NN && interpolate != IPL_INTER_LINEAR && interpolate != "
      "IPL_INTER_CUBIC",
      messages.at(0));
  messages.clear();
  iplSetStatus(0);
  iplWarpAffine(nullptr, other.image, coeffs, 0);
  EXPECT_EQ("Incorrect Image", messages.at(0));
  EXPECT_EQ(-9, statuses.back());
}

TEST_F(Warp, StaleStatusStopsTheWork) {
  Picture from(8, 8, 3), to(8, 8, 3);
  FillNoise(from, 4);
  iplSetStatus(-5);
  iplRotate(from.image, to.image, 90, 7, 0, 0);
  EXPECT_EQ(std::vector<std::uint8_t>(to.bytes.size()), to.bytes);
}

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

TEST_F(Warp, EdgeOnAWholeColumnIsIncludedAtBothEnds) {
  const double quad[] = {2, 1, 6, 1, 6, 5, 2, 5};
  std::int32_t *starts = nullptr, *ends = nullptr, first = 0, last = 0;
  ASSERT_EQ(1, iplClipQuadToSpans(quad, 0, 0, 9, 9, 1, &starts, &ends, &first, &last));
  for (int row = first; row <= last; ++row) {
    EXPECT_EQ(2, starts[row - first]);
    EXPECT_EQ(6, ends[row - first]);
  }
  EXPECT_EQ(1, first);
  EXPECT_EQ(5, last);
  iplFreeAligned(starts);
  iplFreeAligned(ends);
}

TEST_F(Warp, AHairPastAWholeNumberCountsAsThatNumber) {
  const double hair = 3.00000000000001;
  const IplVertex polygon[] = {{hair, 0}, {8, 0}, {8, 4}, {hair, 4}};
  std::int32_t starts[5] = {}, ends[5] = {};
  iplScanPolygon(polygon, 4, 1, starts, ends);
  EXPECT_EQ(3, starts[0]);
  EXPECT_EQ(3, starts[4]);
  const IplVertex further[] = {
      {3.0000000000001, 0}, {7.99999999999999, 0}, {7.99999999999999, 4}, {3.0000000000001, 4}};
  iplScanPolygon(further, 4, 1, starts, ends);
  EXPECT_EQ(4, starts[2]);
  EXPECT_EQ(8, ends[2]);
}

TEST_F(Warp, SpansAgreeWithTheHalfPlanes) {
  Noise noise(21);
  int rows = 0;
  for (int turn = 0; turn < 3000; ++turn) {
    const double angle = noise.Range(0, 359) * 0.017453292519943295;
    const double w = noise.Range(1, 40), h = noise.Range(1, 40);
    const double ox = noise.Range(-20, 40) + noise.Range(0, 99) / 100.0,
                 oy = noise.Range(-20, 40) + noise.Range(0, 99) / 100.0;
    const double c = std::cos(angle), s = std::sin(angle);
    const double quad[] = {
        ox,         oy,        ox + c * w, oy - s * w, ox + c * w + s * h, oy - s * w + c * h,
        ox + s * h, oy + c * h};
    std::int32_t *starts = nullptr, *ends = nullptr, first = 0, last = -1;
    const int found = iplClipQuadToSpans(quad, 0, 0, 29, 24, 1, &starts, &ends, &first, &last);
    for (int y = 0; y < 25; ++y) {
      for (int x = 0; x < 30; ++x) {
        double inside = INFINITY;  // distance to the nearest edge, negative outside
        for (int i = 0; i < 4; ++i) {
          const double ax = quad[2 * i], ay = quad[2 * i + 1];
          const double ex = quad[(2 * i + 2) % 8] - ax, ey = quad[(2 * i + 3) % 8] - ay;
          inside = std::fmin(inside, (ex * (y - ay) - ey * (x - ax)) / std::hypot(ex, ey));
        }
        if (std::fabs(inside) < 1e-9) continue;  // on the edge
        const bool spanned =
            found != 0 && y >= first && y <= last && x >= starts[y - first] && x <= ends[y - first];
        ASSERT_EQ(inside > 0, spanned) << "turn " << turn << " at " << x << "," << y;
      }
    }
    rows += found != 0 ? last - first + 1 : 0;
    if (found != 0) {
      iplFreeAligned(starts);
      iplFreeAligned(ends);
    }
  }
  EXPECT_GT(rows, 15000);
}

TEST_F(Warp, EdgeBlendAt45DegreesChangesOnlyThePixelsOutsideOfTheDiamond) {
  Picture from(21, 21, 1), plain(40, 40, 1), blended(40, 40, 1);
  std::fill(from.bytes.begin(), from.bytes.end(), static_cast<std::uint8_t>(200));
  std::fill(plain.bytes.begin(), plain.bytes.end(), static_cast<std::uint8_t>(40));
  blended.bytes = plain.bytes;
  iplRotate(from.image, plain.image, 45, 5.3, 19.6, 0);
  iplRotate(from.image, blended.image, 45, 5.3, 19.6, WARP_EDGE_BLEND);
  int changed = 0;
  for (int y = 0; y < 40; ++y) {
    for (int x = 0; x < 40; ++x) {
      if (plain.At(x, y)[0] == 200) {
        ASSERT_EQ(200, blended.At(x, y)[0]) << x << "," << y;
      } else {
        changed += blended.At(x, y)[0] != 40;
        ASSERT_TRUE(blended.At(x, y)[0] >= 40 && blended.At(x, y)[0] <= 200);
      }
    }
  }
  EXPECT_GT(changed, 40);
}

TEST_F(Warp, EdgeBlendOfOneSlantedEdgeFollowsItsWeights) {
  // Right angle at the left top; only the edge from (8, 0) to (0, 4) is slanted: y = 4 - x / 2.
  Picture p(12, 8, 1);
  for (int y = 0; y < 8; ++y) {
    for (int x = 0; x < 12; ++x)
      p.At(x, y)[0] = static_cast<std::uint8_t>(x + 2 * y <= 8 ? 100 : 20);
  }
  const auto before = p.bytes;
  const double quad[] = {0, 0, 8, 0, 0, 4, 0, 0};
  iplSmoothEdges(p.image, quad, 0, 0, 11, 7, 1);
  for (int y = 0; y < 8; ++y) {
    for (int x = 0; x < 12; ++x) {
      // At odd x the edge lies half way between two rows: 100 / 2 + 20 / 2.
      const bool outer = x < 8 && x % 2 == 1 && y == 4 - x / 2;
      EXPECT_EQ(outer ? 60 : before[static_cast<std::size_t>(y * 12 + x)], p.At(x, y)[0])
          << x << "," << y;
    }
  }
}

TEST_F(Warp, AnEdgeThroughWholeNumbersBlendsNothing) {
  // Every edge of the diamond meets every column and row at a whole number.
  Picture p(12, 12, 1);
  FillNoise(p, 12);
  const auto before = p.bytes;
  const double quad[] = {5, 1, 9, 5, 5, 9, 1, 5};
  iplSmoothEdges(p.image, quad, 0, 0, 11, 11, 1);
  EXPECT_EQ(before, p.bytes);
}

TEST_F(Warp, OneBitPicturesHaveNoEdgesBlended) {
  Picture p(12, 12, 1);
  FillNoise(p, 13);
  const auto before = p.bytes;
  p.image->depth = 1;
  const double quad[] = {0, 0, 8, 0, 0, 4, 0, 0};
  iplSmoothEdges(p.image, quad, 0, 0, 11, 11, 1);
  EXPECT_EQ(before, p.bytes);
}

TEST_F(Warp, EveryEdgeBlendsThePixelOutsideWithTheOneInsideInBothOrientations) {
  Noise noise(14);
  int changed = 0;
  for (int round = 0; round < 300; ++round) {
    Picture p(40, 36, 3);
    FillNoise(p, static_cast<std::uint64_t>(round));
    auto expected = p.bytes;
    // A turned rectangle inside of the picture; mirrored, its corners go round the other way.
    const double r = noise.Range(1, 359) * 0.017453292519943295 + 0.001;
    const double w = noise.Range(3, 10), h = noise.Range(3, 10), mirror = round % 2 == 0 ? 1 : -1;
    const double cx = 19.37, cy = 17.61;
    double quad[8];
    const double sx[] = {-1, 1, 1, -1}, sy[] = {-1, -1, 1, 1};
    for (int i = 0; i < 4; ++i) {
      const double x = sx[i] * w, y = mirror * sy[i] * h;
      quad[2 * i] = cx + std::cos(r) * x + std::sin(r) * y;
      quad[2 * i + 1] = cy - std::sin(r) * x + std::cos(r) * y;
    }
    for (int i = 0; i < 4; ++i) {
      const double ax = quad[2 * i], ay = quad[2 * i + 1];
      const double bx = quad[(2 * i + 2) % 8], by = quad[(2 * i + 3) % 8];
      const bool columns = std::fabs(bx - ax) >= std::fabs(by - ay);
      const double from = columns ? ax : ay, to = columns ? bx : by;
      for (int at = 0; at < 40; ++at) {
        if (at < std::fmin(from, to) || at > std::fmax(from, to)) continue;
        const double edge = columns ? (by - ay) / (bx - ax) * (at - ax) + ay
                                    : (bx - ax) / (by - ay) * (at - ay) + ax;
        // The middle of the rectangle tells which side is inside.
        const double middle = columns ? ay + (by - ay) / (bx - ax) * (cx - ax)
                                      : ax + (bx - ax) / (by - ay) * (cy - ay);
        const bool insideIsMore = (columns ? cy : cx) > middle;
        const int in = static_cast<int>(insideIsMore ? std::ceil(edge) : std::floor(edge));
        const int out = static_cast<int>(insideIsMore ? std::floor(edge) : std::ceil(edge));
        if (in == out) continue;
        for (int c = 0; c < 3; ++c) {
          auto place = [&](int across) {
            return static_cast<std::size_t>(columns ? across * p.step + at * 3 + c
                                                    : at * p.step + across * 3 + c);
          };
          const double value = expected[place(out)] * std::fabs(edge - out) +
                               expected[place(in)] * std::fabs(edge - in);
          expected[place(out)] = static_cast<std::uint8_t>(std::nearbyint(value));
          ++changed;
        }
      }
    }
    iplSmoothEdges(p.image, quad, 0, 0, 39, 35, mirror > 0 ? 1 : 0);
    ASSERT_EQ(expected, p.bytes) << round;
  }
  EXPECT_GT(changed, 10000);
}

TEST_F(Warp, EdgePixelsAreRoundedToNearestTiesToEvenAndKeptInside) {
  Picture p(4, 2, 3);
  for (int c = 0; c < 3; ++c) p.At(0, 0)[c] = 11, p.At(1, 0)[c] = 10;
  iplBlendEdgePixel(p.image, 0, 0, 1, 0, 0, 1, 0.5, 0.5);
  EXPECT_EQ(10, p.At(0, 0)[0]);  // 10.5
  EXPECT_EQ(10, p.At(0, 0)[1]);
  EXPECT_EQ(11, p.At(0, 0)[2]);  // not among the channels
  const auto before = p.bytes;
  for (const int outside : {-1, 4}) {
    iplBlendEdgePixel(p.image, outside, 0, 1, 0, 0, 2, 0.5, 0.5);
    iplBlendEdgePixel(p.image, 1, 0, outside, 0, 0, 2, 0.5, 0.5);
    iplBlendEdgePixel(p.image, 1, outside, 1, 0, 0, 2, 0.5, 0.5);
  }
  EXPECT_EQ(before, p.bytes);
}

TEST_F(Warp, RowStepOf32768AddressesByItsSixteenBits) {
  Picture from(4, 3, 1, 32768), to(4, 3, 1);
  FillNoise(from, 5);
  FillNoise(to, 6);
  const auto before = to.bytes;
  iplRotate(from.image, to.image, 0, 0, 0, 0);
  for (int x = 0; x < 4; ++x) {
    EXPECT_EQ(from.At(x, 0)[0], to.At(x, 0)[0]);
    // Row 1 stands at -32768 in 16 bits: outside, left alone.
    EXPECT_EQ(before[static_cast<std::size_t>(4 + x)], to.At(x, 1)[0]);
    EXPECT_EQ(before[static_cast<std::size_t>(8 + x)], to.At(x, 2)[0]);
  }
}

TEST_F(Warp, FourChannelsProcessedAsThreeKeepTheFourthByte) {
  Picture from(4, 4, 3), to(4, 4, 3);
  // A region of interest processes one channel and leaves the others.
  IplROI roi{2, 0, 0, 4, 4};
  FillNoise(from, 5);
  FillNoise(to, 6);
  const auto before = to.bytes;
  from.image->roi = to.image->roi = &roi;
  iplRotate(from.image, to.image, 0, 0, 0, 0);
  from.image->roi = to.image->roi = nullptr;
  for (int i = 0; i < 16; ++i) {
    EXPECT_EQ(before[static_cast<std::size_t>(3 * i)], to.bytes[static_cast<std::size_t>(3 * i)]);
    EXPECT_EQ(from.bytes[static_cast<std::size_t>(3 * i + 1)],
              to.bytes[static_cast<std::size_t>(3 * i + 1)]);
    EXPECT_EQ(before[static_cast<std::size_t>(3 * i + 2)],
              to.bytes[static_cast<std::size_t>(3 * i + 2)]);
  }
}

TEST_F(Warp, OneChannelOfInterestIsMovedAloneAtRightAngles) {
  Picture from(4, 3, 3), to(3, 4, 4);
  FillNoise(from, 5);
  FillNoise(to, 6);
  auto expected = to.bytes;
  IplROI second{2, 0, 0, 4, 3}, fourth{4, 0, 0, 3, 4};
  from.image->roi = &second;
  to.image->roi = &fourth;
  iplRotate(from.image, to.image, 90, 0, 3, 0);  // x' = y, y' = 3 - x
  from.image->roi = to.image->roi = nullptr;
  for (int y = 0; y < 3; ++y) {
    for (int x = 0; x < 4; ++x) {
      expected[static_cast<std::size_t>((3 - x) * to.step + y * 4 + 3)] = from.At(x, y)[1];
    }
  }
  EXPECT_EQ(expected, to.bytes);
  EXPECT_TRUE(messages.empty());
}

TEST_F(Warp, TiledPicturesAreLeftAlone) {
  IplTileInfo tiles{&tiles, nullptr, nullptr, 8, 8};
  Picture from(8, 8, 1), to(8, 8, 1);
  FillNoise(to, 6);
  const auto before = to.bytes;
  from.image->imageData = nullptr;
  from.image->tileInfo = &tiles;
  for (const double angle : {30.0, 90.0}) iplRotate(from.image, to.image, angle, 0, 7, 0);
  from.image->tileInfo = nullptr;
  EXPECT_EQ(before, to.bytes);
  EXPECT_TRUE(messages.empty());
}

TEST_F(Warp, ShiftsBeyondAnyPictureMoveNothing) {
  Picture from(8, 8, 1), to(8, 8, 1);
  FillNoise(to, 6);
  const auto before = to.bytes;
  for (const double shift : {1e15, 1e300, -HUGE_VAL, HUGE_VAL}) {
    iplRotate(from.image, to.image, 90, shift, 7, 0);
    iplRotate(from.image, to.image, 180, 7, shift, 0);
  }
  EXPECT_EQ(before, to.bytes);
}

TEST_F(Warp, APictureWarpedOntoItselfGoesPixelByPixel) {
  for (const int channels : {1, 3, 4}) {
    Picture pixels(60, 60, channels), second(60, 60, channels), expected(60, 60, channels);
    FillNoise(pixels, 7);
    expected.bytes = pixels.bytes;
    second.image->imageData = pixels.bytes.data();
    // A small turn about the middle, where pixels stay in their places.
    const double r = 2 * 0.017453292519943295, c = std::cos(r), s = std::sin(r);
    const double xShift = 30 - 30 * c - 30 * s, yShift = 30 + 30 * s - 30 * c;
    const double coeffs[] = {c, s, xShift, -s, c, yShift};
    iplRotate(pixels.image, second.image, 2, xShift, yShift, 0);
    ReferenceWarp(expected, expected, coeffs);
    ASSERT_EQ(expected.bytes, pixels.bytes) << channels;
  }
}

TEST_F(Warp, CentreShiftsKeepRightAnglesWhole) {
  auto shift = [](double x, double y, double angle) {
    double sx = 100, sy = 200;
    iplRotateCenterShift(x, y, angle, &sx, &sy);
    return std::pair(sx - 100, sy - 200);
  };
  EXPECT_EQ(std::pair(0.0, 0.0), shift(3.5, 2.5, 0));
  EXPECT_EQ(std::pair(1.0, 6.0), shift(3.5, 2.5, 90));
  EXPECT_EQ(std::pair(7.0, 5.0), shift(3.5, 2.5, 180));
  EXPECT_EQ(std::pair(6.0, -1.0), shift(3.5, 2.5, -90));
  const auto [x, y] = shift(3.5, 2.5, 30);
  const double r = 30 * 0.017453292519943295;
  EXPECT_NEAR(3.5 - 3.5 * std::cos(r) - 2.5 * std::sin(r), x, 1e-12);
  EXPECT_NEAR(3.5 * std::sin(r) + 2.5 - 2.5 * std::cos(r), y, 1e-12);
}

TEST_F(Warp, RefusedMemoryLeavesTheDestination) {
  Picture from(8, 8, 1), to(12, 12, 1);
  FillNoise(from, 5);
  const std::int64_t live = LiveAllocations();
  for (const std::uint64_t k : {1u, 2u}) {
    RefuseAllocation(k);
    iplRotate(from.image, to.image, 30, 2, 5, 0);
    RefuseAllocation(0);
    EXPECT_EQ(std::vector<std::uint8_t>(to.bytes.size()), to.bytes);
    EXPECT_EQ(live, LiveAllocations());
  }
}

}  // namespace
}  // namespace zor::test
