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
  using Shuffles = AreaShuffle<kLanes, 1>;

  static ZOR_ALWAYS_INLINE Floats Set(float value) noexcept { return _mm512_set1_ps(value); }
  static ZOR_ALWAYS_INLINE Floats Load(const float* from) noexcept { return _mm512_load_ps(from); }
  static ZOR_ALWAYS_INLINE void Store(float* to, Floats v) noexcept { _mm512_store_ps(to, v); }
  static ZOR_ALWAYS_INLINE Floats Add(Floats a, Floats b) noexcept { return _mm512_add_ps(a, b); }
  static ZOR_ALWAYS_INLINE Floats Mul(Floats a, Floats b) noexcept { return _mm512_mul_ps(a, b); }

  static ZOR_ALWAYS_INLINE __m512i Shuffle(const std::uint8_t* row, const std::uint8_t* record,
                                           const AreaPlanHead&) noexcept {
    const std::uint8_t* window = row + AreaWindowBase(record, 0);
    const __m512i index = _mm512_load_si512(record + Shuffles::kBaseBytes);
    const __m512i low = _mm512_loadu_si512(window);
    if constexpr (kRegisters == 1) return _mm512_permutexvar_epi8(index, low);
    return _mm512_permutex2var_epi8(low, index, _mm512_loadu_si512(window + 64 * (kRegisters - 1)));
  }

  template <int kTap>
  static ZOR_ALWAYS_INLINE Floats AddTap(Floats sum, __m512i bytes,
                                         const std::uint8_t* weights) noexcept {
    const __m512i byte =
        kTap == 3 ? _mm512_srli_epi32(bytes, 24)
                  : _mm512_and_si512(_mm512_srli_epi32(bytes, 8 * kTap), _mm512_set1_epi32(0xFF));
    return Add(sum, Mul(_mm512_cvtepi32_ps(byte), Load(reinterpret_cast<const float*>(weights))));
  }

  static ZOR_ALWAYS_INLINE Floats Sum(const std::uint8_t* row, const std::uint8_t* record,
                                      const AreaPlanHead& head) noexcept {
    return AreaShuffleSum<Sixteen>(row, record, head);
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

/// The head of a plan; without registers if no window reaches.
AreaPlanHead HeadOf(const AreaList& list) noexcept {
  AreaPlanHead head = Shuffles::Head(list, 1);
  for (; head.registers <= 2; ++head.registers) {
    if (Shuffles::Fill(list, head, static_cast<std::int32_t>(64 * head.registers), nullptr)) {
      return head;
    }
  }
  head.registers = 0;
  return head;
}

std::uint64_t PlanBytes(const AreaList& list) noexcept {
  const AreaPlanHead head = HeadOf(list);
  if (head.registers == 0) return 0;
  return sizeof(head) + static_cast<std::uint64_t>(head.groups * head.recordBytes);
}

void Plan(const AreaList& list, std::uint8_t* plan) noexcept {
  const AreaPlanHead head = HeadOf(list);
  std::memcpy(plan, &head, sizeof(head));
  Shuffles::Fill(list, head, static_cast<std::int32_t>(64 * head.registers), plan + sizeof(head));
}

void Row(std::uint8_t* out, float* b, const std::uint8_t* const* rows, std::int32_t count,
         float share, const std::uint8_t* plan) noexcept {
  if (reinterpret_cast<const AreaPlanHead*>(plan)->registers == 1) {
    return AreaVectorRow<Sixteen<1>>(out, b, rows, count, share, plan);
  }
  AreaVectorRow<Sixteen<2>>(out, b, rows, count, share, plan);
}

}  // namespace

const AreaRowForm kAreaRowsAvx512 = {"avx512", PlanBytes, Plan, Row};

}  // namespace zor
