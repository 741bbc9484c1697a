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

ZOR_ALWAYS_INLINE void StoreSixteen(std::uint8_t* target, __m128i bytes) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(target), bytes);
}

/// Four pixels in bytes 0 to 11; zeros behind them.
ZOR_ALWAYS_INLINE __m128i SqueezeFour(__m128i pixels) {
  const __m128i firstOfTwo = _mm_set1_epi64x(0x0000000000FFFFFF);
  const __m128i secondOfTwo = _mm_set1_epi64x(0x0000FFFFFF000000);
  // Six bytes in each half, then side by side.
  const __m128i halves = _mm_or_si128(_mm_and_si128(pixels, firstOfTwo),
                                      _mm_and_si128(_mm_srli_epi64(pixels, 8), secondOfTwo));
  return _mm_or_si128(_mm_move_epi64(halves), _mm_slli_si128(_mm_srli_si128(halves, 8), 6));
}

/// Stores sixteen pixels, four a register as B, G, R, x, with their fourth bytes or without.
template <class Pixel>
ZOR_ALWAYS_INLINE void StorePixels(std::uint8_t* target, const __m128i (&pixels)[4]) {
  if constexpr (Pixel::kBytes == 4) {
    for (int i = 0; i < 4; ++i) StoreSixteen(target + 16 * i, pixels[i]);
  } else {
    const __m128i a = SqueezeFour(pixels[0]);
    const __m128i b = SqueezeFour(pixels[1]);
    const __m128i c = SqueezeFour(pixels[2]);
    const __m128i d = SqueezeFour(pixels[3]);
    // aaaaaaaaaaaabbbb bbbbbbbbcccccccc ccccdddddddddddd
    StoreSixteen(target, _mm_or_si128(a, _mm_slli_si128(b, 12)));
    StoreSixteen(target + 16, _mm_or_si128(_mm_srli_si128(b, 4), _mm_slli_si128(c, 8)));
    StoreSixteen(target + 32, _mm_or_si128(_mm_srli_si128(c, 8), _mm_slli_si128(d, 4)));
  }
}

/// Stores sixteen pixels out of a register of each colour; a fourth byte is 0.
template <class Pixel>
ZOR_ALWAYS_INLINE void StoreSixteenPixels(std::uint8_t* target, __m128i blue, __m128i green,
                                          __m128i red) {
  const __m128i zero = _mm_setzero_si128();
  const __m128i blueGreen[2] = {_mm_unpacklo_epi8(blue, green), _mm_unpackhi_epi8(blue, green)};
  const __m128i redZero[2] = {_mm_unpacklo_epi8(red, zero), _mm_unpackhi_epi8(red, zero)};
  const __m128i pixels[4] = {
      _mm_unpacklo_epi16(blueGreen[0], redZero[0]), _mm_unpackhi_epi16(blueGreen[0], redZero[0]),
      _mm_unpacklo_epi16(blueGreen[1], redZero[1]), _mm_unpackhi_epi16(blueGreen[1], redZero[1])};
  StorePixels<Pixel>(target, pixels);
}

}  // namespace
}  // namespace zor
