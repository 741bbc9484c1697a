// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/byte_shuffle_avx2.h"

namespace zor {
namespace {

struct Eight : ByteShuffle8 {
  static ZOR_ALWAYS_INLINE Floats Set(float value) noexcept { return _mm256_set1_ps(value); }
  static ZOR_ALWAYS_INLINE void Store(float* to, Floats v) noexcept { _mm256_store_ps(to, v); }
  static ZOR_ALWAYS_INLINE Floats Add(Floats a, Floats b) noexcept { return _mm256_add_ps(a, b); }
  static ZOR_ALWAYS_INLINE Floats Mul(Floats a, Floats b) noexcept { return _mm256_mul_ps(a, b); }
  using Weight = Floats;
  static ZOR_ALWAYS_INLINE Weight WeightOf(Floats weights) noexcept { return weights; }
  static ZOR_ALWAYS_INLINE Floats Product(Bytes window, Bytes index, Weight weight) noexcept {
    return Mul(_mm256_cvtepi32_ps(PickBytes(window, index)), weight);
  }
  static ZOR_ALWAYS_INLINE void StoreLowBytes(std::uint8_t* out, std::int64_t count,
                                              Floats sums) noexcept {
    ByteShuffle8::StoreLowBytes(out, count, _mm256_cvttps_epi32(sums));
  }
};

std::uint64_t PlanBytes(const AreaList& list) noexcept {
  return AreaPlanBytes(Eight::Shuffles::Head(list, 1), list);
}

bool Plan(const AreaList& list, std::uint8_t* plan) noexcept {
  return Eight::Shuffles::Fill(list, Eight::Shuffles::Head(list, 1), Eight::kWindowBytes, plan);
}

void Rows(const AreaTargetRow* targets, std::int32_t count, float* b,
          const std::uint8_t* plan) noexcept {
  AreaShuffleRows<Eight>(targets, count, b, plan);
}

}  // namespace

const AreaRowForm kAreaRowsAvx2 = {"avx2", PlanBytes, Plan, Rows};

}  // namespace zor
