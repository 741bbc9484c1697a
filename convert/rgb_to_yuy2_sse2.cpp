// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/rgb_lanes_sse2.h"
#include "convert/rgb_to_yuy2.h"
#include "convert/rgb_to_yuy2_rows.h"
#include "convert/rgb_to_yuy2_statement.h"
#include "convert/rows_by_level.h"

namespace zor {
namespace {

/// Two pairs of columns in dwords Y0 U0, Y1 V0, Y2 U1, Y3 V1 (low words), before the offsets.
ZOR_ALWAYS_INLINE __m128i ConvertFour(__m128i pixels) {
  const __m128i zero = _mm_setzero_si128();
  const __m128i p01 = _mm_unpacklo_epi8(pixels, zero);
  const __m128i p23 = _mm_unpackhi_epi8(pixels, zero);
  // U0 U1 V0 V1 of the second pixels, in turn U V U V: 16 bits with the sign.
  const __m128i chroma =
      _mm_shuffle_epi32(ChromaOfTwo(_mm_unpackhi_epi64(p01, p23)), _MM_SHUFFLE(3, 1, 2, 0));
  return _mm_or_si128(LumaOfFour(p01, p23), _mm_and_si128(chroma, _mm_set1_epi32(~0xFF)));
}

template <class Pixel>
struct Block {
  static constexpr std::int32_t kColumns = 8;
  std::uint8_t* target;
  const std::uint8_t* source;

  template <bool>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const std::uint8_t* pixels = source + x / 8 * kYuy2GroupBytes;
    const __m128i words =
        _mm_packs_epi32(ConvertFour(LoadFourPixels<Pixel>(pixels)),
                        ConvertFour(LoadFourPixels<Pixel>(pixels + 4 * Pixel::kBytes)));
    const __m128i offsets = _mm_set1_epi16(static_cast<short>(16 | 128 << 8));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(target + 2 * x), _mm_add_epi8(words, offsets));
  }
};

template <class Pixel>
std::int32_t ConvertRow(std::uint8_t* target, const std::uint8_t* source, std::int32_t columns,
                        const RowRoute& route) noexcept {
  return ForEachBlock<BlockCover::kWhole>(columns, false, Block<Pixel>{target, source},
                                          AskForGroupsAbove{source, route.climb});
}

constexpr RowsByLevel<PackedRow> kRows32 = {
    {ConvertRow<Rgb32>, Rgb32ToYuy2RowAvx2, Rgb32ToYuy2RowAvx512}};
constexpr RowsByLevel<PackedRow> kRows24 = {
    {ConvertRow<Rgb24>, Rgb24ToYuy2RowAvx2, Rgb24ToYuy2RowAvx512}};

/// Row by row, blocks before the tail: with 3-byte pixels the tail lies in a neighbouring row,
/// which reads the changed bytes if it comes later.
void Convert(const RowsByLevel<PackedRow>& rows,
             const PackedPicture<std::uint8_t>& picture) noexcept {
  const VectorLevel widest = InnerVectorLevel();
  const std::int32_t odd = picture.width & 1;
  const std::int32_t columns = picture.width & ~7;
  const RowRoute route = picture.Route(std::int64_t{picture.width} * 2, odd == 0);
  WalkPackedRows(picture, {odd * 2, odd * 4}, [&](std::uint8_t* target, std::uint8_t* source) {
    rows.Convert(widest, target, source, columns, route);
    for (std::int32_t x = columns; x + 1 < picture.width; x += 2)
      RgbToYuy2PairOfTail(source + 4 * x);
  });
  if (route.stream) _mm_sfence();
}

}  // namespace

void ConvertRgb32ToYuy2Sse2(std::uint8_t* target, std::int32_t targetStride, std::uint8_t* source,
                            std::int32_t sourceStride, std::int32_t width,
                            std::int32_t height) noexcept {
  Convert(kRows32, {target, targetStride, source, sourceStride, width, height});
}

void ConvertRgb24ToYuy2Sse2(std::uint8_t* target, std::int32_t targetStride, std::uint8_t* source,
                            std::int32_t sourceStride, std::int32_t width,
                            std::int32_t height) noexcept {
  Convert(kRows24, {target, targetStride, source, sourceStride, width, height});
}

}  // namespace zor
