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

  /// A byte put below the exponent of 2^23 is the float 2^23 + byte, so that
  ///     (2^23 + byte) * weight - 2^23 * weight
  /// rounded once is byte * weight rounded once: the step back is exact, as it only moves the
  /// exponent. That takes a conversion's work off the ports that add.
  struct Weight {
    Floats weight;
    Floats back;
  };
  static ZOR_ALWAYS_INLINE Weight WeightOf(Floats weights) noexcept {
    return {weights, Mul(weights, Set(-8388608.0f))};
  }
  static ZOR_ALWAYS_INLINE Floats Product(const Window& window, Bytes index,
                                          const Weight& weight) noexcept {
    const Floats raised =
        _mm512_castsi512_ps(Base::PickBytesInto(_mm512_set1_epi32(0x4B000000), window, index));
    return _mm512_fmadd_ps(raised, weight.weight, weight.back);
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

void Rows(const AreaTargetRow* targets, std::int32_t count, float* b,
          const std::uint8_t* plan) noexcept {
  if (reinterpret_cast<const AreaPlanHead*>(plan)->registers == 1) {
    return AreaShuffleRows<Sixteen<1>>(targets, count, b, plan);
  }
  AreaShuffleRows<Sixteen<2>>(targets, count, b, plan);
}

}  // namespace

const AreaRowForm kAreaRowsAvx512 = {"avx512", PlanBytes, Plan, Rows};

}  // namespace zor
