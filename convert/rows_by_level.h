// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The row functions of an SSE2 form by the processor's width.

#include <cstdint>

#include "convert/feature_word.h"
#include "platform/compiler.h"

namespace zor {

/// Row functions indexed by `VectorLevel`. Each converts all columns it is asked for, or as many as
/// its family says, or none of a row shorter than its block; then the next narrower one is tried.
template <class Row>
struct RowsByLevel {
  Row* row[3];

  /// @return the columns converted, counted from the first
  template <class... Arguments>
  ZOR_ALWAYS_INLINE std::int32_t Convert(VectorLevel widest, const Arguments&... arguments) const {
    std::int32_t done = 0;
    for (int level = static_cast<int>(widest); level >= 0 && done == 0; --level) {
      done = row[level](arguments...);
    }
    return done;
  }
};

}  // namespace zor
