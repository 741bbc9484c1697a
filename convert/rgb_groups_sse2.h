// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Groups of 2 x 2 RGB pixels to Y, U and V. Included by SSE2 forms only.

#include "convert/forward_matrix.h"
#include "convert/rgb_lanes_sse2.h"

namespace zor {
namespace {

/// What four columns of a row pair give: dwords of luma less 16, and dwords U0, U1, V0, V1.
struct FourGroupColumns {
  __m128i luma[2];
  __m128i chroma;

  ZOR_ALWAYS_INLINE FourGroupColumns() = default;
  /// @param upper, lower four pixels B, G, R, x of each row
  ZOR_ALWAYS_INLINE FourGroupColumns(__m128i upper, __m128i lower) {
    const __m128i zero = _mm_setzero_si128();
    __m128i sum01 = zero;
    __m128i sum23 = zero;
    for (int row = 0; row < 2; ++row) {
      const __m128i pixels = row == 0 ? upper : lower;
      const __m128i p01 = _mm_unpacklo_epi8(pixels, zero);
      const __m128i p23 = _mm_unpackhi_epi8(pixels, zero);
      luma[row] = LumaOfFour(p01, p23);
      sum01 = _mm_add_epi16(sum01, p01);
      sum23 = _mm_add_epi16(sum23, p23);
    }
    const __m128i groups =
        _mm_add_epi16(_mm_unpacklo_epi64(sum01, sum23), _mm_unpackhi_epi64(sum01, sum23));
    chroma = _mm_srai_epi32(ChromaOfTwo(groups), kChromaShiftOfFour);
  }
};

/// Sixteen columns of a row pair.
struct SixteenGroupColumns {
  FourGroupColumns part[4];

  /// @param load `load(row, i)` gives pixels 4i to 4i + 3 of the upper (0) or lower (1) row
  template <class Load>
  ZOR_ALWAYS_INLINE explicit SixteenGroupColumns(const Load& load) {
#pragma GCC unroll 4
    for (int i = 0; i < 4; ++i) part[i] = FourGroupColumns(load(0, i), load(1, i));
  }
  ZOR_ALWAYS_INLINE void Store(std::uint8_t* upper, std::uint8_t* lower, std::uint8_t* u,
                               std::uint8_t* v) const {
    for (int row = 0; row < 2; ++row) {
      const __m128i luma = _mm_packus_epi16(_mm_packs_epi32(part[0].luma[row], part[1].luma[row]),
                                            _mm_packs_epi32(part[2].luma[row], part[3].luma[row]));
      StoreSixteen(row == 0 ? upper : lower, _mm_add_epi8(luma, _mm_set1_epi8(16)));
    }
    const __m128i wordsU = _mm_packs_epi32(_mm_unpacklo_epi64(part[0].chroma, part[1].chroma),
                                           _mm_unpacklo_epi64(part[2].chroma, part[3].chroma));
    const __m128i wordsV = _mm_packs_epi32(_mm_unpackhi_epi64(part[0].chroma, part[1].chroma),
                                           _mm_unpackhi_epi64(part[2].chroma, part[3].chroma));
    // Signed bytes of -112 to 111: adding 128 is turning the top bit.
    const __m128i chroma = _mm_xor_si128(_mm_packs_epi16(wordsU, wordsV), _mm_set1_epi8(-128));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(u), chroma);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(v), _mm_srli_si128(chroma, 8));
  }
};

}  // namespace
}  // namespace zor
