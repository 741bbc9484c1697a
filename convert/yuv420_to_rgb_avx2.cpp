// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/rgb_lanes_avx2.h"
#include "convert/row_filter_avx2.h"
#include "convert/yuv420_to_rgb_rows.h"
#include "convert/yuv_colour_avx2.h"

namespace zor {
namespace {

/// The chroma of 32 columns: U and V of sixteen pairs in turn, as signed bytes.
ZOR_ALWAYS_INLINE __m256i InTurn(__m128i u, __m128i v) {
  return _mm256_xor_si256(_mm256_set_m128i(_mm_unpackhi_epi8(u, v), _mm_unpacklo_epi8(u, v)),
                          _mm256_set1_epi8(-128));
}

/// One colour of 32 columns out of the words of the even and of the odd ones.
ZOR_ALWAYS_INLINE __m256i PackByParity(__m256i even, __m256i odd) {
  // Lanes of 0 2 .. 14, 1 3 .. 15 -> 0 1 .. 15
  return _mm256_shuffle_epi8(
      _mm256_packus_epi16(even, odd),
      _mm256_setr_epi8(0, 8, 1, 9, 2, 10, 3, 11, 4, 12, 5, 13, 6, 14, 7, 15,  //
                       0, 8, 1, 9, 2, 10, 3, 11, 4, 12, 5, 13, 6, 14, 7, 15));
}

/// Stores 32 columns; the chroma terms serve both pixels of a pair.
template <class Pixel, bool kStream>
ZOR_ALWAYS_INLINE void StoreColours(std::uint8_t* target, __m256i luma, const ColourWords& terms) {
  const ColourWords even = ColourOf(_mm256_maddubs_epi16(luma, Weights(74, 0)), terms);
  const ColourWords odd = ColourOf(_mm256_maddubs_epi16(luma, Weights(0, 74)), terms);
  const __m256i blue = PackByParity(even.blue, odd.blue);
  const __m256i green = PackByParity(even.green, odd.green);
  const __m256i red = PackByParity(even.red, odd.red);
  const __m256i zero = _mm256_setzero_si256();
  const __m256i blueGreenLow = _mm256_unpacklo_epi8(blue, green);   // columns 0-7 | 16-23
  const __m256i blueGreenHigh = _mm256_unpackhi_epi8(blue, green);  // 8-15 | 24-31
  const __m256i redLow = _mm256_unpacklo_epi8(red, zero);
  const __m256i redHigh = _mm256_unpackhi_epi8(red, zero);
  const __m256i a = _mm256_unpacklo_epi16(blueGreenLow, redLow);    // 0-3 | 16-19
  const __m256i b = _mm256_unpackhi_epi16(blueGreenLow, redLow);    // 4-7 | 20-23
  const __m256i c = _mm256_unpacklo_epi16(blueGreenHigh, redHigh);  // 8-11 | 24-27
  const __m256i d = _mm256_unpackhi_epi16(blueGreenHigh, redHigh);  // 12-15 | 28-31
  const __m256i pixels[4] = {
      _mm256_permute2x128_si256(a, b, 0x20), _mm256_permute2x128_si256(c, d, 0x20),
      _mm256_permute2x128_si256(a, b, 0x31), _mm256_permute2x128_si256(c, d, 0x31)};
  Store32Pixels<Pixel, kStream>(target, pixels);
}

template <bool kInner>
struct FilteredBlock {
  static constexpr std::int32_t kColumns = 32;
  const Yuv420ToRgbPair& rows;

  template <bool kStream>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const ColourWords terms =
        ChromaTerms(InTurn(SmoothSixteen(rows.u, x / 2), SmoothSixteen(rows.v, x / 2)));
    const PairOf32 luma = SmoothPair<kInner>(rows.luma, x);
    StoreColours<Rgb32, kStream>(rows.target[0] + 4 * x, luma.row[0], terms);
    StoreColours<Rgb32, kStream>(rows.target[1] + 4 * x, luma.row[1], terms);
  }
};

struct RawBlock {
  static constexpr std::int32_t kColumns = 32;
  std::uint8_t* target;
  const std::uint8_t* luma;
  const std::uint8_t* u;
  const std::uint8_t* v;

  template <bool kStream>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const __m128i chromaU = _mm_loadu_si128(reinterpret_cast<const __m128i*>(u + x / 2));
    const __m128i chromaV = _mm_loadu_si128(reinterpret_cast<const __m128i*>(v + x / 2));
    StoreColours<Rgb24, kStream>(target + 3 * x, Load32(luma + x),
                                 ChromaTerms(InTurn(chromaU, chromaV)));
  }
};

}  // namespace

std::int32_t Yuv420ToRgb32RowsAvx2(const Yuv420ToRgbPair& rows, std::int32_t columns,
                                   bool stream) noexcept {
  return ForEachBlockOfPair<FilteredBlock>(rows, columns, stream);
}

std::int32_t Yuv420ToRgb24RowAvx2(std::uint8_t* target, const std::uint8_t* luma,
                                  const std::uint8_t* u, const std::uint8_t* v,
                                  std::int32_t columns, bool stream,
                                  std::ptrdiff_t climb) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, stream, RawBlock{target, luma, u, v},
                                            AskForRowAbove<3>{target, climb});
}

}  // namespace zor
