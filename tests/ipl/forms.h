// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The forms of the engine's kernels, one at a time.

#include "convert/feature_word.h"

namespace zor::test {

/// Pins one form for the length of a scope, as far as the processor has it.
class PinnedForm {
 public:
  struct Choice {
    const char* name;
    int place;  ///< in the tables of forms
    bool vectors;
    VectorLevel level;
  };
  static constexpr Choice kAll[] = {{"plain", 0, false, VectorLevel::kSse2},
                                    {"sse2", 1, true, VectorLevel::kSse2},
                                    {"avx2", 2, true, VectorLevel::kAvx2},
                                    {"avx512", 3, true, VectorLevel::kAvx512}};

  explicit PinnedForm(const Choice& choice) : choice_(choice), word_(CpuFeatureWord) {
    if (!choice.vectors) CpuFeatureWord = 0;
    LimitInnerVectorLevel(choice.level);
  }
  ~PinnedForm() {
    CpuFeatureWord = word_;
    LimitInnerVectorLevel(VectorLevel::kAvx512);
  }
  PinnedForm(const PinnedForm&) = delete;
  PinnedForm& operator=(const PinnedForm&) = delete;

  /// @return whether the processor runs this very form.
  bool Runs() const { return InnerVectorLevel() == choice_.level; }

 private:
  Choice choice_;
  std::uint32_t word_;
};

}  // namespace zor::test
