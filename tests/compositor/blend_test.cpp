// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "compositor/blend.h"

#include <gtest/gtest.h>

#include "compositor/blend_cases.h"
#include "compositor/blend_rows.h"

namespace zor::test {
namespace {

TEST_F(Blend, MaskedPlanarFormsFollowTheirRulesAtAllSmallRectangles) {
  Noise noise(12);
  for (const Geometry tg : {Geometry{24, 24}, Geometry{45, 23}}) {
    for (const Geometry cg : {Geometry{40, 22}, Geometry{43, 25}}) {
      const Bytes target = PlanarNoise(noise, tg), child = PlanarNoise(noise, cg),
                  mask = noise.Bytes(static_cast<std::size_t>(cg.stride * cg.height));
      for (int width = 0; width <= 20; ++width) {
        for (int height = 0; height <= 20; ++height) {
          const MaskedCase c{
              tg, cg, Rect(noise.Range(0, 24 - width), noise.Range(0, 23 - height), width, height),
              Rect(noise.Range(0, 24 - width), noise.Range(0, 22 - height), width, height)};
          for (const bool sse2 : {false, true}) {
            Bytes expected = target;
            ReferenceMasked(expected, child, mask, tg, cg, c.dest, c.source, sse2);
            for (const VectorLevel level : kLevels) {
              LimitInnerVectorLevel(level);
              ASSERT_EQ(expected, RunMasked(target, child, mask, c, sse2))
                  << width << " x " << height << " sse2 " << sse2;
            }
          }
        }
      }
    }
  }
}

TEST_F(Blend, MaskedPlanarFormsFollowTheirRulesAtEveryPositionAndAtWideRectangles) {
  Noise noise(13);
  const Geometry tg{20, 20}, cg{20, 20};
  const Bytes target = PlanarNoise(noise, tg), child = PlanarNoise(noise, cg),
              mask = noise.Bytes(400);
  for (int left = 0; left < 20; ++left) {
    for (int top = 0; top < 20; ++top) {
      const RECT r = Rect(left, top, 20 - left, 20 - top);
      for (const bool sse2 : {false, true}) {
        Bytes expected = target;
        ReferenceMasked(expected, child, mask, tg, cg, r, r, sse2);
        ASSERT_EQ(expected, RunMasked(target, child, mask, {tg, cg, r, r}, sse2));
      }
    }
  }
  const Geometry wide{400, 4};
  const Bytes t = PlanarNoise(noise, wide), c = PlanarNoise(noise, wide), m = noise.Bytes(1600);
  for (int width = 0; width <= 400; width += 3) {
    const RECT r = Rect(0, 0, width, 4);
    for (const VectorLevel level : kLevels) {
      LimitInnerVectorLevel(level);
      Bytes expected = t;
      ReferenceMasked(expected, c, m, wide, wide, r, r, true);
      ASSERT_EQ(expected, RunMasked(t, c, m, {wide, wide, r, r}, true)) << width;
    }
  }
}

TEST_F(Blend, PackedFormsFollowTheirRulesAtAllSmallRectangles) {
  Noise noise(14);
  const long long ts = 51, cs = 60, cw = 29;
  const Bytes target = noise.Bytes(static_cast<std::size_t>(ts * 24)),
              child = noise.Bytes(static_cast<std::size_t>(cs * 24)),
              mask = noise.Bytes(static_cast<std::size_t>(cw * 48));
  for (int width = 0; width <= 20; ++width) {
    for (int height = 0; height <= 20; ++height) {
      const RECT d = Rect(noise.Range(0, 24 - width), noise.Range(0, 23 - height), width, height);
      const RECT s = Rect(noise.Range(0, 28 - width), noise.Range(0, 23 - height), width, height);
      for (const bool sse2 : {false, true}) {
        Bytes expected = target;
        ReferencePacked(expected, child, mask, ts, cs, cw, d, s, sse2 ? s.top : d.top);
        for (const VectorLevel level : kLevels) {
          LimitInnerVectorLevel(level);
          Bytes t = target, c = child, m = mask;
          EXPECT_EQ(0, BlendYuy2Masked(On(t), On(c), On(m), 25, 24, static_cast<std::uint32_t>(cw),
                                       24, static_cast<std::uint32_t>(ts),
                                       static_cast<std::uint32_t>(cs), &d, &s, sse2));
          ASSERT_EQ(expected, t) << width << " x " << height << " sse2 " << sse2;
        }
      }
    }
  }
}

TEST_F(Blend, KeyedFormsFollowTheirRulesForAllOpacitiesKeysAndSmallRectangles) {
  Noise noise(15);
  const Geometry tg{25, 23}, cg{31, 24};
  const Bytes target = PlanarNoise(noise, tg);
  Bytes child = PlanarNoise(noise, cg);
  for (auto& b : child) b = b < 200 ? 100 : b;  // many pixels equal the key
  const Key match{100, 100, 100};
  for (int width = 1; width <= 20; ++width) {
    for (int height = 1; height <= 20; ++height) {
      const MaskedCase c{
          tg, cg, Rect(noise.Range(0, 25 - width), noise.Range(0, 23 - height), width, height),
          Rect(noise.Range(0, 31 - width), noise.Range(0, 24 - height), width, height)};
      for (const std::uint32_t opacity : {0u, 1u, 127u, 128u, 255u}) {
        for (const Key key : {match, Key{-1, -1, -1}, Key{271, 100, 100}}) {
          for (const bool sse2 : {false, true}) {
            Bytes expected = target;
            ReferenceKeyed(expected, child, tg, cg, c.dest, c.source, static_cast<int>(opacity),
                           key, sse2);
            ASSERT_EQ(expected, RunKeyed(target, child, c, opacity, {key.y, key.u, key.v}, sse2))
                << width << " x " << height << " opacity " << opacity << " sse2 " << sse2;
          }
        }
      }
    }
  }
}

TEST_F(Blend, ClosedFormsOfTheBatchesEqualTheBatchesAtWidePictures) {
  Noise noise(16);
  for (const int width : {8, 16, 64, 72, 136, 200}) {
    const Geometry g{width, 6};
    const Bytes target = PlanarNoise(noise, g), child = PlanarNoise(noise, g);
    const RECT r = Rect(0, 0, width, 6);
    for (const VectorLevel level : kLevels) {
      LimitInnerVectorLevel(level);
      for (const std::uint32_t opacity : {0u, 3u, 128u, 254u}) {
        Bytes expected = target;
        ReferenceKeyed(expected, child, g, g, r, r, static_cast<int>(opacity), {-1, -1, -1}, true);
        ASSERT_EQ(expected, RunKeyed(target, child, {g, g, r, r}, opacity, {-1, -1, -1}, true));
      }
    }
  }
}

TEST_F(Blend, RectanglesThatLeaveABlockTouchOnlyItsBytesAndReadZeroElsewhere) {
  Noise noise(17);
  const Geometry tg{20, 12}, cg{18, 10};
  const Bytes target = PlanarNoise(noise, tg), child = PlanarNoise(noise, cg),
              mask = noise.Bytes(60);
  for (int turn = 0; turn < 400; ++turn) {
    const int width = noise.Range(2, 30), height = noise.Range(2, 24);
    const MaskedCase c{tg, cg, Rect(noise.Range(0, 40), noise.Range(0, 30), width, height),
                       Rect(noise.Range(0, 30), noise.Range(0, 20), width, height)};
    for (const bool sse2 : {false, true}) {
      Bytes masked = target;
      ReferenceMasked(masked, child, mask, tg, cg, c.dest, c.source, sse2);
      ASSERT_EQ(masked, RunMasked(target, child, mask, c, sse2)) << "turn " << turn;
      Bytes expected = target;
      ReferenceKeyed(expected, child, tg, cg, c.dest, c.source, 90, {-1, -1, -1}, sse2);
      ASSERT_EQ(expected, RunKeyed(target, child, c, 90, {-1, -1, -1}, sse2));
      expected = target;
      ReferenceKeyed(expected, child, tg, cg, c.dest, c.source, 0, {0, 0, 0}, sse2);
      ASSERT_EQ(expected, RunKeyed(target, child, c, 0, {0, 0, 0}, sse2));
    }
  }
}

// The behaviours that a host sees, by name.

TEST_F(Blend, TwoByTwoAtAnEvenPositionIsExactlyOneBlock) {
  Bytes target(24, 100), child(24, 200), mask(16, 0);
  const RECT r = Rect(2, 2, 2, 2);
  for (const bool sse2 : {false, true}) {
    const Bytes out = RunMasked(target, child, mask, {{4, 4}, {4, 4}, r, r}, sse2);
    Bytes expected(24, 100);
    for (const int i : {10, 11, 14, 15, 19, 23}) expected[static_cast<std::size_t>(i)] = 200;
    EXPECT_EQ(expected, out);
  }
}

TEST_F(Blend, OneByNAndNByOneDrawNothingThroughAPlanarMask) {
  Bytes target(600, 100), child(600, 200), mask(400, 0);
  for (const bool sse2 : {false, true}) {
    for (const RECT r : {Rect(2, 2, 1, 16), Rect(2, 2, 16, 1)}) {
      EXPECT_EQ(target, RunMasked(target, child, mask, {{20, 20}, {20, 20}, r, r}, sse2));
    }
  }
}

TEST_F(Blend, ConstantMaskGivesTheSamePlanarPictureInBothForms) {
  Noise noise(18);
  const Geometry g{40, 20};
  const Bytes target = PlanarNoise(noise, g), child = PlanarNoise(noise, g);
  const RECT r = Rect(2, 2, 36, 16);
  EXPECT_EQ(RunMasked(target, child, Bytes(800, 90), {g, g, r, r}, false),
            RunMasked(target, child, Bytes(800, 90), {g, g, r, r}, true));
}

TEST_F(Blend, MaskVaryingInsideBlocksChangesChromaBetweenTheFormsAndLumaNever) {
  const Geometry g{16, 2};
  Bytes target(48, 0), child(48, 200), mask(32, 0);
  for (std::size_t i = 0; i < 32; i += 2) mask[i] = 128;  // left samples 128, right ones 0
  const RECT r = Rect(0, 0, 16, 2);
  const Bytes plain = RunMasked(target, child, mask, {g, g, r, r}, false);
  const Bytes sse2 = RunMasked(target, child, mask, {g, g, r, r}, true);
  EXPECT_TRUE(std::equal(plain.begin(), plain.begin() + 32, sse2.begin()));
  EXPECT_EQ(200, plain[32]);  // lower right: weight 0
  EXPECT_EQ(100, sse2[32]);   // lower left: weight 128
}

TEST_F(Blend, PackedTopsAtZeroAgreeAndADestinationTopMovesThePlainMask) {
  Noise noise(19);
  Bytes target = noise.Bytes(400), child = noise.Bytes(400), mask = noise.Bytes(400);
  auto run = [&](RECT d, RECT s, bool sse2) {
    Bytes t = target;
    BlendYuy2Masked(On(t), On(child), On(mask), 10, 20, 10, 20, 20, 20, &d, &s, sse2);
    return t;
  };
  EXPECT_EQ(run(Rect(0, 0, 8, 8), Rect(0, 0, 8, 8), false),
            run(Rect(0, 0, 8, 8), Rect(0, 0, 8, 8), true));
  const Bytes plain = run(Rect(0, 5, 8, 8), Rect(0, 0, 8, 8), false);
  Bytes expected = target;
  ReferencePacked(expected, child, mask, 20, 20, 10, Rect(0, 5, 8, 8), Rect(0, 0, 8, 8), 5);
  EXPECT_EQ(expected, plain);
  EXPECT_NE(plain, run(Rect(0, 5, 8, 8), Rect(0, 0, 8, 8), true));
}

TEST_F(Blend, MaskOfZerosReplacesAndMaskOfOnesLeavesTheTargetSlightlyDarkened) {
  const Geometry g{32, 4};
  Bytes target(192, 200), child(192, 0);
  const RECT r = Rect(0, 0, 32, 4);
  for (const bool sse2 : {false, true}) {
    EXPECT_EQ(child, RunMasked(target, child, Bytes(128, 0), {g, g, r, r}, sse2));
    EXPECT_EQ(Bytes(192, 199), RunMasked(target, child, Bytes(128, 255), {g, g, r, r}, sse2));
  }
}

TEST_F(Blend, Opacity128OverWidth16LeavesNoBatchOverAndWidth12BlendsFourPixelsOfEvenRowsTwice) {
  for (const int width : {16, 12}) {
    const Geometry g{width, 4};
    Bytes target(static_cast<std::size_t>(width) * 6, 0),
        child(static_cast<std::size_t>(width) * 6, 200);
    const RECT r = Rect(0, 0, width, 4);
    const Bytes out = RunKeyed(target, child, {g, g, r, r}, 128, {-1, -1, -1}, true);
    for (int row = 0; row < 4; ++row) {
      for (int x = 0; x < width; ++x) {
        // once: (128 x 200 + 128 x 0) >> 8 = 100; twice: (128 x 200 + 128 x 100) >> 8 = 150
        const bool twice = width == 12 && row % 2 == 0 && x >= 8;
        EXPECT_EQ(twice ? 150 : 100, out[static_cast<std::size_t>(row * width + x)])
            << row << "," << x;
      }
    }
  }
}

TEST_F(Blend, ChromaIsBlendedFourTimesInThePlainFormAndTwiceInWholeBatches) {
  const Geometry g{8, 2};
  Bytes target(24, 0), child(24, 200);
  const RECT r = Rect(0, 0, 8, 2);
  const Bytes plain = RunKeyed(target, child, {g, g, r, r}, 128, {-1, -1, -1}, false);
  const Bytes sse2 = RunKeyed(target, child, {g, g, r, r}, 128, {-1, -1, -1}, true);
  EXPECT_EQ(187, plain[16]);  // 0, 100, 150, 175, 187
  EXPECT_EQ(150, sse2[16]);   // 0, 100, 150
}

TEST_F(Blend, BlackKeyLeavesOutBlackAndAKeyAboveTheByteRangeLeavesNothingOut) {
  const Geometry g{8, 2};
  Bytes target(24, 50), child(24, 128);
  std::fill_n(child.begin(), 16, static_cast<std::uint8_t>(16));
  const RECT r = Rect(0, 0, 8, 2);
  for (const bool sse2 : {false, true}) {
    EXPECT_EQ(target, RunKeyed(target, child, {g, g, r, r}, 0, KeyColourOf(0), sse2));
    EXPECT_EQ(child, RunKeyed(target, child, {g, g, r, r}, 0, KeyColourOf(0xFFFFFF), sse2));
  }
}

TEST_F(Blend, OpacityOf256AndAboveDrawsNothing) {
  const Geometry g{8, 2};
  Bytes target(24, 50), child(24, 128);
  const RECT r = Rect(0, 0, 8, 2);
  for (const bool sse2 : {false, true}) {
    for (const std::uint32_t opacity : {256u, 257u, 300u, 0xFFFFFFFFu}) {
      EXPECT_EQ(target, RunKeyed(target, child, {g, g, r, r}, opacity, {-1, -1, -1}, sse2));
    }
  }
}

TEST(KeyColour, FollowsItsMatrix) {
  auto key = [](std::uint32_t colour) {
    const KeyColour k = KeyColourOf(colour);
    return std::vector<std::int32_t>{k.y, k.u, k.v};
  };
  EXPECT_EQ((std::vector<std::int32_t>{16, 128, 128}), key(0));
  EXPECT_EQ(271, KeyColourOf(0x00FFFFFF).y);
  EXPECT_EQ((std::vector<std::int32_t>{-1, -1, -1}), key(0xFF000000));
  // Pure blue is byte 0: 0.114 x 255 = 29.07, 0.5 x 255 + 128 = 255.5, 128 - 0.081 x 255 = 107.345.
  EXPECT_EQ((std::vector<std::int32_t>{45, 255, 107}), key(0x000000FF));
  // Pure red is byte 2: 76.245, 128 - 43.095, 255.5.
  EXPECT_EQ((std::vector<std::int32_t>{92, 84, 255}), key(0x00FF0000));
  // Pure green: 149.685, 128 - 84.405, 128 - 106.845.
  EXPECT_EQ((std::vector<std::int32_t>{165, 43, 21}), key(0x0000FF00));
  // In thousandths, where no value stands so near a whole number that a double could pass it.
  for (std::uint32_t r = 0; r < 256; r += 7) {
    for (std::uint32_t g = 0; g < 256; g += 5) {
      for (std::uint32_t b = 0; b < 256; b += 3) {
        const std::uint32_t y = 299 * r + 587 * g + 114 * b;
        const std::uint32_t u = 500 * b + 128000 - 169 * r - 331 * g;
        const std::uint32_t v = 500 * r + 128000 - 419 * g - 81 * b;
        const KeyColour k = KeyColourOf(r << 16 | g << 8 | b);
        if (y % 1000 != 0) {
          ASSERT_EQ(y / 1000 + 16, static_cast<std::uint32_t>(k.y));
        }
        if (u % 1000 != 0) {
          ASSERT_EQ(u / 1000, static_cast<std::uint32_t>(k.u));
        }
        if (v % 1000 != 0) {
          ASSERT_EQ(v / 1000, static_cast<std::uint32_t>(k.v));
        }
      }
    }
  }
  // The top byte takes no part.
  EXPECT_EQ(key(0x00123456), key(0xAB123456));
  EXPECT_NE(key(0xFE000000), key(0xFF000000));
}

}  // namespace
}  // namespace zor::test
