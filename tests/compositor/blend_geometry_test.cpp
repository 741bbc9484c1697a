// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

/// Blends at every small rectangle, at rectangles that run into their own pictures, and the shorter
/// ways of the keyed blend against the gathering one.

#include <array>
#include <functional>

#include "compositor/blend_cases.h"

namespace zor::test {
namespace {

constexpr int kSide = 20;

/// Calls @p run with every rectangle of up to 20 x 20 at every position inside a 20 x 20 picture,
/// and with a source rectangle that takes all positions in turn.
void ForAllSmallRectangles(const std::function<void(const RECT& dest, const RECT& source)>& run) {
  int turn = 0;
  for (int width = 0; width <= kSide; ++width) {
    for (int height = 0; height <= kSide; ++height) {
      for (int left = 0; left + width <= kSide; ++left) {
        for (int top = 0; top + height <= kSide; ++top, ++turn) {
          const int acrossPositions = kSide - width + 1;
          const int downPositions = kSide - height + 1;
          if (testing::Test::HasFatalFailure()) return;
          run(Rect(left, top, width, height),
              Rect(turn % acrossPositions, turn / acrossPositions % downPositions, width, height));
        }
      }
    }
  }
}

/// The vector levels in turn, so that each meets a third of the rectangles.
class LevelsInTurn {
 public:
  void Next() { LimitInnerVectorLevel(kLevels[turn_++ % 3]); }

