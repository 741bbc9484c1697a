// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The rounding row filter on sixteen and on eight samples. Included by SSE2 forms only.

#include <emmintrin.h>

#include "convert/row_triple.h"

namespace zor {
namespace {

ZOR_ALWAYS_INLINE __m128i LoadSixteen(const std::uint8_t* bytes) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}

ZOR_ALWAYS_INLINE __m128i LoadLowEight(const std::uint8_t* bytes) {
  return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(bytes));
}

template <__m128i (*kLoad)(const std::uint8_t*)>
ZOR_ALWAYS_INLINE __m128i Smooth(const RowTriple& rows, std::ptrdiff_t i) {
  return _mm_avg_epu8(_mm_avg_epu8(kLoad(rows.above + i), kLoad(rows.below + i)),
                      kLoad(rows.centre + i));
}

}  // namespace
}  // namespace zor
