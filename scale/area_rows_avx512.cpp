// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <immintrin.h>

#include <cstring>

#include "scale/area_rows_vector.h"

namespace zor {
namespace {

/// Sixteen values; a window of 64 or 128 source bytes serves four taps of them all.
template <std::int32_t kRegisters>
struct Sixteen {
  static constexpr std::int32_t kLanes = 16;
  using Floats = __m512;
  using Bytes = __m512i;
  static constexpr std::int32_t kWindows = 1;
  using Shuffles = AreaShuffle<kLanes, kWindows>;

  static ZOR_ALWAYS_INLINE Floats Set(float value) noexcept { return _mm512_set1_ps(value); }
  static ZOR_ALWAYS_INLINE Floats Load(const float* from) noexcept { return _mm512_load_ps(from); }
  static ZOR_ALWAYS_INLINE void Store(float* to, Floats v) noexcept { _mm512_store_ps(to, v); }
  static ZOR_ALWAYS_INLINE Floats Add(Floats a, Floats b) noexcept { return _mm512_add_ps(a, b); }
  static ZOR_ALWAYS_INLINE Floats Mul(Floats a, Floats b) noexcept { return _mm512_mul_ps(a, b); }

  struct Window {
    __m512i low;
    __m512i high;  // of two registers
  };

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
  static ZOR_ALWAYS_INLINE Floats Pick(const Window& window, Bytes index) noexcept {
    constexpr __mmask64 kLowBytes = 0x1111111111111111;
    return _mm512_cvtepi32_ps(
        kRegisters == 1
            ? _mm512_maskz_permutexvar_epi8(kLowBytes, index, window.low)
            : _mm512_maskz_permutex2var_epi8(kLowBytes, window.low, index, window.high));
  }

  static ZOR_ALWAYS_INLINE void StoreLowBytes(std::uint8_t* out, std::int64_t count,
                                              Floats sums) noexcept {
    const __m128i bytes = _mm512_cvtepi32_epi8(_mm512_cvttps_epi32(sums));
    if (count == kLanes) {
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out), bytes);
    } else {
      _mm_mask_storeu_epi8(out, static_cast<__mmask16>((1u << count) - 1), bytes);
    }
  }
};

using Shuffles = Sixteen<1>::Shuffles;

std::uint64_t PlanBytes(const AreaList& list) noexcept {
  return AreaPlanBytes(Shuffles::Head(list, 1), list);
}

bool Plan(const AreaList& list, std::uint8_t* plan) noexcept {
  AreaPlanHead head = Shuffles::Head(list, 1);
  for (; head.registers <= 2; ++head.registers) {
    if (Shuffles::Fill(list, head, static_cast<std::int32_t>(64 * head.registers), plan)) {
      return true;
    }
  }
  return false;
}

void Row(std::uint8_t* out, float* b, const std::uint8_t* const* rows, std::int32_t count,
         float share, const std::uint8_t* plan) noexcept {
  if (reinterpret_cast<const AreaPlanHead*>(plan)->registers == 1) {
    return AreaShuffleRow<Sixteen<1>>(out, b, rows, count, share, plan);
  }
  AreaShuffleRow<Sixteen<2>>(out, b, rows, count, share, plan);
}

}  // namespace

const AreaRowForm kAreaRowsAvx512 = {"avx512", PlanBytes, Plan, Row};

}  // namespace zor
