// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/rgb_lanes_avx2.h"
#include "convert/store_avx2.h"
#include "convert/yuv_colour_avx2.h"
#include "convert/yuy2_rgb_rows.h"

namespace zor {
namespace {

/// The colours of sixteen columns.
ZOR_ALWAYS_INLINE ColourWords ConvertSixteen(const std::uint8_t* source) {
  const __m256i yuy2 = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(source));
  const __m256i luma = _mm256_maddubs_epi16(yuy2, Weights(74, 0));
  // U V for both pixels of a pair, as signed bytes.
  const __m256i chroma = _mm256_xor_si256(
      _mm256_shuffle_epi8(yuy2,
                          _mm256_setr_epi8(1, 3, 1, 3, 5, 7, 5, 7, 9, 11, 9, 11, 13, 15, 13, 15,  //
                                           1, 3, 1, 3, 5, 7, 5, 7, 9, 11, 9, 11, 13, 15, 13, 15)),
      _mm256_set1_epi8(-128));
  return ColourOf(luma, ChromaTerms(chroma));
}

template <class Pixel>
struct Block {
  static constexpr std::int32_t kColumns = 32;
  std::uint8_t* target;
  const std::uint8_t* source;

  template <bool kStream>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const ColourWords low = ConvertSixteen(source + 2 * x);
    const ColourWords high = ConvertSixteen(source + 2 * x + 32);
    // Columns 0-7, 16-23 | 8-15, 24-31.
    const __m256i blue = _mm256_packus_epi16(low.blue, high.blue);
    const __m256i green = _mm256_packus_epi16(low.green, high.green);
    const __m256i red = _mm256_packus_epi16(low.red, high.red);
    __m256i pixels[4];
#pragma GCC unroll 2
    for (int half = 0; half < 2; ++half) {
      const __m256i zero = _mm256_setzero_si256();
      const __m256i blueGreen =
          half == 0 ? _mm256_unpacklo_epi8(blue, green) : _mm256_unpackhi_epi8(blue, green);
      const __m256i redZero =
          half == 0 ? _mm256_unpacklo_epi8(red, zero) : _mm256_unpackhi_epi8(red, zero);
      const __m256i a = _mm256_unpacklo_epi16(blueGreen, redZero);  // columns 0-3 | 8-11
      const __m256i b = _mm256_unpackhi_epi16(blueGreen, redZero);  // columns 4-7 | 12-15
      pixels[2 * half] = _mm256_permute2x128_si256(a, b, 0x20);
      pixels[2 * half + 1] = _mm256_permute2x128_si256(a, b, 0x31);
    }
    Store32Pixels<Pixel, kStream>(target + x * Pixel::kBytes, pixels);
  }
};

}  // namespace

std::int32_t Yuy2ToRgb32RowAvx2(std::uint8_t* target, const std::uint8_t* source,
                                std::int32_t columns, const RowRoute& route) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, route.stream, Block<Rgb32>{target, source},
                                            AskForRowAbove<2>{source, route.climb});
}

std::int32_t Yuy2ToRgb24RowAvx2(std::uint8_t* target, const std::uint8_t* source,
                                std::int32_t columns, const RowRoute& route) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, route.stream, Block<Rgb24>{target, source},
                                            AskForRowAbove<2>{source, route.climb});
}

}  // namespace zor
