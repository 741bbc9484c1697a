// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/row_filter_avx512.h"
#include "convert/yuv420_to_rgb_rows.h"
#include "convert/yuv_colour_avx512.h"

namespace zor {
namespace {

/// U and V in turn, out of 32 samples of U and behind them 32 of V.
struct HalvesInTurn {
  static constexpr int Byte(int i) { return i / 2 + i % 2 * 32; }
};

ZOR_ALWAYS_INLINE ChromaTerms TermsOfHalves(__m512i halves) {
  return ChromaTerms(_mm512_xor_si512(_mm512_permutexvar_epi8(TableOf<HalvesInTurn>(), halves),
                                      _mm512_set1_epi8(-128)));
}

template <bool kInner>
struct FilteredBlock {
  static constexpr std::int32_t kColumns = 64;
  const Yuv420ToRgbPair& rows;

  template <bool kStream>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const ChromaTerms terms = TermsOfHalves(SmoothHalves(rows.u, rows.v, x / 2));
    const PairOf64 luma = SmoothPair<kInner>(rows.luma, x);
    StoreColours<Rgb32, kStream>(rows.target[0] + 4 * x, luma.row[0], terms);
    StoreColours<Rgb32, kStream>(rows.target[1] + 4 * x, luma.row[1], terms);
  }
};

struct RawBlock {
  static constexpr std::int32_t kColumns = 64;
  std::uint8_t* target;
  const std::uint8_t* luma;
  const std::uint8_t* u;
  const std::uint8_t* v;

  template <bool kStream>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    StoreColours<Rgb24, kStream>(target + 3 * x, Load64(luma + x),
                                 TermsOfHalves(LoadHalves(u + x / 2, v + x / 2)));
  }
};

}  // namespace

std::int32_t Yuv420ToRgb32RowsAvx512(const Yuv420ToRgbPair& rows, std::int32_t columns,
                                     bool stream) noexcept {
  return ForEachBlockOfPair<FilteredBlock>(rows, columns, stream);
}

std::int32_t Yuv420ToRgb24RowAvx512(std::uint8_t* target, const std::uint8_t* luma,
                                    const std::uint8_t* u, const std::uint8_t* v,
                                    std::int32_t columns, bool stream,
                                    std::ptrdiff_t climb) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, stream, RawBlock{target, luma, u, v},
                                            AskForRowAbove<3>{target, climb});
}

}  // namespace zor
