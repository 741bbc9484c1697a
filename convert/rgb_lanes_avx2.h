// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// RGB pixels in AVX2 registers. Included by AVX2 forms only.

#include <immintrin.h>

#include <cstdint>

#include "convert/pixel_formats.h"
#include "convert/store_avx2.h"
#include "platform/compiler.h"

namespace zor {
namespace {

/// Eight pixels as B, G, R, x; the fourth bytes are anything.
template <class Pixel>
ZOR_ALWAYS_INLINE __m256i LoadEightPixels(const std::uint8_t* pixels);

template <>
ZOR_ALWAYS_INLINE __m256i LoadEightPixels<Rgb32>(const std::uint8_t* pixels) {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(pixels));
}

/// Twenty-four bytes are read, no more: bytes 0 to 15 and 8 to 23.
template <>
ZOR_ALWAYS_INLINE __m256i LoadEightPixels<Rgb24>(const std::uint8_t* pixels) {
  const __m256i bytes = _mm256_inserti128_si256(
      _mm256_castsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels))),
      _mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels + 8)), 1);
  return _mm256_shuffle_epi8(
      bytes, _mm256_setr_epi8(0, 1, 2, 2, 3, 4, 5, 5, 6, 7, 8, 8, 9, 10, 11, 11,  //
                              4, 5, 6, 6, 7, 8, 9, 9, 10, 11, 12, 12, 13, 14, 15, 15));
}

/// The matrix row of luma over eight pixels: dwords of 25 B + 129 G + 66 R - 28160. Turning the top
/// bit makes the samples signed, so that 129 can be the unsigned factor of the byte products.
ZOR_ALWAYS_INLINE __m256i LumaOfEight(__m256i pixels) {
  const __m256i row = _mm256_set1_epi32(0x00428119);  // 25, 129, 66, 0
  const __m256i products =
      _mm256_maddubs_epi16(row, _mm256_xor_si256(pixels, _mm256_set1_epi8(-128)));
  return _mm256_madd_epi16(products, _mm256_set1_epi16(1));
}

/// Luma of 32 pixels in order, from four registers of `LumaOfEight`.
ZOR_ALWAYS_INLINE __m256i PackLuma(__m256i d0, __m256i d1, __m256i d2, __m256i d3) {
  const __m256i offset = _mm256_set1_epi16(28160 + (16 << 8));
  const __m256i w0 = _mm256_srli_epi16(_mm256_add_epi16(_mm256_packs_epi32(d0, d1), offset), 8);
  const __m256i w1 = _mm256_srli_epi16(_mm256_add_epi16(_mm256_packs_epi32(d2, d3), offset), 8);
  // Dwords of the packed bytes: d0 d1 d2 d3 | d0 d1 d2 d3, low halves of each in the low lane.
  return _mm256_permutevar8x32_epi32(_mm256_packus_epi16(w0, w1),
                                     _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
}

/// The six dwords that hold eight pixels without their fourth bytes, at the places named.
ZOR_ALWAYS_INLINE __m256i SqueezeEight(__m256i pixels, __m256i places) {
  const __m256i lanes = _mm256_shuffle_epi8(
      pixels, _mm256_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1,  //
                               0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1));
  return _mm256_permutevar8x32_epi32(lanes, places);
}

/// Stores 32 pixels, eight a register as B, G, R, x, with their fourth bytes or without.
template <class Pixel, bool kStream>
ZOR_ALWAYS_INLINE void Store32Pixels(std::uint8_t* target, const __m256i (&pixels)[4]) {
  if constexpr (Pixel::kBytes == 4) {
#pragma GCC unroll 4
    for (int i = 0; i < 4; ++i) Store32<kStream>(target + 32 * i, pixels[i]);
  } else {
    // Dwords 0, 1, 2 and 4, 5, 6 of the lanes are filled; the outputs are
    //   aaaaaabb bbbbcccc ccdddddd
    const __m256i a = SqueezeEight(pixels[0], _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 7, 7));
    const __m256i b = SqueezeEight(pixels[1], _mm256_setr_epi32(2, 4, 5, 6, 7, 7, 0, 1));
    const __m256i c = SqueezeEight(pixels[2], _mm256_setr_epi32(5, 6, 7, 7, 0, 1, 2, 4));
    const __m256i d = SqueezeEight(pixels[3], _mm256_setr_epi32(7, 7, 0, 1, 2, 4, 5, 6));
    Store32<kStream>(target, _mm256_blend_epi32(a, b, 0xC0));
    Store32<kStream>(target + 32, _mm256_blend_epi32(b, c, 0xF0));
    Store32<kStream>(target + 64, _mm256_blend_epi32(c, d, 0xFC));
  }
}

}  // namespace
}  // namespace zor
