// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/packed_rows.h"
#include "convert/pixel_formats.h"
#include "convert/rgb_to_yuy2.h"
#include "convert/rgb_to_yuy2_statement.h"

namespace zor {
namespace {

template <class Pixel>
void Convert(const PackedPicture<>& picture) noexcept {
  const std::int32_t odd = picture.width & 1;
  const std::int32_t columns = picture.width - odd;
  WalkPackedRows(picture, {odd * 2, odd * Pixel::kBytes},
                 [columns](std::uint8_t* target, const std::uint8_t* source) {
                   for (std::int32_t x = 0; x < columns; x += 2) {
                     const std::uint8_t* pixel = source + x * Pixel::kBytes;
                     RgbToYuy2Pair(target + 2 * x, pixel, pixel + Pixel::kBytes);
                   }
                 });
}

}  // namespace

void ConvertRgb32ToYuy2Plain(std::uint8_t* target, std::int32_t targetStride, std::uint8_t* source,
                             std::int32_t sourceStride, std::int32_t width,
                             std::int32_t height) noexcept {
  Convert<Rgb32>({target, targetStride, source, sourceStride, width, height});
}

void ConvertRgb24ToYuy2Plain(std::uint8_t* target, std::int32_t targetStride, std::uint8_t* source,
                             std::int32_t sourceStride, std::int32_t width,
                             std::int32_t height) noexcept {
  Convert<Rgb24>({target, targetStride, source, sourceStride, width, height});
}

}  // namespace zor
