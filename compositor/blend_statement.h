// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The arithmetic of the blends, once, in plain integers.

#include <cstdint>

#include "platform/compiler.h"

namespace zor {

/// @param c child's sample, @param d target's sample, 0 to 255. @param w weight of the target, 0 to
/// 256. The sum is at most 255 x 256, so that it fits 16 bits.
ZOR_ALWAYS_INLINE std::uint8_t BlendSample(std::uint32_t c, std::uint32_t d, std::uint32_t w) {
  return static_cast<std::uint8_t>(((256 - w) * c + w * d) >> 8);
}

}  // namespace zor
