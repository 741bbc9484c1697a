// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/rgb_lanes_sse2.h"
#include "convert/rgb_packing_rows.h"

namespace zor {
namespace {

ZOR_ALWAYS_INLINE void Store(std::uint8_t* target, __m128i bytes) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(target), bytes);
}

struct Spread {
  static constexpr std::int32_t kColumns = 16;
  std::uint8_t* target;
  const std::uint8_t* source;

  template <bool>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const __m128i colour = _mm_set1_epi32(0x00FFFFFF);
    for (int i = 0; i < 4; ++i) {
      Store(target + 4 * x + 16 * i,
            _mm_and_si128(LoadFourPixels<Rgb24>(source + 3 * x + 12 * i), colour));
    }
  }
};

/// Four pixels in bytes 0 to 11; zeros behind them.
ZOR_ALWAYS_INLINE __m128i SqueezeFour(__m128i pixels) {
  const __m128i firstOfTwo = _mm_set1_epi64x(0x0000000000FFFFFF);
  const __m128i secondOfTwo = _mm_set1_epi64x(0x0000FFFFFF000000);
  // Six bytes in each half, then side by side.
  const __m128i halves = _mm_or_si128(_mm_and_si128(pixels, firstOfTwo),
                                      _mm_and_si128(_mm_srli_epi64(pixels, 8), secondOfTwo));
  return _mm_or_si128(_mm_move_epi64(halves), _mm_slli_si128(_mm_srli_si128(halves, 8), 6));
}

struct Squeeze {
  static constexpr std::int32_t kColumns = 16;
  std::uint8_t* target;
  const std::uint8_t* source;

  template <bool>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const std::uint8_t* from = source + 4 * x;
    const __m128i a = SqueezeFour(LoadFourPixels<Rgb32>(from));
    const __m128i b = SqueezeFour(LoadFourPixels<Rgb32>(from + 16));
    const __m128i c = SqueezeFour(LoadFourPixels<Rgb32>(from + 32));
    const __m128i d = SqueezeFour(LoadFourPixels<Rgb32>(from + 48));
    // aaaaaaaaaaaabbbb bbbbbbbbcccccccc ccccdddddddddddd
    std::uint8_t* to = target + 3 * x;
    Store(to, _mm_or_si128(a, _mm_slli_si128(b, 12)));
    Store(to + 16, _mm_or_si128(_mm_srli_si128(b, 4), _mm_slli_si128(c, 8)));
    Store(to + 32, _mm_or_si128(_mm_srli_si128(c, 8), _mm_slli_si128(d, 4)));
  }
};

}  // namespace

std::int32_t Rgb24ToRgb32RowSse2(std::uint8_t* target, const std::uint8_t* source,
                                 std::int32_t columns, bool) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, false, Spread{target, source});
}

std::int32_t Rgb32ToRgb24RowSse2(std::uint8_t* target, const std::uint8_t* source,
                                 std::int32_t columns, bool) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, false, Squeeze{target, source});
}

}  // namespace zor
