// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/byte_shuffle_avx512.h"

namespace zor {
namespace {

template <std::int32_t kRegisters>
struct Sixteen : ByteShuffle16<kRegisters> {
  using Base = ByteShuffle16<kRegisters>;
  using typename Base::Bytes;
  using typename Base::Floats;
  using typename Base::Window;

  static ZOR_ALWAYS_INLINE Floats Set(float value) noexcept { return _mm512_set1_ps(value); }
  static ZOR_ALWAYS_INLINE void Store(float* to, Floats v) noexcept { _mm512_store_ps(to, v); }
  static ZOR_ALWAYS_INLINE Floats Add(Floats a, Floats b) noexcept { return _mm512_add_ps(a, b); }
  static ZOR_ALWAYS_INLINE Floats Mul(Floats a, Floats b) noexcept { return _mm512_mul_ps(a, b); }
  static ZOR_ALWAYS_INLINE Floats Pick(const Window& window, Bytes index) noexcept {
    return _mm512_cvtepi32_ps(Base::PickBytes(window, index));
  }
  static ZOR_ALWAYS_INLINE void StoreLowBytes(std::uint8_t* out, std::int64_t count,
                                              Floats sums) noexcept {
    Base::StoreLowBytes(out, count, _mm512_cvttps_epi32(sums));
  }
};

std::uint64_t PlanBytes(const AreaList& list) noexcept {
  return AreaPlanBytes(ByteShuffle16<1>::Shuffles::Head(list, 1), list);
}

bool Plan(const AreaList& list, std::uint8_t* plan) noexcept {
  return MakeByteShuffle16Plan(list, plan);
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
