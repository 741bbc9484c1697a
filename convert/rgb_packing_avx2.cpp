// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/rgb_lanes_avx2.h"
#include "convert/rgb_packing_rows.h"
#include "convert/store_avx2.h"

namespace zor {
namespace {

struct Spread {
  static constexpr std::int32_t kColumns = 32;
  std::uint8_t* target;
  const std::uint8_t* source;

  template <bool kStream>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const __m256i colour = _mm256_set1_epi32(0x00FFFFFF);
#pragma GCC unroll 4
    for (int i = 0; i < 4; ++i) {
      Store32<kStream>(target + 4 * x + 32 * i,
                       _mm256_and_si256(LoadEightPixels<Rgb24>(source + 3 * x + 24 * i), colour));
    }
  }
};

/// The six dwords that hold eight pixels without their fourth bytes, at the places named.
ZOR_ALWAYS_INLINE __m256i SqueezeEight(const std::uint8_t* pixels, __m256i places) {
  const __m256i lanes = _mm256_shuffle_epi8(
      LoadEightPixels<Rgb32>(pixels),
      _mm256_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1,  //
                       0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1));
  return _mm256_permutevar8x32_epi32(lanes, places);
}

struct Squeeze {
  static constexpr std::int32_t kColumns = 32;
  std::uint8_t* target;
  const std::uint8_t* source;

  template <bool kStream>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const std::uint8_t* from = source + 4 * x;
    // Dwords 0, 1, 2 and 4, 5, 6 of the lanes are filled; the outputs are
    //   aaaaaabb bbbbcccc ccdddddd
    const __m256i a = SqueezeEight(from, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 7, 7));
    const __m256i b = SqueezeEight(from + 32, _mm256_setr_epi32(2, 4, 5, 6, 7, 7, 0, 1));
    const __m256i c = SqueezeEight(from + 64, _mm256_setr_epi32(5, 6, 7, 7, 0, 1, 2, 4));
    const __m256i d = SqueezeEight(from + 96, _mm256_setr_epi32(7, 7, 0, 1, 2, 4, 5, 6));
    std::uint8_t* to = target + 3 * x;
    Store32<kStream>(to, _mm256_blend_epi32(a, b, 0xC0));
    Store32<kStream>(to + 32, _mm256_blend_epi32(b, c, 0xF0));
    Store32<kStream>(to + 64, _mm256_blend_epi32(c, d, 0xFC));
  }
};

}  // namespace

std::int32_t Rgb24ToRgb32RowAvx2(std::uint8_t* target, const std::uint8_t* source,
                                 std::int32_t columns, bool stream) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, stream, Spread{target, source});
}

std::int32_t Rgb32ToRgb24RowAvx2(std::uint8_t* target, const std::uint8_t* source,
                                 std::int32_t columns, bool stream) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, stream, Squeeze{target, source});
}

}  // namespace zor
