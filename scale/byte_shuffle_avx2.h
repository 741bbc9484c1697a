// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Eight values side by side whose bytes a shuffle brings from two windows of 16 source bytes. For
/// files with AVX2 only; always-inline code in an unnamed namespace.

#include <immintrin.h>

#include <cstring>

#include "platform/compiler.h"
#include "scale/area_rows_vector.h"

namespace zor {
namespace {

struct ByteShuffle8 {
  static constexpr std::int32_t kLanes = 8;
  static constexpr std::int32_t kWindows = 2;
  static constexpr std::int32_t kWindowBytes = 16;
  using Shuffles = AreaShuffle<kLanes, kWindows>;
  using Floats = __m256;
  using Bytes = __m256i;

  static ZOR_ALWAYS_INLINE Floats Load(const float* from) noexcept { return _mm256_load_ps(from); }
  static ZOR_ALWAYS_INLINE Bytes LoadIndex(const std::uint8_t* from) noexcept {
    return _mm256_load_si256(reinterpret_cast<const __m256i*>(from));
  }
  /// The shuffle of one tap: its byte below, and bytes that the shuffle clears.
  static ZOR_ALWAYS_INLINE Bytes IndexOf(Bytes index, int tap) noexcept {
    const __m256i clears = _mm256_set1_epi32(static_cast<int>(0xFFFFFF00));
    return _mm256_or_si256(_mm256_srli_epi32(index, 8 * tap), clears);
  }
  static ZOR_ALWAYS_INLINE Bytes LoadWindow(const std::uint8_t* row,
                                            const std::int32_t* starts) noexcept {
    const auto window = [=](std::int32_t half) {
      return _mm_loadu_si128(reinterpret_cast<const __m128i*>(row + starts[half]));
    };
    return _mm256_inserti128_si256(_mm256_castsi128_si256(window(0)), window(1), 1);
  }
  /// The bytes of one tap as integers.
  static ZOR_ALWAYS_INLINE Bytes PickBytes(Bytes window, Bytes index) noexcept {
    return _mm256_shuffle_epi8(window, index);
  }

  static ZOR_ALWAYS_INLINE void StoreLowBytes(std::uint8_t* out, std::int64_t count,
                                              __m256i values) noexcept {
    const __m256i words = _mm256_and_si256(values, _mm256_set1_epi32(0xFF));
    const __m128i shorts =
        _mm_packs_epi32(_mm256_castsi256_si128(words), _mm256_extracti128_si256(words, 1));
    const __m128i bytes = _mm_packus_epi16(shorts, shorts);
    if (count == kLanes) {
      _mm_storel_epi64(reinterpret_cast<__m128i*>(out), bytes);
    } else {
      std::uint8_t low[16];
      _mm_storeu_si128(reinterpret_cast<__m128i*>(low), bytes);
      std::memcpy(out, low, static_cast<std::size_t>(count));
    }
  }
};

}  // namespace
}  // namespace zor
