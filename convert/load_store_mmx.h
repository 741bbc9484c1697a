// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Unaligned loads and stores of MMX registers. Included by MMX forms only.

#include <mmintrin.h>

#include <cstdint>
#include <cstring>

#include "platform/compiler.h"

namespace zor {
namespace {

ZOR_ALWAYS_INLINE __m64 LoadEight(const std::uint8_t* bytes) {
  __m64 value;
  std::memcpy(&value, bytes, sizeof(value));
  return value;
}

ZOR_ALWAYS_INLINE void StoreEight(std::uint8_t* bytes, __m64 value) {
  std::memcpy(bytes, &value, sizeof(value));
}

ZOR_ALWAYS_INLINE __m64 LoadFour(const std::uint8_t* bytes) {
  std::int32_t word;
  std::memcpy(&word, bytes, sizeof(word));
  return _mm_cvtsi32_si64(word);
}

ZOR_ALWAYS_INLINE void StoreFour(std::uint8_t* bytes, __m64 value) {
  const std::int32_t word = _mm_cvtsi64_si32(value);
  std::memcpy(bytes, &word, sizeof(word));
}

}  // namespace
}  // namespace zor
