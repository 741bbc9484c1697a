// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// A policy of 32 bytes. Included by forms with AVX2 only.

#include <immintrin.h>

#include "compositor/blend_lanes_sse2.h"

namespace zor {
namespace {

struct Lanes32 {
  using V = __m256i;
  static constexpr std::size_t kBytes = 32;

  static ZOR_ALWAYS_INLINE V Load(const std::uint8_t* p) {
    return _mm256_loadu_si256(reinterpret_cast<const V*>(p));
  }
  static ZOR_ALWAYS_INLINE void Store(std::uint8_t* p, V v) {
    _mm256_storeu_si256(reinterpret_cast<V*>(p), v);
  }
  static ZOR_ALWAYS_INLINE V Evens(const std::uint8_t* p) {
    // quarters: f0 s0 f1 s1 -> f0 f1 s0 s1
    return _mm256_permute4x64_epi64(_mm256_packus_epi16(Low(Load(p)), Low(Load(p + 32))), 0xD8);
  }
  static ZOR_ALWAYS_INLINE V Doubled(const std::uint8_t* p) {
    return _mm256_cvtepu8_epi16(Lanes16::Load(p));
  }
  static ZOR_ALWAYS_INLINE V Set(std::uint32_t w) {
    return _mm256_set1_epi16(static_cast<short>(w));
  }
  static ZOR_ALWAYS_INLINE V Low(V v) { return _mm256_and_si256(v, Set(0x00FF)); }
  static ZOR_ALWAYS_INLINE V High(V v) { return _mm256_srli_epi16(v, 8); }
  static ZOR_ALWAYS_INLINE V Sub(V a, V b) { return _mm256_sub_epi16(a, b); }
  static ZOR_ALWAYS_INLINE V Mul(V a, V b) { return _mm256_mullo_epi16(a, b); }
  static ZOR_ALWAYS_INLINE V Join(V low, V high) {
    return _mm256_or_si256(_mm256_srli_epi16(low, 8), _mm256_and_si256(high, Set(0xFF00)));
  }
  static ZOR_ALWAYS_INLINE V AddBytes(V a, V b) { return _mm256_add_epi8(a, b); }
};

}  // namespace
}  // namespace zor
