// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Stores of AVX2 forms, into the caches or past them. Included by AVX2 forms only.

#include <immintrin.h>

#include <cstdint>

#include "platform/compiler.h"

namespace zor {
namespace {

/// Streamed stores go to addresses that are multiples of their size.
template <bool kStream>
ZOR_ALWAYS_INLINE void Store32(std::uint8_t* target, __m256i bytes) {
  if constexpr (kStream) {
    _mm256_stream_si256(reinterpret_cast<__m256i*>(target), bytes);
  } else {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(target), bytes);
  }
}

template <bool kStream>
ZOR_ALWAYS_INLINE void Store16(std::uint8_t* target, __m128i bytes) {
  if constexpr (kStream) {
    _mm_stream_si128(reinterpret_cast<__m128i*>(target), bytes);
  } else {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(target), bytes);
  }
}

}  // namespace
}  // namespace zor
