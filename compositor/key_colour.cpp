// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "compositor/blend.h"

namespace zor {

// Luma is not scaled to the video range before the 16 is added, unlike in the conversions.
KeyColour KeyColourOf(std::uint32_t backColour) noexcept {
  if (backColour == kNoKeyColour) return {-1, -1, -1};
  const double b = backColour & 255;
  const double g = backColour >> 8 & 255;
  const double r = backColour >> 16 & 255;
  const double y = 0.299 * r + 0.587 * g + 0.114 * b;
  const double u = 0.5 * b - (0.169 * r + 0.331 * g) + 128;
  const double v = 0.5 * r - 0.419 * g - 0.081 * b + 128;
  return {static_cast<std::int32_t>(y) + 16, static_cast<std::int32_t>(u),
          static_cast<std::int32_t>(v)};
}

}  // namespace zor
