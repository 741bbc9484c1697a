// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// RGB pixels in SSE2 registers. Included by SSE2 forms only.

#include <emmintrin.h>

#include <cstdint>
#include <cstring>

#include "convert/pixel_formats.h"
#include "platform/compiler.h"

namespace zor {
namespace {

/// Four pixels as B, G, R, x; the fourth bytes are anything.
template <class Pixel>
ZOR_ALWAYS_INLINE __m128i LoadFourPixels(const std::uint8_t* pixels);

template <>
ZOR_ALWAYS_INLINE __m128i LoadFourPixels<Rgb32>(const std::uint8_t* pixels) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels));
}

/// Twelve bytes are read, no more.
template <>
ZOR_ALWAYS_INLINE __m128i LoadFourPixels<Rgb24>(const std::uint8_t* pixels) {
  std::int32_t last;
  std::memcpy(&last, pixels + 8, sizeof(last));
  const __m128i bytes = _mm_unpacklo_epi64(
      _mm_loadl_epi64(reinterpret_cast<const __m128i*>(pixels)), _mm_cvtsi32_si128(last));
  const __m128i p01 = _mm_unpacklo_epi32(bytes, _mm_srli_si128(bytes, 3));
  const __m128i p23 = _mm_unpacklo_epi32(_mm_srli_si128(bytes, 6), _mm_srli_si128(bytes, 9));
  return _mm_unpacklo_epi64(p01, p23);
}

/// Adds the neighbours of two registers of dwords: a0+a1, a2+a3, b0+b1, b2+b3.
ZOR_ALWAYS_INLINE __m128i AddNeighbours(__m128i a, __m128i b) {
  const __m128 fa = _mm_castsi128_ps(a);
  const __m128 fb = _mm_castsi128_ps(b);
  return _mm_add_epi32(_mm_castps_si128(_mm_shuffle_ps(fa, fb, _MM_SHUFFLE(2, 0, 2, 0))),
                       _mm_castps_si128(_mm_shuffle_ps(fa, fb, _MM_SHUFFLE(3, 1, 3, 1))));
}

/// Luma of four pixels, less 16, in dwords, from words B, G, R, x of two pixels each.
ZOR_ALWAYS_INLINE __m128i LumaOfFour(__m128i p01, __m128i p23) {
  const __m128i row = _mm_setr_epi16(25, 129, 66, 0, 25, 129, 66, 0);
  return _mm_srli_epi32(AddNeighbours(_mm_madd_epi16(p01, row), _mm_madd_epi16(p23, row)), 8);
}

/// U and V of two groups in dwords U0, U1, V0, V1, before shift and offset, from the words
/// B, G, R, x of their sums.
ZOR_ALWAYS_INLINE __m128i ChromaOfTwo(__m128i groups) {
  const __m128i u = _mm_madd_epi16(groups, _mm_setr_epi16(112, -74, -38, 0, 112, -74, -38, 0));
  const __m128i v = _mm_madd_epi16(groups, _mm_setr_epi16(-18, -94, 112, 0, -18, -94, 112, 0));
  return AddNeighbours(u, v);
}

}  // namespace
}  // namespace zor
