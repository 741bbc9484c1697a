// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The pixel sizes of RGB kernels, as policies.

#include <cstdint>

namespace zor {

/// B, G, R in rising addresses.
struct Rgb24 {
  static constexpr std::int32_t kBytes = 3;
};

/// B, G, R and a fourth byte in rising addresses.
struct Rgb32 {
  static constexpr std::int32_t kBytes = 4;
};

}  // namespace zor
