// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/rgb_groups_sse2.h"
#include "convert/rgb_to_yuv420.h"
#include "convert/rgb_to_yuv420_rows.h"
#include "convert/rows_by_level.h"
#include "convert/streaming.h"

namespace zor {
namespace {

template <class Pixel>
struct Block {
  static constexpr std::int32_t kColumns = 16;
  RgbToYuv420Pair rows;

  template <bool>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const SixteenGroupColumns columns([&](int row, int i) __attribute__((always_inline)) {
      return LoadFourPixels<Pixel>(rows.source[row] + (x + 4 * i) * Pixel::kBytes);
    });
    columns.Store(rows.luma[0] + x, rows.luma[1] + x, rows.u + x / 2, rows.v + x / 2);
  }
};

template <class Pixel>
std::int32_t ConvertRows(const RgbToYuv420Pair& rows, std::int32_t columns, bool) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, false, Block<Pixel>{rows},
                                            AskForPair<2 * Pixel::kBytes, 2>{rows.ahead});
}

constexpr RowsByLevel<RgbToYuv420Rows> kRows32 = {
    {ConvertRows<Rgb32>, Rgb32ToYuv420RowsAvx2, Rgb32ToYuv420RowsAvx512}};
constexpr RowsByLevel<RgbToYuv420Rows> kRows24 = {
    {ConvertRows<Rgb24>, Rgb24ToYuv420RowsAvx2, Rgb24ToYuv420RowsAvx512}};

template <class Pixel>
void Convert(const RowsByLevel<RgbToYuv420Rows>& byLevel, const ToPlanes& picture) noexcept {
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
