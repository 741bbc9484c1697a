// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/rgb_lanes_sse2.h"
#include "convert/rows_by_level.h"
#include "convert/yuv_colour_sse2.h"
#include "convert/yuy2_rgb.h"
#include "convert/yuy2_rgb_rows.h"
#include "convert/yuy2_rgb_walk.h"

namespace zor {
namespace {

/// The colours of eight columns.
ZOR_ALWAYS_INLINE ColourWords ConvertEight(const std::uint8_t* source) {
  const __m128i yuy2 = _mm_loadu_si128(reinterpret_cast<const __m128i*>(source));
  // U0 V0 U1 V1 ..., then each for both pixels of its pair.
  const __m128i chroma = _mm_sub_epi16(_mm_srli_epi16(yuy2, 8), _mm_set1_epi16(128));
  const __m128i u = _mm_shufflehi_epi16(_mm_shufflelo_epi16(chroma, _MM_SHUFFLE(2, 2, 0, 0)),
                                        _MM_SHUFFLE(2, 2, 0, 0));
  const __m128i v = _mm_shufflehi_epi16(_mm_shufflelo_epi16(chroma, _MM_SHUFFLE(3, 3, 1, 1)),
                                        _MM_SHUFFLE(3, 3, 1, 1));
  return ColourOf(_mm_and_si128(yuy2, _mm_set1_epi16(0x00FF)), ChromaTerms(u, v));
}

template <class Pixel>
struct Block {
  static constexpr std::int32_t kColumns = 16;
  std::uint8_t* target;
  const std::uint8_t* source;

  template <bool>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const ColourWords low = ConvertEight(source + 2 * x);
    const ColourWords high = ConvertEight(source + 2 * x + 16);
    StoreSixteenPixels<Pixel>(target + x * Pixel::kBytes, _mm_packus_epi16(low.blue, high.blue),
                              _mm_packus_epi16(low.green, high.green),
                              _mm_packus_epi16(low.red, high.red));
  }
};

template <class Pixel>
std::int32_t ConvertRow(std::uint8_t* target, const std::uint8_t* source, std::int32_t columns,
                        const RowRoute& route) noexcept {
  return ForEachBlock<BlockCover::kWhole>(columns, false, Block<Pixel>{target, source},
                                          AskForRowAbove<2>{source, route.climb});
}

constexpr RowsByLevel<PackedRow> kRows32 = {
    {ConvertRow<Rgb32>, Yuy2ToRgb32RowAvx2, Yuy2ToRgb32RowAvx512}};
constexpr RowsByLevel<PackedRow> kRows24 = {
    {ConvertRow<Rgb24>, Yuy2ToRgb24RowAvx2, Yuy2ToRgb24RowAvx512}};

template <class Pixel>
void Convert(const RowsByLevel<PackedRow>& rows, const PackedPicture<>& picture) noexcept {
  const VectorLevel widest = InnerVectorLevel();
  const RowRoute route =
      picture.Route(std::int64_t{picture.width} * Pixel::kBytes, (picture.width & 1) == 0);
  WalkYuy2ToRgb<Pixel>(picture,
                       [&](std::uint8_t* target, const std::uint8_t* source, std::int32_t columns) {
                         return rows.Convert(widest, target, source, columns & ~15, route);
                       });
  if (route.stream) _mm_sfence();
}

}  // namespace

void ConvertYuy2ToRgb32Sse2(std::uint8_t* target, std::int32_t targetStride,
                            const std::uint8_t* source, std::int32_t sourceStride,
                            std::int32_t width, std::int32_t height) noexcept {
  Convert<Rgb32>(kRows32, {target, targetStride, source, sourceStride, width, height});
}

void ConvertYuy2ToRgb24Sse2(std::uint8_t* target, std::int32_t targetStride,
                            const std::uint8_t* source, std::int32_t sourceStride,
                            std::int32_t width, std::int32_t height) noexcept {
  Convert<Rgb24>(kRows24, {target, targetStride, source, sourceStride, width, height});
}

}  // namespace zor
