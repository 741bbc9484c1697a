// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <mmintrin.h>

#include <cstdint>

#include "convert/fast_mem_copy.h"

namespace zor {

// Blocks of 64 bytes by eight loads and eight stores, at whatever alignment the pointers have.
void MemCopyMmx(void* destination, const void* source, std::size_t bytes) noexcept {
  auto* to = static_cast<std::uint8_t*>(destination);
  const auto* from = static_cast<const std::uint8_t*>(source);
  for (std::size_t blocks = bytes >> 6; blocks != 0; --blocks, to += 64, from += 64) {
    __m64 words[8];
    __builtin_memcpy(words, from, 64);
    __builtin_memcpy(to, words, 64);
  }
  __builtin_memcpy(to, from, bytes & 63);
  _mm_empty();
}

}  // namespace zor
