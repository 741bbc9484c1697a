// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Pictures and levels that the tests of the scaling engine go through.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "convert/feature_word.h"
#include "scale/scale_reference.h"
#include "support/guarded_memory.h"
#include "support/with_features.h"

namespace zor::test {

/// The levels that this processor has.
inline std::vector<VectorLevel> LevelsAtHand() {
  std::vector<VectorLevel> levels;
  for (const VectorLevel level : {VectorLevel::kSse2, VectorLevel::kAvx2, VectorLevel::kAvx512}) {
    LimitInnerVectorLevel(level);
    if (InnerVectorLevel() == level) levels.push_back(level);
  }
  LimitInnerVectorLevel(VectorLevel::kAvx512);
  return levels;
}

/// Rows that end with their last pixel, next to a page without access.
class GuardedPicture {
 public:
  GuardedPicture(int width, int height, int stride, int channels, GuardedMemory::Edge edge,
                 std::uint64_t seed)
      : width(width),
        height(height),
        stride(stride),
        channels(channels),
        memory_(Bytes(width, height, stride, channels), edge) {
    Noise(seed).Fill(memory_.data(), memory_.size());
  }

  static std::size_t Bytes(int width, int height, int stride, int channels) {
    if (width <= 0 || height <= 0) return 1;
    return static_cast<std::size_t>(height - 1) * stride +
           static_cast<std::size_t>(width) * channels;
  }

  std::uint8_t* data() { return memory_.data(); }
  std::size_t size() const { return memory_.size(); }
  std::vector<std::uint8_t> Copy() const { return memory_.Copy(); }
  bool GuardsIntact() const { return memory_.GuardsIntact(); }
  RefSource Ref() { return {memory_.data(), width, height, stride, channels}; }

  const int width;
  const int height;
  const int stride;
  const int channels;

 private:
  GuardedMemory memory_;
};

/// Scales into a copy of the target's bytes by the statement and by the engine at every level;
/// afterwards the target is as before.
/// @param what tells the case if they differ.
/// @param state writes what is stated at the address it is given.
/// @param scale writes into the target.
template <class What, class State, class Scale>
void ExpectAtEveryLevel(GuardedPicture& target, GuardedPicture& source, const What& what,
                        const State& state, const Scale& scale) {
  static const std::vector<VectorLevel> levels = LevelsAtHand();
  const std::vector<std::uint8_t> before = target.Copy();
  std::vector<std::uint8_t> expected = before;
  state(expected.data());
  for (const VectorLevel level : levels) {
    const PinnedVectorLevel pinned(level);
    std::copy(before.begin(), before.end(), target.data());
    scale();
    ASSERT_EQ(expected, target.Copy())
        << source.width << "x" << source.height << " to " << target.width << "x" << target.height
        << ", " << source.channels << " channels, " << what << ", level "
        << static_cast<int>(level);
    ASSERT_TRUE(target.GuardsIntact() && source.GuardsIntact());
  }
  std::copy(before.begin(), before.end(), target.data());
}

inline GuardedMemory::Edge EdgeOf(unsigned n) {
  return n % 2 == 0 ? GuardedMemory::Edge::kEnd : GuardedMemory::Edge::kStart;
}

}  // namespace zor::test
