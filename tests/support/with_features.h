// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The kernel forms, chosen by a test.

#include "convert/feature_word.h"

namespace zor::test {

/// All bits; bit 26 clear; bits 26 and 23 clear: the words that choose the SSE2, MMX and plain
/// forms.
inline constexpr std::uint32_t kAllBits = 0xFFFFFFFFu;
inline constexpr std::uint32_t kWords[] = {kAllBits, kAllBits & ~kFeatureSse2,
                                           kAllBits & ~kFeatureSse2 & ~kFeatureMmx};

/// Pins the inner vector level for the length of a scope, as far as the processor has it.
class PinnedVectorLevel {
 public:
  explicit PinnedVectorLevel(VectorLevel level) { LimitInnerVectorLevel(level); }
  ~PinnedVectorLevel() { LimitInnerVectorLevel(VectorLevel::kAvx512); }
  PinnedVectorLevel(const PinnedVectorLevel&) = delete;
  PinnedVectorLevel& operator=(const PinnedVectorLevel&) = delete;
};

/// Sets the capability word for the length of a scope.
class WithFeatures {
 public:
  explicit WithFeatures(std::uint32_t word) : before_(CpuFeatureWord) { CpuFeatureWord = word; }
  ~WithFeatures() { CpuFeatureWord = before_; }
  WithFeatures(const WithFeatures&) = delete;
  WithFeatures& operator=(const WithFeatures&) = delete;

 private:
  std::uint32_t before_;
};

}  // namespace zor::test