 private:
  int turn_ = 0;
};

class BlendGeometry : public Blend {};

TEST_F(BlendGeometry, MaskedPlanarFormsFollowTheirRulesAtAllPositionsAndSizesUpTo20) {
  Noise noise(31);
  LevelsInTurn levels;
  for (const auto& [tg, cg] : {std::pair{Geometry{20, 20}, Geometry{24, 20}},
                               std::pair{Geometry{21, 20}, Geometry{23, 21}}}) {
    const Bytes target = PlanarNoise(noise, tg), child = PlanarNoise(noise, cg);
    const Bytes mask = noise.Bytes(static_cast<std::size_t>(cg.stride * cg.height));
    ForAllSmallRectangles([&, tg = tg, cg = cg](const RECT& dest, const RECT& source) {
      levels.Next();
      for (const bool sse2 : {false, true}) {
        Bytes expected = target;
        ReferenceMasked(expected, child, mask, tg, cg, dest, source, sse2);
        ASSERT_EQ(expected, RunMasked(target, child, mask, {tg, cg, dest, source}, sse2))
            << dest.left << "," << dest.top << "," << dest.right << "," << dest.bottom;
      }
    });
  }
}

TEST_F(BlendGeometry, PackedFormsFollowTheirRulesAtAllPositionsAndSizesUpTo20) {
  Noise noise(32);
  LevelsInTurn levels;
  for (const auto& [targetStride, childStride, childWidth] :
       {std::array{40, 48, 20}, std::array{43, 41, 21}}) {
    const Bytes target = noise.Bytes(static_cast<std::size_t>(targetStride * kSide));
    const Bytes child = noise.Bytes(static_cast<std::size_t>(childStride * kSide));
    const Bytes mask = noise.Bytes(static_cast<std::size_t>(childWidth * kSide));
    ForAllSmallRectangles([&, ts = targetStride, cs = childStride, cw = childWidth](
                              const RECT& dest, const RECT& source) {
      levels.Next();
      for (const bool sse2 : {false, true}) {
        Bytes expected = target;
        ReferencePacked(expected, child, mask, ts, cs, cw, dest, source,
                        sse2 ? source.top : dest.top);
        ASSERT_EQ(expected, RunPacked(target, child, mask, {ts, cs, cw}, dest, source, sse2));
      }
    });
  }
}

TEST_F(BlendGeometry, KeyedFormsFollowTheirRulesAtAllPositionsAndSizesUpTo20) {
  Noise noise(33);
  LevelsInTurn levels;
  for (const auto& [tg, cg] : {std::pair{Geometry{20, 20}, Geometry{24, 20}},
                               std::pair{Geometry{21, 20}, Geometry{23, 21}}}) {
    const Bytes target = PlanarNoise(noise, tg);
    Bytes child = PlanarNoise(noise, cg);
    for (auto& b : child) b = b < 190 ? 90 : b;  // many pixels equal the key
    constexpr Key kKeys[] = {{-1, -1, -1}, {90, 90, 90}};
    constexpr int kOpacities[] = {0, 40, 128, 255, 0};
    int turn = 0;
    ForAllSmallRectangles([&, tg = tg, cg = cg](const RECT& dest, const RECT& source) {
      levels.Next();
      const int opacity = kOpacities[++turn % 5];
      for (const Key& key : kKeys) {
        for (const bool sse2 : {false, true}) {
          Bytes expected = target;
          ReferenceKeyed(expected, child, tg, cg, dest, source, opacity, key, sse2);
          ASSERT_EQ(expected,
                    RunKeyed(target, child, {tg, cg, dest, source},
                             static_cast<std::uint32_t>(opacity), {key.y, key.u, key.v}, sse2))
              << dest.left << "," << dest.top << "," << dest.right << "," << dest.bottom
              << " opacity " << opacity << " sse2 " << sse2;
        }
      }
    });
  }
}

TEST_F(BlendGeometry, RowsWiderThanTheStrideMeetTheirNeighboursInTheOrderOfTheForm) {
  Noise noise(34);
  for (const Geometry g : {Geometry{16, 40}, Geometry{17, 40}, Geometry{32, 24}}) {
    const Geometry cg{101, 14};  // the child's rows stand apart
    const Bytes target = PlanarNoise(noise, g), child = PlanarNoise(noise, cg);
    const Bytes mask = noise.Bytes(static_cast<std::size_t>(cg.stride * cg.height));
    for (int width = 14; width <= 90; ++width) {
      for (const int height : {1, 2, 4, 7, 10}) {
        const RECT r = Rect(width % 5, height % 3, width, height);
        const MaskedCase c{g, cg, r, r};
        const int strides[] = {static_cast<int>(g.stride), static_cast<int>(cg.stride)};
        for (const VectorLevel level : kLevels) {
          LimitInnerVectorLevel(level);
          for (const bool sse2 : {false, true}) {
            Bytes expected = target;
            ReferenceMasked(expected, child, mask, g, cg, r, r, sse2);
            ASSERT_EQ(expected, RunMasked(target, child, mask, c, sse2))
                << width << " x " << height << " sse2 " << sse2;
            expected = target;
            ReferencePacked(expected, child, mask, strides[0], strides[1], 95, r, r, r.top);
            ASSERT_EQ(expected,
                      RunPacked(target, child, mask, {strides[0], strides[1], 95}, r, r, sse2));
            for (const int opacity : {0, 77}) {
              for (const int key : {-1, int{child[40]}}) {
                expected = target;
                ReferenceKeyed(expected, child, g, cg, r, r, opacity, {key, key, key}, sse2);
                ASSERT_EQ(expected, RunKeyed(target, child, c, static_cast<std::uint32_t>(opacity),
                                             {key, key, key}, sse2))
                    << width << " x " << height << " opacity " << opacity << " sse2 " << sse2;
              }
            }
          }
        }
      }
    }
  }
}

TEST_F(BlendGeometry, LumaThatRunsIntoThePicturesOwnChromaIsBlendedInTheOrderOfTheForm) {
  Noise noise(35);
  const Geometry tg{20, 8}, cg{44, 40};
  const Bytes child = PlanarNoise(noise, cg), target = PlanarNoise(noise, tg);
  const Bytes mask = noise.Bytes(static_cast<std::size_t>(cg.stride * cg.height));
  for (int top = 0; top <= 16; ++top) {
    for (int width = 1; width <= 40; width += 3) {
      const RECT dest = Rect(top % 4, top, width, 14);
      const RECT source = Rect(1, 2, width, 14);
      for (const bool sse2 : {false, true}) {
        Bytes expected = target;
        ReferenceMasked(expected, child, mask, tg, cg, dest, source, sse2);
        ASSERT_EQ(expected, RunMasked(target, child, mask, {tg, cg, dest, source}, sse2))
            << top << " width " << width << " sse2 " << sse2;
        expected = target;
        ReferenceKeyed(expected, child, tg, cg, dest, source, 100, {-1, -1, -1}, sse2);
        ASSERT_EQ(expected,
                  RunKeyed(target, child, {tg, cg, dest, source}, 100, {-1, -1, -1}, sse2))
            << top << " width " << width << " sse2 " << sse2;
      }
    }
  }
}

TEST_F(BlendGeometry, TargetsSmallerThanAGroupMeetThemselvesInTheOrderOfTheForm) {
  Noise noise(38);
  const Geometry cg{44, 12};
  const Bytes child = PlanarNoise(noise, cg);
  const Bytes mask = noise.Bytes(static_cast<std::size_t>(cg.stride * cg.height));
  for (const Geometry tg :
       {Geometry{2, 1}, Geometry{2, 3}, Geometry{4, 4}, Geometry{6, 5}, Geometry{7, 9}}) {
    const Bytes target = PlanarNoise(noise, tg);
    for (int width = 1; width <= 40; ++width) {
      for (const int height : {1, 2, 3, 6, 9}) {
        const MaskedCase c{tg, cg, Rect(width % 3, height % 2, width, height),
                           Rect(1, 1, width, height)};
        for (const bool sse2 : {false, true}) {
          Bytes expected = target;
          ReferenceMasked(expected, child, mask, tg, cg, c.dest, c.source, sse2);
          ASSERT_EQ(expected, RunMasked(target, child, mask, c, sse2))
              << tg.stride << ": " << width << " x " << height << " sse2 " << sse2;
          expected = target;
          ReferenceKeyed(expected, child, tg, cg, c.dest, c.source, 100, {-1, -1, -1}, sse2);
          ASSERT_EQ(expected, RunKeyed(target, child, c, 100, {-1, -1, -1}, sse2))
              << tg.stride << ": " << width << " x " << height << " sse2 " << sse2;
        }
      }
    }
  }
}

/// A key in the range of samples that no pixel of the child has makes the kernel gather; without a
/// key it may take a shorter way. Both draw every pixel.
TEST_F(BlendGeometry, ShorterWaysWithoutAKeyEqualTheGatheringOneAtEveryWidthAndOpacity) {
  Noise noise(36);
  constexpr std::uint8_t kUnused = 7;
  const Geometry g{160, 6};
  const Bytes target = PlanarNoise(noise, g);
  Bytes child = PlanarNoise(noise, g);
  for (auto& b : child) b = b == kUnused ? 8 : b;
  auto check = [&](const RECT& dest, const RECT& source, std::uint32_t opacity) {
    const MaskedCase c{g, g, dest, source};
    const Bytes gathered = RunKeyed(target, child, c, opacity, {kUnused, kUnused, kUnused}, true);
    for (const VectorLevel level : kLevels) {
      LimitInnerVectorLevel(level);
      ASSERT_EQ(gathered, RunKeyed(target, child, c, opacity, KeyColourOf(kNoKeyColour), true))
          << dest.right - dest.left << " x " << dest.bottom - dest.top << " opacity " << opacity;
    }
    Bytes expected = target;
    ReferenceKeyed(expected, child, g, g, dest, source, static_cast<int>(opacity), {-1, -1, -1},
                   true);
    ASSERT_EQ(expected, gathered);
  };
  for (int width = 1; width <= 150; ++width) {
    for (const int height : {1, 2, 3, 5}) {
      for (const std::uint32_t opacity : {0u, 1u, 128u, 255u}) {
        check(Rect(width % 10, height % 2, width, height), Rect(width % 7, 1, width, height),
              opacity);
      }
    }
  }
  for (std::uint32_t opacity = 0; opacity <= 255; ++opacity) {
    for (const int width : {8, 12, 22, 64}) {
      check(Rect(0, 0, width, 4), Rect(2, 2, width, 4), opacity);
    }
  }
}

/// Runs of passing pixels may be blended as rows; what comes out is that of the batches.
TEST_F(BlendGeometry, KeyedRunsEqualTheBatchesForEveryWidthOpacityAndDensityOfTheKey) {
  Noise noise(37);
  const Geometry g{130, 6};
  const Bytes target = PlanarNoise(noise, g);
  for (const int rare : {2, 20, 128, 220, 250}) {
    Bytes child = PlanarNoise(noise, g);
    for (auto& b : child) b = b >= rare ? 50 : b;
    for (int width = 1; width <= 120; ++width) {
      const RECT dest = Rect(width % 9, width % 2, width, 5);
      const RECT source = Rect(width % 4, 1, width, 5);
      for (const std::uint32_t opacity : {0u, 77u, 200u}) {
        Bytes expected = target;
        ReferenceKeyed(expected, child, g, g, dest, source, static_cast<int>(opacity), {50, 50, 50},
                       true);
        for (const VectorLevel level : kLevels) {
          LimitInnerVectorLevel(level);
          ASSERT_EQ(expected,
                    RunKeyed(target, child, {g, g, dest, source}, opacity, {50, 50, 50}, true))
              << width << " below " << rare << " opacity " << opacity;
        }
      }
    }
  }
}

/// Long runs of either kind, which begin and end at any place of the 64 that are tested at once.
TEST_F(BlendGeometry, KeyedRunsOfAllLengthsEqualTheBatches) {
  Noise noise(38);
  const Geometry g{420, 4};
  const Bytes target = PlanarNoise(noise, g);
  for (int round = 0; round < 150; ++round) {
    Bytes child = PlanarNoise(noise, g);
    const int longest = round % 3 == 0 ? 9 : 140;
    for (std::size_t i = 0; i < child.size();) {
      const bool keyed = noise.Next() % 2 == 0;
      const auto length = static_cast<std::size_t>(noise.Range(1, longest));
      for (std::size_t end = std::min(i + length, child.size()); i < end; ++i) {
        if (keyed || child[i] == 50) child[i] = keyed ? 50 : 51;
      }
    }
    const RECT dest = Rect(noise.Range(0, 9), 0, noise.Range(150, 400), 4);
    const RECT source = Rect(noise.Range(0, 9), 0, dest.right - dest.left, 4);
    Bytes expected = target;
    ReferenceKeyed(expected, child, g, g, dest, source, 77, {50, 50, 50}, true);
    ASSERT_EQ(expected, RunKeyed(target, child, {g, g, dest, source}, 77, {50, 50, 50}, true))
        << round;
  }
}

/// A surface may be its own child: what was written is read again, in the order of the form.
TEST_F(BlendGeometry, ChildThatIsTheTargetItselfIsReadInTheOrderOfTheForm) {
  Noise noise(39);
  const Geometry g{40, 16};
  const Bytes picture = PlanarNoise(noise, g), mask = noise.Bytes(640);
  auto word = [](long long value) { return static_cast<std::uint32_t>(value); };
  for (const auto& [dx, dy, sx, sy] :
       {std::array{4, 2, 0, 0}, std::array{1, 0, 0, 0}, std::array{0, 0, 3, 1},
        std::array{2, 1, 5, 1}, std::array{2, 2, 2, 2}}) {
    for (const int width : {9, 16, 30}) {
      const RECT dest = Rect(dx, dy, width, 10), source = Rect(sx, sy, width, 10);
      for (const bool sse2 : {false, true}) {
        Bytes expected = picture, shared = picture;
        ReferenceMasked(expected, expected, mask, g, g, dest, source, sse2);
        Bytes m = mask;
        BlendYuv420Masked(On(shared), On(shared), On(m), word(g.stride), word(g.height),
                          word(g.stride), word(g.height), &dest, &source, sse2);
        EXPECT_EQ(expected, shared) << dx << " width " << width << " sse2 " << sse2;

        for (const std::uint32_t opacity : {0u, 90u}) {
          expected = shared = picture;
          ReferenceKeyed(expected, expected, g, g, dest, source, static_cast<int>(opacity),
                         {-1, -1, -1}, sse2);
          BlendYuv420Keyed({On(shared), word(g.stride), word(g.height)},
                           {On(shared), word(g.stride), word(g.height)}, dest, source, opacity,
                           {-1, -1, -1}, sse2);
          EXPECT_EQ(expected, shared) << dx << " width " << width << " sse2 " << sse2;
        }

        expected = shared = picture;
        const RECT d = Rect(dx, dy, width / 2, 6), s = Rect(sx, sy, width / 2, 6);
        ReferencePacked(expected, expected, mask, 40, 40, 20, d, s, sse2 ? s.top : d.top, sse2);
        BlendYuy2Masked(On(shared), On(shared), On(m), 20, 16, 20, 16, 40, 40, &d, &s, sse2);
        EXPECT_EQ(expected, shared) << dx << " width " << width << " sse2 " << sse2;
      }
    }
  }
}

/// A mask that is the target's own block: each pixel's sample is read once, before the pixel.
TEST_F(BlendGeometry, PackedPixelTakesOneMaskSampleForBothBytesAlsoFromItsOwnTarget) {
  for (const bool sse2 : {false, true}) {
    Bytes target = {100, 200, 0, 0}, child = {10, 20, 30, 40};
    const RECT r = Rect(0, 0, 1, 1);
    BlendYuy2Masked(On(target), On(child), On(target), 2, 1, 2, 1, 4, 4, &r, &r, sse2);
    EXPECT_EQ(Mix(10, 100, 100), target[0]);
    EXPECT_EQ(Mix(20, 200, 100), target[1]);
  }
}

}  // namespace
}  // namespace zor::test
