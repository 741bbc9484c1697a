// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Sixteen values side by side whose bytes a permute brings from a window of 64 or 128 source
/// bytes. For files with AVX-512 only; always-inline code in an unnamed namespace.

#include <immintrin.h>

#include "platform/compiler.h"
#include "scale/area_rows_vector.h"

namespace zor {
namespace {

template <std::int32_t kRegisters>
struct ByteShuffle16 {
  static constexpr std::int32_t kLanes = 16;
  static constexpr std::int32_t kWindows = 1;
  using Shuffles = AreaShuffle<kLanes, kWindows>;
  using Floats = __m512;
  using Bytes = __m512i;

  struct Window {
    __m512i low;
    __m512i high;  // of two registers
  };

  static ZOR_ALWAYS_INLINE Floats Load(const float* from) noexcept { return _mm512_load_ps(from); }
  static ZOR_ALWAYS_INLINE Bytes LoadIndex(const std::uint8_t* from) noexcept {
    return _mm512_load_si512(from);
  }
  /// The shuffle of one tap: its byte below, and bytes that don't matter.
  static ZOR_ALWAYS_INLINE Bytes IndexOf(Bytes index, unsigned tap) noexcept {
    return _mm512_srli_epi32(index, 8 * tap);
  }
  static ZOR_ALWAYS_INLINE Window LoadWindow(const std::uint8_t* row,
                                             const std::int32_t* starts) noexcept {
    const std::uint8_t* window = row + *starts;
    return {_mm512_loadu_si512(window), _mm512_loadu_si512(window + 64 * (kRegisters - 1))};
  }
  /// The bytes of one tap as integers.
  static ZOR_ALWAYS_INLINE Bytes PickBytes(const Window& window, Bytes index) noexcept {
    return PickBytesInto(_mm512_setzero_si512(), window, index);
  }
  /// The bytes of one tap as the lowest ones of others.
  static ZOR_ALWAYS_INLINE Bytes PickBytesInto(Bytes others, const Window& window,
                                               Bytes index) noexcept {
    constexpr __mmask64 kLowBytes = 0x1111111111111111;
    if (kRegisters == 1) {
      return _mm512_mask_permutexvar_epi8(others, kLowBytes, index, window.low);
    }
    return _mm512_mask_mov_epi8(others, kLowBytes,
                                _mm512_permutex2var_epi8(window.low, index, window.high));
  }

  static ZOR_ALWAYS_INLINE void StoreLowBytes(std::uint8_t* out, std::int64_t count,
                                              __m512i values) noexcept {
    const __m128i bytes = _mm512_cvtepi32_epi8(values);
    if (count == kLanes) {
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out), bytes);
    } else {
      _mm_mask_storeu_epi8(out, static_cast<__mmask16>((1u << count) - 1), bytes);
    }
  }
};

/// Makes a plan with windows of one register, or of two where one doesn't reach.
ZOR_ALWAYS_INLINE bool MakeByteShuffle16Plan(const AreaList& list, std::uint8_t* plan) noexcept {
  using Shuffles = ByteShuffle16<1>::Shuffles;
  AreaPlanHead head = Shuffles::Head(list, 1);
  for (; head.registers <= 2; ++head.registers) {
    if (Shuffles::Fill(list, head, static_cast<std::int32_t>(64 * head.registers), plan)) {
      return true;
    }
  }
  return false;
}

}  // namespace
}  // namespace zor
