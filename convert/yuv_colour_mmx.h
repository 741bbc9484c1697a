// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The 6-bit arithmetic from Y, U and V to B, G and R in 16-bit lanes. Included by MMX forms only.

#include <mmintrin.h>

#include "platform/compiler.h"

namespace zor {
namespace {

/// Two registers of two pixels each: B, G, R, 0.
struct FourPixels {
  __m64 pixels[2];
};

/// @param y, u, v words of four columns, 0 to 255
ZOR_ALWAYS_INLINE FourPixels ConvertFour(__m64 y, __m64 u, __m64 v) {
  const __m64 zero = _mm_setzero_si64();
  const __m64 luma = _mm_mullo_pi16(_mm_sub_pi16(y, _mm_set1_pi16(16)), _mm_set1_pi16(74));
  u = _mm_sub_pi16(u, _mm_set1_pi16(128));
  v = _mm_sub_pi16(v, _mm_set1_pi16(128));
  const __m64 greenTerm =
      _mm_adds_pi16(_mm_mullo_pi16(u, _mm_set1_pi16(25)), _mm_mullo_pi16(v, _mm_set1_pi16(52)));
  const __m64 blue = _mm_srai_pi16(_mm_adds_pi16(luma, _mm_mullo_pi16(u, _mm_set1_pi16(129))), 6);
  const __m64 green = _mm_srai_pi16(_mm_subs_pi16(luma, greenTerm), 6);
  const __m64 red = _mm_srai_pi16(_mm_adds_pi16(luma, _mm_mullo_pi16(v, _mm_set1_pi16(102))), 6);
  const __m64 blueGreen = _mm_unpacklo_pi8(_mm_packs_pu16(blue, zero), _mm_packs_pu16(green, zero));
  const __m64 redZero = _mm_unpacklo_pi8(_mm_packs_pu16(red, zero), zero);
  return {{_mm_unpacklo_pi16(blueGreen, redZero), _mm_unpackhi_pi16(blueGreen, redZero)}};
}

}  // namespace
}  // namespace zor
