// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/rgb_packing.h"

#include "convert/wrappers.h"

namespace zor {
namespace {

/// One form serves every capability word.
std::uint32_t Pack(RgbPackingKernel* kernel, const std::uint8_t* source, std::int32_t sourceStride,
                   std::uint8_t* target, std::int32_t targetStride, std::int32_t width,
                   std::int32_t height, std::uint32_t orientation) noexcept {
  if (source == nullptr || target == nullptr) return 0;
  if (width < 1 || height < 1) return 1;
  kernel(target, targetStride, source, sourceStride, width, orientation == 0 ? -height : height);
  return 1;
}

}  // namespace

std::uint32_t PackRgb24ToRgb32(const std::uint8_t* source, std::int32_t sourceStride,
                               std::uint8_t* target, std::int32_t targetStride, std::int32_t width,
                               std::int32_t height, std::uint32_t,
                               std::uint32_t orientation) noexcept {
  return Pack(ConvertRgb24ToRgb32, source, sourceStride, target, targetStride, width, height,
              orientation);
}

std::uint32_t PackRgb32ToRgb24(const std::uint8_t* source, std::int32_t sourceStride,
                               std::uint8_t* target, std::int32_t targetStride, std::int32_t width,
                               std::int32_t height, std::uint32_t,
                               std::uint32_t orientation) noexcept {
  return Pack(ConvertRgb32ToRgb24, source, sourceStride, target, targetStride, width, height,
              orientation);
}

}  // namespace zor
