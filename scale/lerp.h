// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The interpolation of one byte, on which every integer scaler rests.

#include <cstdint>

#include "platform/compiler.h"

namespace zor {

/// @param weight share of @p b in 256ths, 0 to 255, so that b itself is never quite reached.
/// @return a + floor((b - a) * weight / 256), always between a and b. The same number is
///         (a * (256 - weight) + b * weight) >> 8, which fits 16 bits unsigned.
ZOR_ALWAYS_INLINE constexpr std::int32_t Lerp(std::int32_t a, std::int32_t b, std::int32_t weight) {
  return a + (((b - a) * weight) >> 8);
}

}  // namespace zor
