// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <emmintrin.h>

#include "compositor/swap_planes.h"

namespace zor {

std::int32_t SwapPlanes(std::uint8_t* first, std::uint8_t* second, std::int32_t length) noexcept {
  std::int32_t i = 0;
  for (; length - i >= 16; i += 16) {
    auto* a = reinterpret_cast<__m128i*>(first + i);
    auto* b = reinterpret_cast<__m128i*>(second + i);
    const __m128i kept = _mm_loadu_si128(a);
    _mm_storeu_si128(a, _mm_loadu_si128(b));
    _mm_storeu_si128(b, kept);
  }
  for (; i < length; ++i) {
    const std::uint8_t kept = first[i];
    first[i] = second[i];
    second[i] = kept;
  }
  return 1;
}

}  // namespace zor
