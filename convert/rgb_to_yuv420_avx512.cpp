// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/rgb_lanes_avx512.h"
#include "convert/rgb_to_yuv420_rows.h"
#include "convert/store_avx512.h"

namespace zor {
namespace {

/// Byte 1 of the dwords of two registers in turn: luma of even and odd columns.
struct LumaInOrder {
  static constexpr int Byte(int i) {
    return 64 * (i % 2) + 4 * ByParity::DwordOfPair(i / 2 % 16) + 1;
  }
};

/// The bytes of a dword belong to a group of: U, columns 0 to 31; U, columns 32 to 63; V; V.
struct ChromaInOrder {
  static constexpr int Byte(int i) { return 4 * ByParity::DwordOfPair(i % 16) + i / 16; }
};

/// One chroma row of the matrix over sixteen groups: byte at bits 10 to 17 of each dword.
ZOR_ALWAYS_INLINE __m512i ChromaOfSixteen(const ByParity& upper, const ByParity& lower, int half,
                                          int weights) {
  const __m512i row = _mm512_set1_epi32(weights);
  __m512i sum = _mm512_set1_epi32(128 << kChromaShiftOfFour);
  sum = _mm512_dpbusd_epi32(sum, upper.even[half], row);
  sum = _mm512_dpbusd_epi32(sum, upper.odd[half], row);
  sum = _mm512_dpbusd_epi32(sum, lower.even[half], row);
  return _mm512_dpbusd_epi32(sum, lower.odd[half], row);
}

template <class Pixel>
struct Block {
  static constexpr std::int32_t kColumns = 64;
  RgbToYuv420Pair rows;

  template <bool kStream>
  ZOR_ALWAYS_INLINE void StoreLuma(const ByParity& pixels, std::uint8_t* target) const {
    __m512i half[2];
#pragma GCC unroll 2
    for (int i = 0; i < 2; ++i) {
      half[i] = _mm512_permutex2var_epi8(LumaOfSixteen(pixels.even[i]), TableOf<LumaInOrder>(),
                                         LumaOfSixteen(pixels.odd[i]));
    }
    const __m512i luma = _mm512_inserti64x4(half[0], _mm512_castsi512_si256(half[1]), 1);
    Store64<kStream>(target, _mm512_add_epi8(luma, _mm512_set1_epi8(16)));
  }

  template <bool kStream>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const ByParity upper = Load64Pixels<Pixel>(rows.source[0] + x * Pixel::kBytes);
    const ByParity lower = Load64Pixels<Pixel>(rows.source[1] + x * Pixel::kBytes);
    StoreLuma<kStream>(upper, rows.luma[0] + x);
    StoreLuma<kStream>(lower, rows.luma[1] + x);

    const __m512i u0 = ChromaOfSixteen(upper, lower, 0, kUWeights);
    const __m512i u1 = ChromaOfSixteen(upper, lower, 1, kUWeights);
    const __m512i v0 = ChromaOfSixteen(upper, lower, 0, kVWeights);
    const __m512i v1 = ChromaOfSixteen(upper, lower, 1, kVWeights);
    const __m512i u = Select(0xFF, _mm512_srli_epi32(u0, 10), _mm512_srli_epi32(u1, 2));
    const __m512i v = Select(0xFF0000, _mm512_slli_epi32(v0, 6), _mm512_slli_epi32(v1, 14));
    const __m512i planes = _mm512_permutexvar_epi8(TableOf<ChromaInOrder>(), Select(0xFFFF, u, v));
    Store32<kStream>(rows.u + x / 2, _mm512_castsi512_si256(planes));
    Store32<kStream>(rows.v + x / 2, _mm512_extracti64x4_epi64(planes, 1));
  }
};

template <class Pixel>
ZOR_ALWAYS_INLINE std::int32_t ConvertRows(const RgbToYuv420Pair& rows, std::int32_t columns,
                                           bool stream) {
  return ForEachBlock<BlockCover::kOverlap>(columns, stream, Block<Pixel>{rows},
                                            AskForPair<2 * Pixel::kBytes, 2>{rows.ahead});
}

}  // namespace

std::int32_t Rgb32ToYuv420RowsAvx512(const RgbToYuv420Pair& rows, std::int32_t columns,
                                     bool stream) noexcept {
  return ConvertRows<Rgb32>(rows, columns, stream);
}

std::int32_t Rgb24ToYuv420RowsAvx512(const RgbToYuv420Pair& rows, std::int32_t columns,
                                     bool stream) noexcept {
  return ConvertRows<Rgb24>(rows, columns, stream);
}

}  // namespace zor
