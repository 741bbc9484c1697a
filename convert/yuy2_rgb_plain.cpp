// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/pixel_formats.h"
#include "convert/yuy2_rgb.h"
#include "convert/yuy2_rgb_walk.h"

namespace zor {
namespace {

std::int32_t NoBlocks(std::uint8_t*, const std::uint8_t*, std::int32_t) noexcept {
  return 0;
}

}  // namespace

void ConvertYuy2ToRgb32Plain(std::uint8_t* target, std::int32_t targetStride,
                             const std::uint8_t* source, std::int32_t sourceStride,
                             std::int32_t width, std::int32_t height) noexcept {
  WalkYuy2ToRgb<Rgb32>({target, targetStride, source, sourceStride, width, height}, NoBlocks);
}

void ConvertYuy2ToRgb24Plain(std::uint8_t* target, std::int32_t targetStride,
                             const std::uint8_t* source, std::int32_t sourceStride,
                             std::int32_t width, std::int32_t height) noexcept {
  WalkYuy2ToRgb<Rgb24>({target, targetStride, source, sourceStride, width, height}, NoBlocks);
}

}  // namespace zor
