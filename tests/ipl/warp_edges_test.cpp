// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "warp_fixture.h"

// Where a row of the target begins and ends, and what is blended there.
namespace zor::test {
namespace {

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

}  // namespace
}  // namespace zor::test
