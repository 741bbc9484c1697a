// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/rgb_lanes_sse2.h"
#include "convert/rgb_to_yuv420.h"
#include "convert/rgb_to_yuv420_rows.h"
#include "convert/rows_by_level.h"
#include "convert/streaming.h"

namespace zor {
namespace {

/// What four columns of a row pair give: dwords of luma less 16, and dwords U0, U1, V0, V1.
struct FourColumns {
  __m128i luma[2];
  __m128i chroma;
};

template <class Pixel>
ZOR_ALWAYS_INLINE FourColumns ConvertFour(const RgbToYuv420Pair& rows, std::int32_t x) {
  const __m128i zero = _mm_setzero_si128();
  FourColumns four;
  __m128i sum01 = zero;
  __m128i sum23 = zero;
  for (int row = 0; row < 2; ++row) {
    const __m128i pixels = LoadFourPixels<Pixel>(rows.source[row] + x * Pixel::kBytes);
    const __m128i p01 = _mm_unpacklo_epi8(pixels, zero);
    const __m128i p23 = _mm_unpackhi_epi8(pixels, zero);
    four.luma[row] = LumaOfFour(p01, p23);
    sum01 = _mm_add_epi16(sum01, p01);
    sum23 = _mm_add_epi16(sum23, p23);
  }
  const __m128i groups =
      _mm_add_epi16(_mm_unpacklo_epi64(sum01, sum23), _mm_unpackhi_epi64(sum01, sum23));
  four.chroma = _mm_srai_epi32(ChromaOfTwo(groups), kChromaShiftOfFour);
  return four;
}

template <class Pixel>
struct Block {
  static constexpr std::int32_t kColumns = 16;
  RgbToYuv420Pair rows;

  template <bool>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    FourColumns part[4];
#pragma GCC unroll 4
    for (int i = 0; i < 4; ++i) part[i] = ConvertFour<Pixel>(rows, x + 4 * i);
    for (int row = 0; row < 2; ++row) {
      const __m128i luma = _mm_packus_epi16(_mm_packs_epi32(part[0].luma[row], part[1].luma[row]),
                                            _mm_packs_epi32(part[2].luma[row], part[3].luma[row]));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(rows.luma[row] + x),
                       _mm_add_epi8(luma, _mm_set1_epi8(16)));
    }
    const __m128i u = _mm_packs_epi32(_mm_unpacklo_epi64(part[0].chroma, part[1].chroma),
                                      _mm_unpacklo_epi64(part[2].chroma, part[3].chroma));
    const __m128i v = _mm_packs_epi32(_mm_unpackhi_epi64(part[0].chroma, part[1].chroma),
                                      _mm_unpackhi_epi64(part[2].chroma, part[3].chroma));
    // Signed bytes of -112 to 111: adding 128 is turning the top bit.
    const __m128i chroma = _mm_xor_si128(_mm_packs_epi16(u, v), _mm_set1_epi8(-128));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(rows.u + x / 2), chroma);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(rows.v + x / 2), _mm_srli_si128(chroma, 8));
  }
};

template <class Pixel>
std::int32_t ConvertRows(const RgbToYuv420Pair& rows, std::int32_t columns, bool) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, false, Block<Pixel>{rows});
}

constexpr RowsByLevel<RgbToYuv420Rows> kRows32 = {
    {ConvertRows<Rgb32>, Rgb32ToYuv420RowsAvx2, Rgb32ToYuv420RowsAvx512}};
constexpr RowsByLevel<RgbToYuv420Rows> kRows24 = {
    {ConvertRows<Rgb24>, Rgb24ToYuv420RowsAvx2, Rgb24ToYuv420RowsAvx512}};

template <class Pixel>
void Convert(const RowsByLevel<RgbToYuv420Rows>& byLevel,
             const ToPlanes& picture) noexcept {
  const VectorLevel widest = InnerVectorLevel();
  const bool stream = PlanesArePastCaches(picture.luma, picture.u, picture.v, picture.lumaStride,
                                          picture.chromaStride, picture.width, picture.height);
  WalkRgbToYuv420<Pixel>(picture,
                         [&](const RgbToYuv420Pair& rows, std::int32_t columns, std::int32_t) {
                           return byLevel.Convert(widest, rows, columns, stream);
                         });
  if (stream) _mm_sfence();
}

}  // namespace

void ConvertRgb32ToYuv420Sse2(std::uint8_t* luma, std::uint8_t* u, std::uint8_t* v,
                              std::int32_t lumaStride, std::int32_t chromaStride,
                              const std::uint8_t* source, std::int32_t sourceStride,
                              std::int32_t width, std::int32_t height) noexcept {
  Convert<Rgb32>(kRows32,
                 {luma, u, v, lumaStride, chromaStride, source, sourceStride, width, height});
}

void ConvertRgb24ToYuv420Sse2(std::uint8_t* luma, std::uint8_t* u, std::uint8_t* v,
                              std::int32_t lumaStride, std::int32_t chromaStride,
                              const std::uint8_t* source, std::int32_t sourceStride,
                              std::int32_t width, std::int32_t height) noexcept {
  Convert<Rgb24>(kRows24,
                 {luma, u, v, lumaStride, chromaStride, source, sourceStride, width, height});
}

}  // namespace zor
