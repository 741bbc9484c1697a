// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <emmintrin.h>

#include "convert/pixel_formats.h"
#include "convert/rgb_packing.h"
#include "convert/rgb_packing_rows.h"
#include "convert/rows_by_level.h"

namespace zor {
namespace {

// Blocks of 32 bytes keep pace with memory; wider ones lose by their unaligned steps.
constexpr RowsByLevel<PackedRow> kSpread = {
    {Rgb24ToRgb32RowSse2, Rgb24ToRgb32RowAvx2, Rgb24ToRgb32RowAvx2}};
constexpr RowsByLevel<PackedRow> kSqueeze = {
    {Rgb32ToRgb24RowSse2, Rgb32ToRgb24RowAvx2, Rgb32ToRgb24RowAvx2}};

template <class Target, class Source>
void Convert(const RowsByLevel<PackedRow>& rows, const PackedPicture<>& picture) noexcept {
  const VectorLevel widest = InnerVectorLevel();
  const std::int32_t width = picture.width;
  const RowRoute route = picture.Route(std::int64_t{width} * Target::kBytes);
  WalkPackedRows(picture, {}, [&](std::uint8_t* target, const std::uint8_t* source) {
    for (std::int32_t x = rows.Convert(widest, target, source, width, route); x < width; ++x) {
      const std::uint8_t* from = source + x * Source::kBytes;
      std::uint8_t* to = target + x * Target::kBytes;
      for (int i = 0; i < 3; ++i) to[i] = from[i];
      if constexpr (Target::kBytes == 4) to[3] = 0;
    }
  });
  if (route.stream) _mm_sfence();
}

}  // namespace

void ConvertRgb24ToRgb32(std::uint8_t* target, std::int32_t targetStride,
                         const std::uint8_t* source, std::int32_t sourceStride, std::int32_t width,
                         std::int32_t height) noexcept {
  Convert<Rgb32, Rgb24>(kSpread, {target, targetStride, source, sourceStride, width, height});
}

void ConvertRgb32ToRgb24(std::uint8_t* target, std::int32_t targetStride,
                         const std::uint8_t* source, std::int32_t sourceStride, std::int32_t width,
                         std::int32_t height) noexcept {
  Convert<Rgb24, Rgb32>(kSqueeze, {target, targetStride, source, sourceStride, width, height});
}

}  // namespace zor
