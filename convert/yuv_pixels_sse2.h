// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Sixteen pixels of Y, U and V to RGB by the 6-bit arithmetic. Included by SSE2 forms only.

#include "convert/rgb_lanes_sse2.h"
#include "convert/yuv_colour_sse2.h"

namespace zor {
namespace {

/// Chroma of sixteen columns: the terms of eight pairs, each for both pixels of its pair.
struct ChromaOfSixteen {
  ColourWords low;
  ColourWords high;

  /// @param u, v eight samples in the low half
  ZOR_ALWAYS_INLINE ChromaOfSixteen(__m128i u, __m128i v) {
    const __m128i zero = _mm_setzero_si128();
    const __m128i offset = _mm_set1_epi16(128);
    const ColourWords terms = ChromaTerms(_mm_sub_epi16(_mm_unpacklo_epi8(u, zero), offset),
                                          _mm_sub_epi16(_mm_unpacklo_epi8(v, zero), offset));
    low = {_mm_unpacklo_epi16(terms.blue, terms.blue), _mm_unpacklo_epi16(terms.green, terms.green),
           _mm_unpacklo_epi16(terms.red, terms.red)};
    high = {_mm_unpackhi_epi16(terms.blue, terms.blue),
            _mm_unpackhi_epi16(terms.green, terms.green), _mm_unpackhi_epi16(terms.red, terms.red)};
  }
};

/// Blue, green and red of sixteen columns, a byte each.
struct SixteenColours {
  __m128i blue;
  __m128i green;
  __m128i red;

  ZOR_ALWAYS_INLINE SixteenColours(__m128i luma, const ChromaOfSixteen& chroma) {
    const __m128i zero = _mm_setzero_si128();
    const ColourWords low = ColourOf(_mm_unpacklo_epi8(luma, zero), chroma.low);
    const ColourWords high = ColourOf(_mm_unpackhi_epi8(luma, zero), chroma.high);
    blue = _mm_packus_epi16(low.blue, high.blue);
    green = _mm_packus_epi16(low.green, high.green);
    red = _mm_packus_epi16(low.red, high.red);
  }
};

template <class Pixel>
ZOR_ALWAYS_INLINE void StoreColours(std::uint8_t* target, __m128i luma,
                                    const ChromaOfSixteen& chroma) {
  const SixteenColours colours(luma, chroma);
  StoreSixteenPixels<Pixel>(target, colours.blue, colours.green, colours.red);
}

}  // namespace
}  // namespace zor
