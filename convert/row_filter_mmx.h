// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The truncating row filter on eight samples. Included by MMX forms only.

#include "convert/load_store_mmx.h"
#include "convert/row_triple.h"

namespace zor {
namespace {

/// The low bits go before the shift, so that none crosses into the byte below.
ZOR_ALWAYS_INLINE __m64 TruncatingAverage(__m64 a, __m64 b) {
  const __m64 upperBits = _mm_set1_pi8(static_cast<char>(0xFE));
  return _mm_adds_pu8(_mm_srli_si64(_mm_and_si64(a, upperBits), 1),
                      _mm_srli_si64(_mm_and_si64(b, upperBits), 1));
}

/// Smooths by a triple. A truncating average changes even a row averaged with itself, so the
/// repeated rows of the edges are told apart: a row that stays, and one with a single neighbour.
template <__m64 (*kLoad)(const std::uint8_t*)>
ZOR_ALWAYS_INLINE __m64 SmoothTruncating(const RowTriple& rows, std::ptrdiff_t i) {
  const __m64 centre = kLoad(rows.centre + i);
  if (rows.above == rows.centre) return centre;
  const __m64 above = kLoad(rows.above + i);
  if (rows.above == rows.below) return TruncatingAverage(above, centre);
  return TruncatingAverage(TruncatingAverage(above, kLoad(rows.below + i)), centre);
}

}  // namespace
}  // namespace zor
