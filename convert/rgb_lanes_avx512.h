// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// RGB pixels in AVX-512 registers. Included by AVX-512 forms only.

#include <immintrin.h>

#include <cstdint>

#include "convert/permute_table_avx512.h"
#include "convert/pixel_formats.h"
#include "platform/compiler.h"

namespace zor {
namespace {

/// Keeps the compiler from loading a value a second time where it is used twice.
ZOR_ALWAYS_INLINE __m512i LoadedOnce(const std::uint8_t* bytes) {
  __m512i value = _mm512_loadu_si512(bytes);
  asm("" : "+v"(value));
  return value;
}

/// `mask` ? a : b, by bits.
ZOR_ALWAYS_INLINE __m512i Select(int mask, __m512i a, __m512i b) {
  return _mm512_ternarylogic_epi32(_mm512_set1_epi32(mask), a, b, 0xCA);
}

/// Spreads sixteen pixels of three bytes to B, G, R, R; the first byte is byte `kFirst`.
template <int kFirst>
struct SpreadPixels {
  static constexpr int Byte(int i) { return kFirst + 3 * (i / 4) + (i % 4 < 3 ? i % 4 : 2); }
};

/// Sixteen pixels of 64, from column 16 x @p quarter on, as B, G, R, x.
template <class Pixel>
ZOR_ALWAYS_INLINE __m512i LoadQuarter(const std::uint8_t* pixels, int quarter);

template <>
ZOR_ALWAYS_INLINE __m512i LoadQuarter<Rgb32>(const std::uint8_t* pixels, int quarter) {
  return LoadedOnce(pixels + 64 * quarter);
}

/// No byte behind the 192 of the 64 pixels is read: the last quarter is loaded from their end.
template <>
ZOR_ALWAYS_INLINE __m512i LoadQuarter<Rgb24>(const std::uint8_t* pixels, int quarter) {
  return quarter < 3
             ? _mm512_permutexvar_epi8(TableOf<SpreadPixels<0>>(),
                                       LoadedOnce(pixels + 48 * quarter))
             : _mm512_permutexvar_epi8(TableOf<SpreadPixels<16>>(), LoadedOnce(pixels + 128));
}

/// Two dwords of each lane of @p a, then two of @p b.
template <int kOrder>
ZOR_ALWAYS_INLINE __m512i ShuffleDwords(__m512i a, __m512i b) {
  return _mm512_castps_si512(
      _mm512_shuffle_ps(_mm512_castsi512_ps(a), _mm512_castsi512_ps(b), kOrder));
}

/// The pixels of 64 columns as B, G, R, x, by the parity of their column; the fourth bytes are
/// anything. Element 0 holds columns 0 to 31, element 1 columns 32 to 63. Within a register the
/// pairs of columns stand as a shuffle inside the lanes leaves them, which is cheaper here than any
/// permutation across them:
///
///     pair   0 1 8 9 | 2 3 10 11 | 4 5 12 13 | 6 7 14 15
struct ByParity {
  __m512i even[2];
  __m512i odd[2];

  static constexpr int DwordOfPair(int pair) { return pair % 8 / 2 * 4 + pair / 8 * 2 + pair % 2; }
};

template <class Pixel>
ZOR_ALWAYS_INLINE ByParity Load64Pixels(const std::uint8_t* pixels) {
  ByParity columns;
#pragma GCC unroll 2
  for (int half = 0; half < 2; ++half) {
    const __m512i low = LoadQuarter<Pixel>(pixels, 2 * half);
    const __m512i high = LoadQuarter<Pixel>(pixels, 2 * half + 1);
    columns.even[half] = ShuffleDwords<_MM_SHUFFLE(2, 0, 2, 0)>(low, high);
    columns.odd[half] = ShuffleDwords<_MM_SHUFFLE(3, 1, 3, 1)>(low, high);
  }
  return columns;
}

/// Weights of the matrix rows as signed bytes.
inline constexpr int kUWeights = 0x00DAB670;  // 112, -74, -38, 0
inline constexpr int kVWeights = 0x0070A2EE;  // -18, -94, 112, 0

/// Luma of sixteen pixels, less 16, in byte 1 of each dword. The pixel itself is the start value:
/// it adds B x 1 and G x 256, so that 24 and -127 stand for 25 and 129, and what R and x add lies
/// above.
ZOR_ALWAYS_INLINE __m512i LumaOfSixteen(__m512i pixels) {
  return _mm512_dpbusd_epi32(pixels, pixels, _mm512_set1_epi32(0x00428118));  // 24, -127, 66, 0
}

}  // namespace
}  // namespace zor
