// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <immintrin.h>

#include <cstring>

#include "scale/area_rows_vector.h"

namespace zor {
namespace {

constexpr std::int32_t kWindow = 16;

/// Eight values in two halves; a window of 16 source bytes serves four taps of a half.
struct Eight {
  static constexpr std::int32_t kLanes = 8;
  using Floats = __m256;
  using Shuffles = AreaShuffle<kLanes, 2>;

  static ZOR_ALWAYS_INLINE Floats Set(float value) noexcept { return _mm256_set1_ps(value); }
  static ZOR_ALWAYS_INLINE Floats Load(const float* from) noexcept { return _mm256_load_ps(from); }
  static ZOR_ALWAYS_INLINE void Store(float* to, Floats v) noexcept { _mm256_store_ps(to, v); }
  static ZOR_ALWAYS_INLINE Floats Add(Floats a, Floats b) noexcept { return _mm256_add_ps(a, b); }
  static ZOR_ALWAYS_INLINE Floats Mul(Floats a, Floats b) noexcept { return _mm256_mul_ps(a, b); }

  static ZOR_ALWAYS_INLINE __m256i Shuffle(const std::uint8_t* row, const std::uint8_t* record,
                                           const AreaPlanHead&) noexcept {
    const auto window = [=](std::int32_t half) {
      return _mm_loadu_si128(reinterpret_cast<const __m128i*>(row + AreaWindowBase(record, half)));
    };
    const auto* index = reinterpret_cast<const __m256i*>(record + Shuffles::kBaseBytes);
    return _mm256_shuffle_epi8(
        _mm256_inserti128_si256(_mm256_castsi128_si256(window(0)), window(1), 1),
        _mm256_load_si256(index));
  }

  template <int kTap>
  static ZOR_ALWAYS_INLINE Floats AddTap(Floats sum, __m256i bytes,
                                         const std::uint8_t* weights) noexcept {
    const __m256i byte =
        kTap == 3 ? _mm256_srli_epi32(bytes, 24)
                  : _mm256_and_si256(_mm256_srli_epi32(bytes, 8 * kTap), _mm256_set1_epi32(0xFF));
    return Add(sum, Mul(_mm256_cvtepi32_ps(byte), Load(reinterpret_cast<const float*>(weights))));
  }

  static ZOR_ALWAYS_INLINE Floats Sum(const std::uint8_t* row, const std::uint8_t* record,
                                      const AreaPlanHead& head) noexcept {
    return AreaShuffleSum<Eight>(row, record, head);
  }

  static ZOR_ALWAYS_INLINE void StoreLowBytes(std::uint8_t* out, std::int64_t count,
                                              Floats sums) noexcept {
    const __m256i words = _mm256_and_si256(_mm256_cvttps_epi32(sums), _mm256_set1_epi32(0xFF));
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

std::uint64_t PlanBytes(const AreaList& list) noexcept {
  const AreaPlanHead head = Eight::Shuffles::Head(list, 1);
  if (!Eight::Shuffles::Fill(list, head, kWindow, nullptr)) return 0;
  return sizeof(head) + static_cast<std::uint64_t>(head.groups * head.recordBytes);
}

void Plan(const AreaList& list, std::uint8_t* plan) noexcept {
  const AreaPlanHead head = Eight::Shuffles::Head(list, 1);
  std::memcpy(plan, &head, sizeof(head));
  Eight::Shuffles::Fill(list, head, kWindow, plan + sizeof(head));
}

void Row(std::uint8_t* out, float* b, const std::uint8_t* const* rows, std::int32_t count,
         float share, const std::uint8_t* plan) noexcept {
  AreaVectorRow<Eight>(out, b, rows, count, share, plan);
}

}  // namespace

const AreaRowForm kAreaRowsAvx2 = {"avx2", PlanBytes, Plan, Row};

}  // namespace zor
