// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The 6-bit arithmetic from Y, U and V to B, G and R by byte products. Included by AVX2 forms
/// only.

#include <immintrin.h>

#include "platform/compiler.h"

namespace zor {
namespace {

/// Words of blue, green and red: terms of the chroma, or colours to be packed with saturation.
struct ColourWords {
  __m256i blue;
  __m256i green;
  __m256i red;
};

/// A pair of weights for the unsigned factor of byte products.
ZOR_ALWAYS_INLINE __m256i Weights(int even, int odd) {
  return _mm256_set1_epi16(static_cast<short>(even | odd << 8));
}

/// What chroma adds to blue and red and takes from green. The luma offset of 16 x 74 is taken off
/// here: the terms keep their 16 bits, and each sum saturates once as before.
/// @param chroma U and V in turn, as signed bytes
ZOR_ALWAYS_INLINE ColourWords ChromaTerms(__m256i chroma) {
  const __m256i offset = _mm256_set1_epi16(16 * 74);
  return {_mm256_sub_epi16(_mm256_maddubs_epi16(Weights(129, 0), chroma), offset),
          _mm256_add_epi16(_mm256_maddubs_epi16(Weights(25, 52), chroma), offset),
          _mm256_sub_epi16(_mm256_maddubs_epi16(Weights(0, 102), chroma), offset)};
}

/// @param luma words of 74 x Y
ZOR_ALWAYS_INLINE ColourWords ColourOf(__m256i luma, const ColourWords& terms) {
  return {_mm256_srai_epi16(_mm256_adds_epi16(luma, terms.blue), 6),
          _mm256_srai_epi16(_mm256_subs_epi16(luma, terms.green), 6),
          _mm256_srai_epi16(_mm256_adds_epi16(luma, terms.red), 6)};
}

}  // namespace
}  // namespace zor
