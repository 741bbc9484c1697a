// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/rgb_lanes_avx2.h"
#include "convert/store_avx2.h"
#include "convert/yuy2_rgb_rows.h"

namespace zor {
namespace {

/// Words of blue, green and red of sixteen columns, to be packed with saturation.
struct ColourWords {
  __m256i blue;
  __m256i green;
  __m256i red;
};

/// A pair of weights for the unsigned factor of byte products.
ZOR_ALWAYS_INLINE __m256i Weights(int even, int odd) {
  return _mm256_set1_epi16(static_cast<short>(even | odd << 8));
}

/// The 6-bit arithmetic on sixteen columns. The luma offset of 16 x 74 is taken off the chroma
/// terms: those keep their 16 bits, and each sum saturates once as before.
ZOR_ALWAYS_INLINE ColourWords ConvertSixteen(const std::uint8_t* source) {
  const __m256i yuy2 = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(source));
  const __m256i luma = _mm256_maddubs_epi16(yuy2, Weights(74, 0));
  // U V for both pixels of a pair, as signed bytes.
  const __m256i chroma = _mm256_xor_si256(
      _mm256_shuffle_epi8(yuy2,
                          _mm256_setr_epi8(1, 3, 1, 3, 5, 7, 5, 7, 9, 11, 9, 11, 13, 15, 13, 15,  //
                                           1, 3, 1, 3, 5, 7, 5, 7, 9, 11, 9, 11, 13, 15, 13, 15)),
      _mm256_set1_epi8(-128));
  const __m256i offset = _mm256_set1_epi16(16 * 74);
  const __m256i blueTerm = _mm256_sub_epi16(_mm256_maddubs_epi16(Weights(129, 0), chroma), offset);
  const __m256i greenTerm = _mm256_add_epi16(_mm256_maddubs_epi16(Weights(25, 52), chroma), offset);
  const __m256i redTerm = _mm256_sub_epi16(_mm256_maddubs_epi16(Weights(0, 102), chroma), offset);
  return {_mm256_srai_epi16(_mm256_adds_epi16(luma, blueTerm), 6),
          _mm256_srai_epi16(_mm256_subs_epi16(luma, greenTerm), 6),
          _mm256_srai_epi16(_mm256_adds_epi16(luma, redTerm), 6)};
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
                                std::int32_t columns, bool stream) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, stream, Block<Rgb32>{target, source});
}

std::int32_t Yuy2ToRgb24RowAvx2(std::uint8_t* target, const std::uint8_t* source,
                                std::int32_t columns, bool stream) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, stream, Block<Rgb24>{target, source});
}

}  // namespace zor
