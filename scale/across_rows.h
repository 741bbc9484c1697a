// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The source rows that were last interpolated across.

#include <cstdint>

namespace zor {

/// Keeps the last two rows, which is all that rows of an enlarged picture share.
/// @tparam Across called as across(out, sourceRow) for a row that isn't at hand.
/// @tparam Value what a row is made of.
template <class Across, class Value = std::uint8_t>
class AcrossRows {
 public:
  /// @param memory two rows of @p rowValues.
  AcrossRows(Across across, Value* memory, std::uint64_t rowValues)
      : across_(across), rows_{memory, memory + rowValues} {}

  const Value* Get(const std::uint8_t* sourceRow) {
    if (sourceRow == sources_[latest_]) return rows_[latest_];
    latest_ ^= 1;
    if (sourceRow != sources_[latest_]) {
      across_(rows_[latest_], sourceRow);
      sources_[latest_] = sourceRow;
    }
    return rows_[latest_];
  }

 private:
  Across across_;
  Value* rows_[2];
  const std::uint8_t* sources_[2] = {nullptr, nullptr};
  int latest_ = 0;
};

}  // namespace zor
