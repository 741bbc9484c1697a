// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/byte_shuffle_avx512.h"
#include "scale/packed_rows.h"
#include "scale/packed_rows_vector.h"

namespace zor {
namespace {

struct EightDoubles {
  using Vector = __m512d;
};

template <std::int32_t kRegisters>
struct SixteenDoubles : ByteShuffle16<kRegisters> {
  using Base = ByteShuffle16<kRegisters>;
  using typename Base::Bytes;
  using typename Base::Floats;

  using Pair = DoublePair<EightDoubles>;

  static ZOR_ALWAYS_INLINE Pair Set(double value) noexcept {
    return {_mm512_set1_pd(value), _mm512_set1_pd(value)};
  }
  static ZOR_ALWAYS_INLINE Pair LoadPair(const double* from) noexcept {
    return {_mm512_load_pd(from), _mm512_load_pd(from + 8)};
  }
  static ZOR_ALWAYS_INLINE void StorePair(double* to, Pair values) noexcept {
    _mm512_store_pd(to, values.low);
    _mm512_store_pd(to + 8, values.high);
  }
  static ZOR_ALWAYS_INLINE Bytes Difference(Bytes a, Bytes b) noexcept {
    return _mm512_sub_epi32(a, b);
  }
  static ZOR_ALWAYS_INLINE Pair FromIntegers(Bytes values) noexcept {
    return {_mm512_cvtepi32_pd(_mm512_castsi512_si256(values)),
            _mm512_cvtepi32_pd(_mm512_extracti64x4_epi64(values, 1))};
  }
  static ZOR_ALWAYS_INLINE Pair FromFloats(Floats values) noexcept {
    return {_mm512_cvtps_pd(_mm512_castps512_ps256(values)),
            _mm512_cvtps_pd(_mm512_extractf32x8_ps(values, 1))};
  }
  static ZOR_ALWAYS_INLINE Pair ThroughFloat(Pair a) noexcept {
    return {_mm512_cvtps_pd(_mm512_cvtpd_ps(a.low)), _mm512_cvtps_pd(_mm512_cvtpd_ps(a.high))};
  }
  static ZOR_ALWAYS_INLINE __m512i Truncated(Pair a) noexcept {
    return _mm512_inserti64x4(_mm512_castsi256_si512(_mm512_cvttpd_epi32(a.low)),
                              _mm512_cvttpd_epi32(a.high), 1);
  }
};

std::uint64_t PlanBytes(const AreaList& list) noexcept {
  return AreaPlanBytes(ByteShuffle16<1>::Shuffles::Head(list, 1), list);
}

bool Plan(const AreaList& list, std::uint8_t* plan) noexcept {
  return MakeByteShuffle16Plan(list, plan);
}

void Row(std::uint8_t* out, const std::uint8_t* upper, const std::uint8_t* lower, double share,
         const std::uint8_t* plan) noexcept {
  if (reinterpret_cast<const AreaPlanHead*>(plan)->registers == 1) {
    return PackedVectorRow<SixteenDoubles<1>>(out, upper, lower, share, plan);
  }
  PackedVectorRow<SixteenDoubles<2>>(out, upper, lower, share, plan);
}

void Across(double* out, const std::uint8_t* row, const std::uint8_t* plan) noexcept {
  if (reinterpret_cast<const AreaPlanHead*>(plan)->registers == 1) {
    return PackedVectorAcross<SixteenDoubles<1>>(out, row, plan);
  }
  PackedVectorAcross<SixteenDoubles<2>>(out, row, plan);
}

void Down(std::uint8_t* out, const double* upper, const double* lower, double share,
          const std::uint8_t* plan) noexcept {
  PackedVectorDown<SixteenDoubles<1>>(out, upper, lower, share, plan);
}

}  // namespace

const PackedRowForm kPackedRowsAvx512 = {"avx512", PlanBytes, Plan, Row, Across, Down};

}  // namespace zor
