// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The walk along a span, a group of pixels at a time. Code in an unnamed namespace, compiled once
/// per form.

#include <cstdint>

#include "ipl/warp_spans.h"
#include "platform/compiler.h"

namespace zor {
namespace {

/// How a pixel is copied. Exact pixels take their own bytes.
template <int kBytes>
struct ExactPixel {
  static constexpr std::int32_t kPixel = kBytes;
  static ZOR_ALWAYS_INLINE void Copy(std::uint8_t* to, const std::uint8_t* from) noexcept {
    __builtin_memcpy(to, from, kBytes);
  }
};

/// Three bytes as a word. The byte behind is written over by the next pixel; the walk ends with an
/// exact one.
struct WidePixel {
  static constexpr std::int32_t kPixel = 3;
  static ZOR_ALWAYS_INLINE void Copy(std::uint8_t* to, const std::uint8_t* from) noexcept {
    __builtin_memcpy(to, from, 4);
  }
};

/// Offsets::kCount pixels have their offsets computed at once, then are copied in order.
template <class Offsets, class Pixel>
void WalkSpan(const WarpSpan& s) noexcept {
  constexpr std::int32_t kPixel = Pixel::kPixel;
  constexpr std::int32_t kCount = Offsets::kCount;
  std::uint8_t* to = s.target;
  std::int32_t i = 0;
  if (s.count > kCount) {
    Offsets offsets(s, kPixel);
    for (; i < s.count - kCount; i += kCount, to += kCount * kPixel) {
      alignas(64) std::int32_t at[kCount];
      offsets.Next(at);
#pragma GCC unroll 16
      for (std::int32_t k = 0; k < kCount; ++k) Pixel::Copy(to + k * kPixel, s.source + at[k]);
    }
  }
  std::uint32_t x = s.x + s.xStep * static_cast<std::uint32_t>(i);
  std::uint32_t y = s.y + s.yStep * static_cast<std::uint32_t>(i);
  const auto offset = [&] {
    return static_cast<std::int32_t>(x >> 16) * kPixel +
           static_cast<std::int32_t>(y >> 16) * s.sourceStep;
  };
  for (; i < s.count - 1; ++i, to += kPixel, x += s.xStep, y += s.yStep) {
    Pixel::Copy(to, s.source + offset());
  }
  ExactPixel<kPixel>::Copy(to, s.source + offset());
}

/// Positions of a run of columns. Both coordinates of a pixel stand in one word, row above column,
/// and one multiply-add of 16-bit values makes its offset.
template <class Lanes>
class VectorOffsets {
 public:
  static constexpr std::int32_t kCount = Lanes::kCount;

  ZOR_ALWAYS_INLINE VectorOffsets(const WarpSpan& s, std::int32_t pixel) noexcept
      : x_(Lanes::Ramp(s.x, s.xStep)),
        y_(Lanes::Ramp(s.y, s.yStep)),
        xStep_(Lanes::Fill(s.xStep * static_cast<std::uint32_t>(kCount))),
        yStep_(Lanes::Fill(s.yStep * static_cast<std::uint32_t>(kCount))),
        weights_(Lanes::Fill(static_cast<std::uint32_t>(s.sourceStep) << 16 |
                             static_cast<std::uint32_t>(pixel))) {}

  ZOR_ALWAYS_INLINE void Next(std::int32_t* out) noexcept {
    Lanes::Store(out, Lanes::MultiplyAdd(Lanes::HighHalves(y_, x_), weights_));
    x_ = Lanes::Add(x_, xStep_);
    y_ = Lanes::Add(y_, yStep_);
  }

 private:
  using V = typename Lanes::V;
  V x_, y_, xStep_, yStep_, weights_;
};

template <class Offsets>
constexpr WarpSpanForm FormOf(const char* name) noexcept {
  return {name, WalkSpan<Offsets, ExactPixel<1>>, WalkSpan<Offsets, ExactPixel<3>>,
          WalkSpan<Offsets, WidePixel>, WalkSpan<Offsets, ExactPixel<4>>};
}

}  // namespace
}  // namespace zor
