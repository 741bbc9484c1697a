// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The 6-bit arithmetic from Y, U and V to B, G and R in 16-bit lanes. Included by SSE2 forms only.

#include <emmintrin.h>

#include "platform/compiler.h"

namespace zor {
namespace {

/// Words of blue, green and red: terms of the chroma, or colours to be packed with saturation.
struct ColourWords {
  __m128i blue;
  __m128i green;
  __m128i red;
};

/// What chroma, less its offset of 128, adds to blue and red and takes from green.
ZOR_ALWAYS_INLINE ColourWords ChromaTerms(__m128i u, __m128i v) {
  return {_mm_mullo_epi16(u, _mm_set1_epi16(129)),
          _mm_adds_epi16(_mm_mullo_epi16(u, _mm_set1_epi16(25)),
                         _mm_mullo_epi16(v, _mm_set1_epi16(52))),
          _mm_mullo_epi16(v, _mm_set1_epi16(102))};
}

/// @param y words of luma, 0 to 255. @param terms of the chroma of the same columns.
ZOR_ALWAYS_INLINE ColourWords ColourOf(__m128i y, const ColourWords& terms) {
  const __m128i luma = _mm_mullo_epi16(_mm_sub_epi16(y, _mm_set1_epi16(16)), _mm_set1_epi16(74));
  return {_mm_srai_epi16(_mm_adds_epi16(luma, terms.blue), 6),
          _mm_srai_epi16(_mm_subs_epi16(luma, terms.green), 6),
          _mm_srai_epi16(_mm_adds_epi16(luma, terms.red), 6)};
}

}  // namespace
}  // namespace zor
