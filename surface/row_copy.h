// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Copies of rows between memory of different row steps.

#include <cstddef>
#include <cstdint>

#include "convert/fast_mem_copy.h"

namespace zor {

/// Copies @p rows rows of @p rowBytes bytes. Steps lead from one row to the next, backwards if
/// negative. A size under 1 copies nothing.
inline void CopyRows(std::uint8_t* target, std::int64_t targetStep, const std::uint8_t* source,
                     std::int64_t sourceStep, std::int64_t rowBytes, std::int64_t rows) noexcept {
  if (rowBytes < 1 || rows < 1) return;
  if (targetStep == rowBytes && sourceStep == rowBytes) {
    FastMemCopy(target, source, static_cast<std::size_t>(rowBytes * rows));
    return;
  }
  for (std::int64_t row = 0; row < rows; ++row) {
    FastMemCopy(target + row * targetStep, source + row * sourceStep,
                static_cast<std::size_t>(rowBytes));
  }
}

}  // namespace zor
