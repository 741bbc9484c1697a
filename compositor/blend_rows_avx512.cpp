// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "compositor/blend_lanes_avx2.h"
#include "convert/permute_table_avx512.h"

namespace zor {
namespace {

/// The high bytes of the lanes of one register at even places, those of another at odd ones.
struct JoinHighBytes {
  static constexpr int Byte(int i) { return i % 2 == 0 ? i + 1 : 64 + i; }
};

/// The high bytes of two registers that hold the low and high halves of every quarter.
struct PackHighBytes {
  static constexpr int Byte(int i) {
    const int within = i % 16;
    return (within < 8 ? 0 : 64) + i / 16 * 16 + 2 * (within % 8) + 1;
  }
};

struct Lanes64 {
  using V = __m512i;
  static constexpr std::size_t kBytes = 64;

  static ZOR_ALWAYS_INLINE V Load(const std::uint8_t* p) {
    V v = _mm512_loadu_si512(p);
    asm("" : "+v"(v));  // or the compiler loads it again for every use
    return v;
  }
  static ZOR_ALWAYS_INLINE void Store(std::uint8_t* p, V v) { _mm512_storeu_si512(p, v); }
  static ZOR_ALWAYS_INLINE V Evens(const std::uint8_t* p) {
    return _mm512_inserti64x4(_mm512_castsi256_si512(_mm512_cvtepi16_epi8(Load(p))),
                              _mm512_cvtepi16_epi8(Load(p + 64)), 1);
  }
  static ZOR_ALWAYS_INLINE V Doubled(const std::uint8_t* p) {
    return _mm512_cvtepu8_epi16(Lanes32::Load(p));
  }
  static ZOR_ALWAYS_INLINE V Set(std::uint32_t w) {
    return _mm512_set1_epi16(static_cast<short>(w));
  }
  static ZOR_ALWAYS_INLINE V Low(V v) { return _mm512_and_si512(v, Set(0x00FF)); }
  static ZOR_ALWAYS_INLINE V High(V v) { return _mm512_srli_epi16(v, 8); }
  static ZOR_ALWAYS_INLINE V Sub(V a, V b) { return _mm512_sub_epi16(a, b); }
  static ZOR_ALWAYS_INLINE V Mul(V a, V b) { return _mm512_mullo_epi16(a, b); }
  static ZOR_ALWAYS_INLINE V Join(V low, V high) {
    return _mm512_permutex2var_epi8(low, TableOf<JoinHighBytes>(), high);
  }
  static ZOR_ALWAYS_INLINE V AddBytes(V a, V b) { return _mm512_add_epi8(a, b); }
};

/// Weights but 128 fit signed bytes from one side: c + (w (d - c) >> 8) under 128, and above it
/// d + (v (c - d) >> 8) with v = 256 - w.
template <int kTimes, bool kFromTarget>
struct ByPairs64 : ByConstant<kTimes> {
  using Base = ByConstant<kTimes>;
  template <class P>
  ZOR_ALWAYS_INLINE typename P::V At(std::size_t i) const {
    if constexpr (P::kBytes != Lanes64::kBytes) {
      return Base::template At<P>(i);
    } else {
      const std::uint32_t k = kFromTarget ? 256 - this->weight : this->weight;
      // The pair (c, d) by (-k, k), or by (k, -k).
      const std::uint32_t pair = kFromTarget ? (0x100 - k) << 8 | k : k << 8 | (0x100 - k);
      const __m512i weights = Lanes64::Set(pair);
      const __m512i c = Lanes64::Load(this->child + i);
      __m512i d = Lanes64::Load(this->target + i);
      for (int time = 0; time < kTimes; ++time) {
        const __m512i low = _mm512_maddubs_epi16(_mm512_unpacklo_epi8(c, d), weights);
        const __m512i high = _mm512_maddubs_epi16(_mm512_unpackhi_epi8(c, d), weights);
        d = _mm512_add_epi8(kFromTarget ? d : c,
                            _mm512_permutex2var_epi8(low, TableOf<PackHighBytes>(), high));
      }
      return d;
    }
  }
};

template <int kTimes>
void Constant(const BlendRun& run, std::uint32_t weight) noexcept {
  const ByConstant<kTimes> row{{}, weight};
  if (weight < 128) {
    WalkRun<Lanes64, Lanes32, Lanes16, Lanes8>(ByPairs64<kTimes, false>{row}, run);
  } else if (weight > 128 && weight < 256) {
    WalkRun<Lanes64, Lanes32, Lanes16, Lanes8>(ByPairs64<kTimes, true>{row}, run);
  } else {
    WalkRun<Lanes64, Lanes32, Lanes16, Lanes8>(row, run);
  }
}

using Rows = RowsOf<Lanes64, Lanes32, Lanes16, Lanes8>;

}  // namespace

const BlendRows kBlendRowsAvx512 = {Rows::Masked, Rows::MaskedChroma, Rows::MaskedByPairs,
                                    Constant<1>,  Constant<2>,        LeftOver,
                                    Passing};

}  // namespace zor
