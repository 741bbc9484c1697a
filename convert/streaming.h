// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// When a kernel writes past the caches.

#include <cstdint>

namespace zor {

/// Output of more bytes than this doesn't come back out of the caches before it is needed, so that
/// wide forms write it with non-temporal stores. A 1080p picture at 4 bytes a pixel stays below:
/// the step after the conversion reads it.
inline constexpr std::int64_t kStreamingBytes = std::int64_t{8} << 20;

/// @return whether address and stride keep every row of @p operand aligned to whole cache lines, as
///         non-temporal stores want.
inline bool RowsAreLines(const std::uint8_t* operand, std::int64_t stride) noexcept {
  return ((reinterpret_cast<std::uintptr_t>(operand) | static_cast<std::uintptr_t>(stride)) & 63) ==
         0;
}

}  // namespace zor
