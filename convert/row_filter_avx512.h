// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The rounding row filter in AVX-512 registers. Included by AVX-512 forms only.

#include <immintrin.h>

#include "convert/row_triple.h"

namespace zor {
namespace {

ZOR_ALWAYS_INLINE __m512i Load64(const std::uint8_t* bytes) {
  return _mm512_loadu_si512(bytes);
}

/// 32 bytes of one row, then 32 of another.
ZOR_ALWAYS_INLINE __m512i LoadHalves(const std::uint8_t* low, const std::uint8_t* high) {
  return _mm512_inserti64x4(
      _mm512_castsi256_si512(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(low))),
      _mm256_loadu_si256(reinterpret_cast<const __m256i*>(high)), 1);
}

ZOR_ALWAYS_INLINE __m512i Smooth(__m512i above, __m512i centre, __m512i below) {
  return _mm512_avg_epu8(_mm512_avg_epu8(above, below), centre);
}

/// Filters 32 samples of U and of V.
ZOR_ALWAYS_INLINE __m512i SmoothHalves(const RowTriple& u, const RowTriple& v, std::ptrdiff_t i) {
  return Smooth(LoadHalves(u.above + i, v.above + i), LoadHalves(u.centre + i, v.centre + i),
                LoadHalves(u.below + i, v.below + i));
}

/// 64 bytes of both rows of a pair.
struct PairOf64 {
  __m512i row[2];
};

/// Filters both rows of a pair. The rows of an inner pair overlap, and each is loaded once.
template <bool kInner>
ZOR_ALWAYS_INLINE PairOf64 SmoothPair(const RowTriple (&rows)[2], std::ptrdiff_t i) {
  const __m512i upper = Load64(rows[0].centre + i);
  const __m512i lower = Load64(rows[1].centre + i);
  const __m512i belowUpper = kInner ? lower : Load64(rows[0].below + i);
  const __m512i aboveLower = kInner ? upper : Load64(rows[1].above + i);
  return {{Smooth(Load64(rows[0].above + i), upper, belowUpper),
           Smooth(aboveLower, lower, Load64(rows[1].below + i))}};
}

}  // namespace
}  // namespace zor
