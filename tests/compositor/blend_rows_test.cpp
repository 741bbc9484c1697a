// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "compositor/blend.h"

#include <gtest/gtest.h>

#include "compositor/blend_cases.h"
#include "compositor/blend_rows.h"

namespace zor::test {
namespace {

TEST_F(Blend, SampleFormulaHoldsForAllWeightsAndSamplesInEveryRowForm) {
  Bytes child(256), target(256), mask(512), expected(256);
  for (int w = 0; w <= 256; ++w) {
    for (int c = 0; c < 256; ++c) {
      for (int i = 0; i < 256; ++i) {
        child[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(c);
        expected[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(Mix(c, i, w));
      }
      for (const VectorLevel level : kLevels) {
        LimitInnerVectorLevel(level);
        const BlendRows& rows = InnerBlendRows();
        for (int i = 0; i < 256; ++i)
          target[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(i);
        Bytes masked = target;
        rows.constant({target.data(), child.data(), 0, 0, 1, 256}, static_cast<std::uint32_t>(w));
        ASSERT_EQ(expected, target) << "weight " << w << " child " << c;
        if (w == 256) continue;
        std::fill(mask.begin(), mask.end(), static_cast<std::uint8_t>(w));
        rows.masked(masked.data(), child.data(), mask.data(), 256);
        ASSERT_EQ(expected, masked) << "mask " << w << " child " << c;
      }
    }
  }
}

TEST_F(Blend, RowsOfEveryFormTakeTheRightMaskSamplesAndStayInTheirRow) {
  Noise noise(11);
  using Edge = GuardedMemory::Edge;
  for (const Edge edge : {Edge::kStart, Edge::kEnd}) {
    for (std::size_t n = 0; n <= 200; ++n) {
      const Bytes t = noise.Bytes(2 * n), c = noise.Bytes(2 * n), m = noise.Bytes(2 * n);
      Bytes masked = t, chroma = t, pairs = t, constant = t, twice = t;
      const std::size_t grouped = n - n % 8;
      for (std::size_t i = 0; i < n; ++i) {
        masked[i] = static_cast<std::uint8_t>(Mix(c[i], t[i], m[i]));
      }
      for (std::size_t i = 0; i < 2 * n; ++i) {
        pairs[i] = static_cast<std::uint8_t>(Mix(c[i], t[i], m[i / 2]));
        constant[i] = static_cast<std::uint8_t>(Mix(c[i], t[i], 77));
        twice[i] = static_cast<std::uint8_t>(Mix(c[i], constant[i], 77));
        const std::size_t column = i % n;  // U, then V
        const std::uint8_t weight = m[2 * column + (column < grouped ? 0 : 1)];
        chroma[i] = static_cast<std::uint8_t>(Mix(c[i], t[i], weight));
      }
      auto guarded = [&](const Bytes& bytes, std::size_t count) {
        auto memory = std::make_unique<GuardedMemory>(count, edge);
        std::copy_n(bytes.begin(), count, memory->data());
        return memory;
      };
      for (const VectorLevel level : kLevels) {
        LimitInnerVectorLevel(level);
        for (const BlendRows* rows : {&InnerBlendRows(), &kBlendRowsPlain}) {
          auto check = [&](const Bytes& expected, std::size_t samples, std::size_t weights,
                           auto run) {
            auto target = guarded(t, samples), child = guarded(c, samples),
                 mask = guarded(m, weights);
            run(target->data(), child->data(), mask->data());
            ASSERT_EQ(Bytes(expected.begin(), expected.begin() + static_cast<long>(samples)),
                      target->Copy())
                << n;
            ASSERT_TRUE(target->GuardsIntact() && child->GuardsIntact() && mask->GuardsIntact());
          };
          check(masked, n, n, [&](auto* a, auto* b, auto* w) { rows->masked(a, b, w, n); });
          check(chroma, 2 * n, 2 * n, [&](auto* a, auto* b, auto* w) {
            rows->maskedChroma({{a, a + n}, {b, b + n}}, w, grouped, n);
          });
          check(pairs, 2 * n, n,
                [&](auto* a, auto* b, auto* w) { rows->maskedByPairs(a, b, w, n); });
          // Two rows, of which the second stands in front.
          const auto step = -static_cast<std::int64_t>(n);
          check(constant, 2 * n, 0, [&](auto* a, auto* b, auto*) {
            rows->constant({a + n, b + n, step, step, 2, n}, 77);
          });
          check(twice, 2 * n, 0, [&](auto* a, auto* b, auto*) {
            rows->constantTwice({a + n, b + n, step, step, 2, n}, 77);
          });
        }
      }
    }
  }
}

TEST_F(Blend, WhatARowLeavesOverIsBlendedOnceMoreInEveryRowForm) {
  Noise noise(13);
  constexpr std::size_t kSamples = 16;  // eight of luma, four of U, four of V
  for (std::size_t columns = 1; columns <= 7; ++columns) {
    for (const bool followed : {false, true}) {
      for (const int w : {1, 77, 128, 255}) {
        const Bytes t = noise.Bytes(kSamples), c = noise.Bytes(kSamples);
        Bytes expected = t;
        auto again = [&](std::size_t i) {
          expected[i] = static_cast<std::uint8_t>(Mix(c[i], expected[i], w));
        };
        for (std::size_t i = 8 - columns; followed && i < 8; ++i) again(i);
        // Pairs of columns from the first one left over; an odd last one stands alone.
        const std::size_t pairs = columns / 2, last = columns % 2 == 0 ? 4 : 3;
        for (std::size_t i = last - pairs; i < last; ++i) {
          for (int time = followed ? 2 : 1; time > 0; --time) {
            again(8 + i);
            again(12 + i);
          }
        }
        for (const VectorLevel level : kLevels) {
          LimitInnerVectorLevel(level);
          for (const BlendRows* rows : {&InnerBlendRows(), &kBlendRowsPlain}) {
            Bytes target = t;
            std::uint8_t* const a = target.data();
            const std::uint8_t* const b = c.data();
            rows->leftOver(a, b, {{a + 8, a + 12}, {b + 8, b + 12}}, static_cast<std::uint32_t>(w),
                           columns, followed);
            ASSERT_EQ(expected, target) << columns << " weight " << w;
          }
        }
      }
    }
  }
}

TEST_F(Blend, PixelsThatDifferFromTheKeyInOneSamplePassInEveryRowForm) {
  Noise noise(14);
  const KeySamples key{9, 8, 7};
  for (std::size_t count = 1; count <= 64; ++count) {
    const std::size_t pairs = (count + 1) / 2;
    GuardedMemory y(count, GuardedMemory::Edge::kEnd), u(pairs, GuardedMemory::Edge::kEnd),
        v(pairs, GuardedMemory::Edge::kEnd);
    for (int round = 0; round < 20; ++round) {
      const auto rarely = [&](int sample) {
        return static_cast<std::uint8_t>(sample + (noise.Next() % 4 == 0 ? 1 : 0));
      };
      for (std::size_t i = 0; i < count; ++i) y.data()[i] = rarely(9);
      for (std::size_t i = 0; i < pairs; ++i) u.data()[i] = rarely(8);
      for (std::size_t i = 0; i < pairs; ++i) v.data()[i] = rarely(7);
      std::uint64_t expected = 0;
      for (std::size_t i = 0; i < count; ++i) {
        const bool equal = y.data()[i] == 9 && u.data()[i / 2] == 8 && v.data()[i / 2] == 7;
        if (!equal) expected |= std::uint64_t{1} << i;
      }
      for (const VectorLevel level : kLevels) {
        LimitInnerVectorLevel(level);
        for (const BlendRows* rows : {&InnerBlendRows(), &kBlendRowsPlain}) {
          ASSERT_EQ(expected, rows->passing(y.data(), u.data(), v.data(), key, count)) << count;
        }
      }
    }
  }
}

}  // namespace
}  // namespace zor::test
