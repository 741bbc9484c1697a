// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/pixel_formats.h"
#include "convert/rgb_to_yuv420.h"
#include "convert/rgb_to_yuv420_walk.h"

namespace zor {
namespace {

template <class Pixel>
void Convert(const ToPlanes& picture) noexcept {
  WalkRgbToYuv420<Pixel>(
      picture, [](const RgbToYuv420Pair&, std::int32_t, std::int32_t) { return std::int32_t{0}; });
}

}  // namespace

void ConvertRgb32ToYuv420Plain(std::uint8_t* luma, std::uint8_t* u, std::uint8_t* v,
                               std::int32_t lumaStride, std::int32_t chromaStride,
                               const std::uint8_t* source, std::int32_t sourceStride,
                               std::int32_t width, std::int32_t height) noexcept {
  Convert<Rgb32>({luma, u, v, lumaStride, chromaStride, source, sourceStride, width, height});
}

void ConvertRgb24ToYuv420Plain(std::uint8_t* luma, std::uint8_t* u, std::uint8_t* v,
                               std::int32_t lumaStride, std::int32_t chromaStride,
                               const std::uint8_t* source, std::int32_t sourceStride,
                               std::int32_t width, std::int32_t height) noexcept {
  Convert<Rgb24>({luma, u, v, lumaStride, chromaStride, source, sourceStride, width, height});
}

}  // namespace zor
