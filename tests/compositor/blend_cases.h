// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Runs of the blends over test pictures.

#include <gtest/gtest.h>

#include "compositor/blend.h"
#include "compositor/blend_reference.h"
#include "convert/feature_word.h"
#include "support/guarded_memory.h"

namespace zor::test {

inline constexpr VectorLevel kLevels[] = {VectorLevel::kSse2, VectorLevel::kAvx2, VectorLevel::kAvx512};

/// Runs every vector level, and the unlimited one again at the end.
class Blend : public ::testing::Test {
 protected:
  void TearDown() override { LimitInnerVectorLevel(VectorLevel::kAvx512); }
};

inline BlockBytes On(Bytes& bytes) { return {bytes.data(), static_cast<std::int64_t>(bytes.size())}; }

inline RECT Rect(int left, int top, int width, int height) {
  return {left, top, left + width, top + height};
}

inline Bytes PlanarNoise(Noise& noise, Geometry g) {
  return noise.Bytes(static_cast<std::size_t>(g.stride * g.height * 3 / 2 + 2));
}

struct MaskedCase {
  Geometry target, child;
  RECT dest, source;
};

inline Bytes RunMasked(Bytes target, Bytes child, Bytes mask, const MaskedCase& c, bool sse2) {
  EXPECT_EQ(0, BlendYuv420Masked(On(target), On(child), On(mask),
                                 static_cast<std::uint32_t>(c.target.stride),
                                 static_cast<std::uint32_t>(c.target.height),
                                 static_cast<std::uint32_t>(c.child.stride),
                                 static_cast<std::uint32_t>(c.child.height), &c.dest, &c.source,
                                 sse2));
  return target;
}

inline Bytes RunKeyed(Bytes target, Bytes child, const MaskedCase& c, std::uint32_t opacity,
               const KeyColour& key, bool sse2) {
  BlendYuv420Keyed({On(target), static_cast<std::uint32_t>(c.target.stride),
                    static_cast<std::uint32_t>(c.target.height)},
                   {On(child), static_cast<std::uint32_t>(c.child.stride),
                    static_cast<std::uint32_t>(c.child.height)},
                   c.dest, c.source, opacity, key, sse2);
  return target;
}

struct PackedSteps {
  int targetStride, childStride, childWidth;
};

inline Bytes RunPacked(Bytes target, Bytes child, Bytes mask, const PackedSteps& steps,
                       const RECT& dest, const RECT& source, bool sse2) {
  auto word = [](int value) { return static_cast<std::uint32_t>(value); };
  EXPECT_EQ(0, BlendYuy2Masked(On(target), On(child), On(mask), 25, 24, word(steps.childWidth), 24,
                               word(steps.targetStride), word(steps.childStride), &dest, &source,
                               sse2));
  return target;
}

}  // namespace zor::test
