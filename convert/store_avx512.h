// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Stores of AVX-512 forms, into the caches or past them. Included by AVX-512 forms only.

#include "convert/store_avx2.h"

namespace zor {
namespace {

/// As the narrower ones of convert/store_avx2.h.
template <bool kStream>
ZOR_ALWAYS_INLINE void Store64(std::uint8_t* target, __m512i bytes) {
  if constexpr (kStream) {
    _mm512_stream_si512(reinterpret_cast<__m512i*>(target), bytes);
  } else {
    _mm512_storeu_si512(target, bytes);
  }
}

}  // namespace
}  // namespace zor
