// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "ipl/warp_spans_walk.h"

namespace zor {
namespace {

struct OneOffset {
  static constexpr std::int32_t kCount = 1;

  OneOffset(const WarpSpan& s, std::int32_t pixel) noexcept
      : span(s), pixelBytes(pixel), x(s.x), y(s.y) {}

  void Next(std::int32_t* out) noexcept {
    *out = static_cast<std::int32_t>(x >> 16) * pixelBytes +
           static_cast<std::int32_t>(y >> 16) * span.sourceStep;
    x += span.xStep;
    y += span.yStep;
  }

  const WarpSpan& span;
  std::int32_t pixelBytes;
  std::uint32_t x;
  std::uint32_t y;
};

}  // namespace

const WarpSpanForm kWarpSpansPlain = FormOf<OneOffset>("plain");

}  // namespace zor
