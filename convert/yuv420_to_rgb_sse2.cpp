// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/row_filter_sse2.h"
#include "convert/rows_by_level.h"
#include "convert/streaming.h"
#include "convert/yuv420_to_rgb.h"
#include "convert/yuv420_to_rgb_rows.h"
#include "convert/yuv_pixels_sse2.h"

namespace zor {
namespace {

/// Sixteen columns of both rows, with the filter.
struct FilteredBlock {
  static constexpr std::int32_t kColumns = 16;
  const Yuv420ToRgbPair& rows;

  template <bool>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const ChromaOfSixteen chroma(Smooth<LoadLowEight>(rows.u, x / 2),
                                 Smooth<LoadLowEight>(rows.v, x / 2));
    for (int row = 0; row < 2; ++row) {
      StoreColours<Rgb32>(rows.target[row] + 4 * x, Smooth<LoadSixteen>(rows.luma[row], x), chroma);
    }
  }
};

/// Sixteen columns of one row, without it.
struct RawBlock {
  static constexpr std::int32_t kColumns = 16;
  std::uint8_t* target;
  const std::uint8_t* luma;
  const std::uint8_t* u;
  const std::uint8_t* v;

  template <bool>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    StoreColours<Rgb24>(target + 3 * x, LoadSixteen(luma + x),
                        ChromaOfSixteen(LoadLowEight(u + x / 2), LoadLowEight(v + x / 2)));
  }
};

std::int32_t ConvertPair(const Yuv420ToRgbPair& rows, std::int32_t columns, bool) noexcept {
  return ForEachBlock<BlockCover::kWhole>(columns, false, FilteredBlock{rows}, rows.ahead);
}

std::int32_t ConvertRow(std::uint8_t* target, const std::uint8_t* luma, const std::uint8_t* u,
                        const std::uint8_t* v, std::int32_t columns, bool,
                        std::ptrdiff_t climb) noexcept {
  return ForEachBlock<BlockCover::kWhole>(columns, false, RawBlock{target, luma, u, v},
                                          AskForRowAbove<3>{target, climb});
}

constexpr RowsByLevel<Yuv420ToRgbRows> kPairs32 = {
    {ConvertPair, Yuv420ToRgb32RowsAvx2, Yuv420ToRgb32RowsAvx512}};
constexpr RowsByLevel<Yuv420ToRgbRow> kRows24 = {
    {ConvertRow, Yuv420ToRgb24RowAvx2, Yuv420ToRgb24RowAvx512}};

template <class Pixel>
bool WritesPastCaches(const FromPlanes& picture) {
  return (picture.width & 1) == 0 &&
         RowsArePastCaches(picture.target, picture.targetStride,
                           std::int64_t{picture.width} * Pixel::kBytes, picture.height);
}

/// The tail of the unfiltered form: a pair of columns with blue and red exchanged.
ZOR_ALWAYS_INLINE void StoreExchanged(std::uint8_t* target, const std::uint8_t* luma,
                                      const TableChroma& chroma) {
  for (int i = 0; i < 2; ++i) {
    std::uint8_t pixel[3];
    chroma.Store<Rgb24>(pixel, luma[i]);
    target[3 * i] = pixel[2];
    target[3 * i + 1] = pixel[1];
    target[3 * i + 2] = pixel[0];
  }
}

}  // namespace

void ConvertYuv420ToRgb32Sse2(std::uint8_t* target, std::int32_t targetStride,
                              const std::uint8_t* luma, const std::uint8_t* u,
                              const std::uint8_t* v, std::int32_t lumaStride,
                              std::int32_t chromaStride, std::int32_t width,
                              std::int32_t height) noexcept {
  const FromPlanes picture = {target,     targetStride, luma,  u,     v,
                              lumaStride, chromaStride, width, height};
  const VectorLevel widest = InnerVectorLevel();
  const bool stream = WritesPastCaches<Rgb32>(picture);
  WalkYuv420ToRgb<Rgb32>(picture, [&](const Yuv420ToRgbPair& rows, std::int32_t columns) {
    for (std::int32_t x = kPairs32.Convert(widest, rows, columns & ~15, stream); x < columns;
         x += 2) {
      ConvertColumns<Rgb32>(rows, x);
    }
  });
  if (stream) _mm_sfence();
}

void ConvertYuv420ToRgb24Sse2(std::uint8_t* target, std::int32_t targetStride,
                              const std::uint8_t* luma, const std::uint8_t* u,
                              const std::uint8_t* v, std::int32_t lumaStride,
                              std::int32_t chromaStride, std::int32_t width,
                              std::int32_t height) noexcept {
  const FromPlanes picture = {target,     targetStride, luma,  u,     v,
                              lumaStride, chromaStride, width, height};
  const WalkedRows<std::uint8_t> walked(target, targetStride, height);
  const VectorLevel widest = InnerVectorLevel();
  const bool stream = WritesPastCaches<Rgb24>(picture);
  const std::ptrdiff_t climb = height < 0 && !stream ? walked.stride : 0;
  const std::ptrdiff_t drift = width & 1;  // each next row starts one pixel further left
  const std::int32_t columns = width & ~1;
  if (columns <= 0) return;
  for (std::ptrdiff_t y = 0; y < walked.height; ++y) {
    std::uint8_t* out = walked.first + y * (walked.stride - 3 * drift);
    const std::uint8_t* in = luma + y * (lumaStride - drift);
    const std::uint8_t* rowU = u + y / 2 * chromaStride;
    const std::uint8_t* rowV = v + y / 2 * chromaStride;
    std::int32_t x = kRows24.Convert(widest, out, in, rowU, rowV, columns & ~15, stream, climb);
    const TableChroma first(rowU[0], rowV[0]);
    for (; x < columns; x += 2) StoreExchanged(out + 3 * x, in + x, first);
  }
  if (stream) _mm_sfence();
}

}  // namespace zor
