// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/byte_shuffle_avx2.h"
#include "scale/packed_rows.h"
#include "scale/packed_rows_vector.h"

namespace zor {
namespace {

struct FourDoubles {
  using Vector = __m256d;
};

struct EightDoubles : ByteShuffle8 {
  using Pair = DoublePair<FourDoubles>;

  static ZOR_ALWAYS_INLINE Pair Set(double value) noexcept {
    return {_mm256_set1_pd(value), _mm256_set1_pd(value)};
  }
  static ZOR_ALWAYS_INLINE Pair LoadPair(const double* from) noexcept {
    return {_mm256_load_pd(from), _mm256_load_pd(from + 4)};
  }
  static ZOR_ALWAYS_INLINE void StorePair(double* to, Pair values) noexcept {
    _mm256_store_pd(to, values.low);
    _mm256_store_pd(to + 4, values.high);
  }
  static ZOR_ALWAYS_INLINE Bytes Difference(Bytes a, Bytes b) noexcept {
    return _mm256_sub_epi32(a, b);
  }
  static ZOR_ALWAYS_INLINE Pair FromIntegers(Bytes values) noexcept {
    return {_mm256_cvtepi32_pd(_mm256_castsi256_si128(values)),
            _mm256_cvtepi32_pd(_mm256_extracti128_si256(values, 1))};
  }
  static ZOR_ALWAYS_INLINE Pair FromFloats(Floats values) noexcept {
    return {_mm256_cvtps_pd(_mm256_castps256_ps128(values)),
            _mm256_cvtps_pd(_mm256_extractf128_ps(values, 1))};
  }
  static ZOR_ALWAYS_INLINE Pair ThroughFloat(Pair a) noexcept {
    return {_mm256_cvtps_pd(_mm256_cvtpd_ps(a.low)), _mm256_cvtps_pd(_mm256_cvtpd_ps(a.high))};
  }
  static ZOR_ALWAYS_INLINE __m256i Truncated(Pair a) noexcept {
    return _mm256_inserti128_si256(_mm256_castsi128_si256(_mm256_cvttpd_epi32(a.low)),
                                   _mm256_cvttpd_epi32(a.high), 1);
  }
};

std::uint64_t PlanBytes(const AreaList& list) noexcept {
  return AreaPlanBytes(EightDoubles::Shuffles::Head(list, 1), list);
}

bool Plan(const AreaList& list, std::uint8_t* plan) noexcept {
  return EightDoubles::Shuffles::Fill(list, EightDoubles::Shuffles::Head(list, 1),
                                      EightDoubles::kWindowBytes, plan);
}

void Row(std::uint8_t* out, const std::uint8_t* upper, const std::uint8_t* lower, double share,
         const std::uint8_t* plan) noexcept {
  PackedVectorRow<EightDoubles>(out, upper, lower, share, plan);
}

void Across(double* out, const std::uint8_t* row, const std::uint8_t* plan) noexcept {
  PackedVectorAcross<EightDoubles>(out, row, plan);
}

void Down(std::uint8_t* out, const double* upper, const double* lower, double share,
          const std::uint8_t* plan) noexcept {
  PackedVectorDown<EightDoubles>(out, upper, lower, share, plan);
}

}  // namespace

const PackedRowForm kPackedRowsAvx2 = {"avx2", PlanBytes, Plan, Row, Across, Down};

}  // namespace zor
