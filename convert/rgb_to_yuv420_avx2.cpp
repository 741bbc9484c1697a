// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/rgb_lanes_avx2.h"
#include "convert/rgb_to_yuv420_rows.h"
#include "convert/store_avx2.h"

namespace zor {
namespace {

/// Adds up the pixels of each pair of columns: words B, G, R, x.
ZOR_ALWAYS_INLINE __m256i AddColumns(__m256i pixels) {
  const __m256i pairs = _mm256_shuffle_epi8(
      pixels, _mm256_setr_epi8(0, 4, 1, 5, 2, 6, 3, 7, 8, 12, 9, 13, 10, 14, 11, 15,  //
                               0, 4, 1, 5, 2, 6, 3, 7, 8, 12, 9, 13, 10, 14, 11, 15));
  return _mm256_maddubs_epi16(pairs, _mm256_set1_epi8(1));
}

/// Dwords U0 U1 V0 V1 | U2 U3 V2 V3 less 128, from the sums of four groups.
ZOR_ALWAYS_INLINE __m256i ChromaOfFour(__m256i groups) {
  const __m256i u = _mm256_madd_epi16(groups, _mm256_set1_epi64x(0x0000FFDAFFB60070));
  const __m256i v = _mm256_madd_epi16(groups, _mm256_set1_epi64x(0x00000070FFA2FFEE));
  return _mm256_srai_epi32(_mm256_hadd_epi32(u, v), kChromaShiftOfFour);
}

template <class Pixel>
struct Block {
  static constexpr std::int32_t kColumns = 32;
  RgbToYuv420Pair rows;

  template <bool kStream>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    __m256i luma[2][4];
    __m256i chroma[4];
#pragma GCC unroll 4
    for (int i = 0; i < 4; ++i) {
      const std::int32_t offset = (x + 8 * i) * Pixel::kBytes;
      const __m256i upper = LoadEightPixels<Pixel>(rows.source[0] + offset);
      const __m256i lower = LoadEightPixels<Pixel>(rows.source[1] + offset);
      luma[0][i] = LumaOfEight(upper);
      luma[1][i] = LumaOfEight(lower);
      chroma[i] = ChromaOfFour(_mm256_add_epi16(AddColumns(upper), AddColumns(lower)));
    }
    for (int row = 0; row < 2; ++row) {
      Store32<kStream>(rows.luma[row] + x,
                       PackLuma(luma[row][0], luma[row][1], luma[row][2], luma[row][3]));
    }
    // Bytes by dwords: U0 U1 V0 V1 of each register in the low lane, U2 U3 V2 V3 in the high one.
    const __m256i packed = _mm256_packs_epi16(_mm256_packs_epi32(chroma[0], chroma[1]),
                                              _mm256_packs_epi32(chroma[2], chroma[3]));
    const __m256i inOrder =
        _mm256_permutevar8x32_epi32(packed, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
    const __m256i byPlane = _mm256_permute4x64_epi64(
        _mm256_shuffle_epi8(
            inOrder, _mm256_setr_epi8(0, 1, 4, 5, 8, 9, 12, 13, 2, 3, 6, 7, 10, 11, 14, 15,  //
                                      0, 1, 4, 5, 8, 9, 12, 13, 2, 3, 6, 7, 10, 11, 14, 15)),
        _MM_SHUFFLE(3, 1, 2, 0));
    const __m256i biased = _mm256_xor_si256(byPlane, _mm256_set1_epi8(-128));
    Store16<kStream>(rows.u + x / 2, _mm256_castsi256_si128(biased));
    Store16<kStream>(rows.v + x / 2, _mm256_extracti128_si256(biased, 1));
  }
};

template <class Pixel>
ZOR_ALWAYS_INLINE std::int32_t ConvertRows(const RgbToYuv420Pair& rows, std::int32_t columns,
                                           bool stream) {
  return ForEachBlock<BlockCover::kOverlap>(columns, stream, Block<Pixel>{rows},
                                            AskForPair<2 * Pixel::kBytes, 2>{rows.ahead});
}

}  // namespace

std::int32_t Rgb32ToYuv420RowsAvx2(const RgbToYuv420Pair& rows, std::int32_t columns,
                                   bool stream) noexcept {
  return ConvertRows<Rgb32>(rows, columns, stream);
}

std::int32_t Rgb24ToYuv420RowsAvx2(const RgbToYuv420Pair& rows, std::int32_t columns,
                                   bool stream) noexcept {
  return ConvertRows<Rgb24>(rows, columns, stream);
}

}  // namespace zor
