// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/byte_columns_avx512.h"
#include "scale/gray_rows.h"

namespace zor {
namespace {

/// One byte a pixel: a column is a pixel's, and the pixel behind it is the byte behind it.
struct GrayBytes {
  const GrayColumns& columns;

  ZOR_ALWAYS_INLINE std::int64_t Count() const noexcept { return columns.count; }
  ZOR_ALWAYS_INLINE std::int64_t RowBytes() const noexcept { return columns.sourceWidth; }
  ZOR_ALWAYS_INLINE std::int32_t Distance() const noexcept { return 1; }
  ZOR_ALWAYS_INLINE std::int32_t Offset(std::int64_t i) const noexcept {
    return columns.offsets[i];
  }
  ZOR_ALWAYS_INLINE std::int32_t Lowest(std::int64_t i) const noexcept { return Offset(i); }
  ZOR_ALWAYS_INLINE std::int32_t Highest(std::int64_t i) const noexcept { return Offset(i); }
  ZOR_ALWAYS_INLINE std::int32_t Weight(std::int64_t i) const noexcept {
    return columns.weights[i];
  }
};

std::uint64_t LerpPlanBytes(const GrayColumns& columns) noexcept {
  return BytesOfLerpPlan(GrayBytes{columns});
}
std::uint64_t PickPlanBytes(const GrayColumns& columns) noexcept {
  return BytesOfPickPlan(GrayBytes{columns});
}
void PlanLerp(const GrayColumns& columns, std::uint8_t* plan) noexcept {
  MakeLerpPlan(GrayBytes{columns}, plan);
}
void PlanPick(const GrayColumns& columns, std::uint8_t* plan) noexcept {
  MakePickPlan(GrayBytes{columns}, plan);
}

void Pick(std::uint8_t* out, const std::uint8_t* row, const std::uint8_t* plan) noexcept {
  PickBytes(out, row, plan);
}
void Across(std::uint8_t* out, const std::uint8_t* row, const std::uint8_t* plan) noexcept {
  LerpBytesAcross(out, row, plan);
}
void Both(std::uint8_t* out, const std::uint8_t* row, const std::uint8_t* nextRow,
          const std::uint8_t* plan, std::int32_t weight) noexcept {
  LerpBytesBoth(out, row, nextRow, plan, weight);
}

void Down(std::uint8_t* out, const std::uint8_t* a, const std::uint8_t* b, std::int32_t weight,
          std::int32_t count) noexcept {
  const __m512i weights = WeightPairs(weight);
  // Unpacking works within 16 bytes and so does packing, which undoes it.
  const auto blend = [=](__m512i x, __m512i y) {
    x = Flip(x);
    y = Flip(y);
    const __m512i low = _mm512_maddubs_epi16(weights, _mm512_unpacklo_epi8(x, y));
    const __m512i high = _mm512_maddubs_epi16(weights, _mm512_unpackhi_epi8(x, y));
    return Flip(_mm512_packus_epi16(_mm512_srli_epi16(low, 8), _mm512_srli_epi16(high, 8)));
  };
  std::int32_t i = 0;
  for (; i + 64 <= count; i += 64) {
    _mm512_storeu_si512(out + i, blend(Load(a + i), Load(b + i)));
  }
  if (i < count) {
    const __mmask64 mask = MaskOf(count - i);
    _mm512_mask_storeu_epi8(
        out + i, mask,
        blend(_mm512_maskz_loadu_epi8(mask, a + i), _mm512_maskz_loadu_epi8(mask, b + i)));
  }
}

}  // namespace

const GrayRowForm kGrayRowsAvx512 = {
    "avx512", {PickPlanBytes, PlanPick, Pick}, {LerpPlanBytes, PlanLerp, Across, Both}, Down};

}  // namespace zor
