// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The rounding row filter in AVX2 registers. Included by AVX2 forms only.

#include <immintrin.h>

#include "convert/row_triple.h"

namespace zor {
namespace {

ZOR_ALWAYS_INLINE __m256i Load32(const std::uint8_t* bytes) {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(bytes));
}

ZOR_ALWAYS_INLINE __m128i SmoothSixteen(const RowTriple& rows, std::ptrdiff_t i) {
  const auto load = [i](const std::uint8_t* row) __attribute__((always_inline)) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(row + i));
  };
  return _mm_avg_epu8(_mm_avg_epu8(load(rows.above), load(rows.below)), load(rows.centre));
}

ZOR_ALWAYS_INLINE __m256i Smooth(__m256i above, __m256i centre, __m256i below) {
  return _mm256_avg_epu8(_mm256_avg_epu8(above, below), centre);
}

/// 32 bytes of both rows of a pair.
struct PairOf32 {
  __m256i row[2];
};

/// Filters both rows of a pair. The rows of an inner pair overlap, and each is loaded once.
template <bool kInner>
ZOR_ALWAYS_INLINE PairOf32 SmoothPair(const RowTriple (&rows)[2], std::ptrdiff_t i) {
  const __m256i upper = Load32(rows[0].centre + i);
  const __m256i lower = Load32(rows[1].centre + i);
  const __m256i belowUpper = kInner ? lower : Load32(rows[0].below + i);
  const __m256i aboveLower = kInner ? upper : Load32(rows[1].above + i);
  return {{Smooth(Load32(rows[0].above + i), upper, belowUpper),
           Smooth(aboveLower, lower, Load32(rows[1].below + i))}};
}

}  // namespace
}  // namespace zor
