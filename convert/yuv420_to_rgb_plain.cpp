// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/pixel_formats.h"
#include "convert/yuv420_to_rgb.h"
#include "convert/yuv420_to_rgb_walk.h"

namespace zor {
namespace {

template <class Pixel>
void Convert(const FromPlanes& picture) noexcept {
  WalkYuv420ToRgb<Pixel>(picture, [](const Yuv420ToRgbPair& rows, std::int32_t columns) {
    for (std::int32_t x = 0; x < columns; x += 2) ConvertColumns<Pixel>(rows, x);
  });
}

}  // namespace

void ConvertYuv420ToRgb32Plain(std::uint8_t* target, std::int32_t targetStride,
                               const std::uint8_t* luma, const std::uint8_t* u,
                               const std::uint8_t* v, std::int32_t lumaStride,
                               std::int32_t chromaStride, std::int32_t width,
                               std::int32_t height) noexcept {
  Convert<Rgb32>({target, targetStride, luma, u, v, lumaStride, chromaStride, width, height});
}

void ConvertYuv420ToRgb24Plain(std::uint8_t* target, std::int32_t targetStride,
                               const std::uint8_t* luma, const std::uint8_t* u,
                               const std::uint8_t* v, std::int32_t lumaStride,
                               std::int32_t chromaStride, std::int32_t width,
                               std::int32_t height) noexcept {
  Convert<Rgb24>({target, targetStride, luma, u, v, lumaStride, chromaStride, width, height});
}

}  // namespace zor
