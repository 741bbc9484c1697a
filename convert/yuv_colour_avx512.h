// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The 6-bit arithmetic from Y, U and V to B, G and R on 64 columns, with the columns by parity, so
/// that chroma is worked out once a pair. Included by AVX-512 forms only.

#include "convert/rgb_store_avx512.h"

namespace zor {
namespace {

/// A pair of weights for one factor of byte products.
ZOR_ALWAYS_INLINE __m512i Weights(int even, int odd) {
  return _mm512_set1_epi16(static_cast<short>(even | odd << 8));
}

/// One colour of 64 columns: each lane holds the even ones of its 16 columns, then the odd ones.
ZOR_ALWAYS_INLINE __m512i Pack(__m512i even, __m512i odd) {
  return _mm512_packus_epi16(_mm512_srai_epi16(even, 6), _mm512_srai_epi16(odd, 6));
}

/// What the chroma of 32 pairs of columns adds to blue and red and takes from green. The luma
/// offset of 16 x 74 is taken off here: the terms keep their 16 bits, and each sum saturates once
/// as before.
struct ChromaTerms {
  __m512i blue;
  __m512i green;
  __m512i red;

  /// @param chroma U and V in turn, as signed bytes
  explicit ZOR_ALWAYS_INLINE ChromaTerms(__m512i chroma) {
    const __m512i offset = _mm512_set1_epi16(16 * 74);
    blue = _mm512_sub_epi16(_mm512_maddubs_epi16(Weights(129, 0), chroma), offset);
    green = _mm512_add_epi16(_mm512_maddubs_epi16(Weights(25, 52), chroma), offset);
    red = _mm512_sub_epi16(_mm512_maddubs_epi16(Weights(0, 102), chroma), offset);
  }
};

/// Stores the pixels of 64 columns. @param luma in the order of the columns
template <class Pixel, bool kStream>
ZOR_ALWAYS_INLINE void StoreColours(std::uint8_t* target, __m512i luma, const ChromaTerms& terms) {
  const __m512i even = _mm512_maddubs_epi16(luma, Weights(74, 0));
  const __m512i odd = _mm512_maddubs_epi16(luma, Weights(0, 74));
  Store64Pixels<Pixel, kStream>(
      target, Pack(_mm512_adds_epi16(even, terms.blue), _mm512_adds_epi16(odd, terms.blue)),
      Pack(_mm512_subs_epi16(even, terms.green), _mm512_subs_epi16(odd, terms.green)),
      Pack(_mm512_adds_epi16(even, terms.red), _mm512_adds_epi16(odd, terms.red)));
}

}  // namespace
}  // namespace zor
