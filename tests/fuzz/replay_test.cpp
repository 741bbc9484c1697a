// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

/// The fuzzers' runs over seeded bytes, in every form and with every inner vector level.

#include <gtest/gtest.h>

#include <algorithm>

#include "convert/feature_word.h"
#include "fuzz/runs.h"
#include "support/guarded_memory.h"

namespace zor::test {
namespace {

class Replay : public testing::Test {
 protected:
  ~Replay() override { LimitInnerVectorLevel(VectorLevel::kAvx512); }

  /// A run ends the process where the library breaks its contract; what is left to compare is that
  /// vector levels differ in speed alone.
  void Run(fuzz::Trace (*run)(const std::uint8_t*, std::size_t), int seeds) {
    for (int seed = 0; seed < seeds; ++seed) {
      Noise noise(static_cast<std::uint64_t>(seed) + 7000);
      std::vector<std::uint8_t> bytes = noise.Bytes(static_cast<std::size_t>(noise.Range(40, 400)));
      LimitInnerVectorLevel(VectorLevel::kSse2);
      const fuzz::Trace expected = run(bytes.data(), bytes.size());
      for (const VectorLevel level : {VectorLevel::kAvx2, VectorLevel::kAvx512}) {
        LimitInnerVectorLevel(level);
        ASSERT_EQ(run(bytes.data(), bytes.size()), expected) << "seed " << seed;
      }
    }
  }
};

TEST_F(Replay, ComposeGivesTheSameAtEveryVectorLevel) {
  Run(fuzz::RunCompose, 1000);
}

TEST_F(Replay, OperationsGiveTheSameAtEveryVectorLevel) {
  Run(fuzz::RunOperations, 1000);
}

TEST_F(Replay, ShortAndEmptyInputsEnd) {
  const std::vector<std::uint8_t> bytes(64, 0xFF);
  for (std::size_t size = 0; size <= bytes.size(); ++size) {
    EXPECT_EQ(fuzz::RunCompose(bytes.data(), size), fuzz::RunCompose(bytes.data(), size));
    EXPECT_EQ(fuzz::RunOperations(bytes.data(), size), fuzz::RunOperations(bytes.data(), size));
  }
}

}  // namespace
}  // namespace zor::test
