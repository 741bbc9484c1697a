// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The source rows that were last interpolated across.

#include <cstdint>

namespace zor {

/// Keeps the last two rows, which is all that rows of an enlarged picture share.
/// @tparam Across called as across(out, sourceRow) for a row that isn't at hand.
template <class Across>
class AcrossRows {
 public:
  /// @param memory two rows of @p rowBytes.
  AcrossRows(Across across, std::uint8_t* memory, std::uint64_t rowBytes)
      : across_(across), rows_{memory, memory + rowBytes} {}

  const std::uint8_t* Get(const std::uint8_t* sourceRow) {
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
  std::uint8_t* rows_[2];
  const std::uint8_t* sources_[2] = {nullptr, nullptr};
  int latest_ = 0;
};

}  // namespace zor
