// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/form_choice.h"
#include "convert/rgb_to_yuy2.h"
#include "convert/wrappers.h"
#include "convert/yuy2_rgb.h"

namespace zor {
namespace {

constexpr RgbFormChoice<RgbToYuy2Kernel> kFromRgb = {
    {ConvertRgb24ToYuy2Sse2, ConvertRgb24ToYuy2Plain, ConvertRgb24ToYuy2Plain},
    {ConvertRgb32ToYuy2Sse2, ConvertRgb32ToYuy2Plain, ConvertRgb32ToYuy2Plain}};
constexpr RgbFormChoice<Yuy2ToRgbKernel> kToRgb = {
    {ConvertYuy2ToRgb24Sse2, ConvertYuy2ToRgb24Mmx, ConvertYuy2ToRgb24Plain},
    {ConvertYuy2ToRgb32Sse2, ConvertYuy2ToRgb32Mmx, ConvertYuy2ToRgb32Plain}};

}  // namespace

std::uint32_t ConvertRgbToYuy2(std::uint8_t* source, std::int32_t sourceStride,
                               std::uint8_t* target, std::int32_t targetStride, std::int32_t width,
                               std::int32_t height, std::uint32_t features, std::int32_t bitDepth,
                               std::uint32_t orientation) noexcept {
  if (source == nullptr || target == nullptr) return 0;
  RgbToYuy2Kernel* const kernel = kFromRgb.For(bitDepth, features);
  if (kernel == nullptr || width < 1 || height < 1) return 1;
  kernel(target, targetStride, source, sourceStride, width, orientation == 0 ? -height : height);
  return 1;
}

std::uint32_t ConvertYuy2ToRgb(const std::uint8_t* source, std::int32_t sourceStride,
                               std::uint8_t* target, std::int32_t targetStride, std::int32_t width,
                               std::int32_t height, std::uint32_t features, std::int32_t bitDepth,
                               std::uint32_t orientation) noexcept {
  if (source == nullptr || target == nullptr) return 0;
  Yuy2ToRgbKernel* const kernel = kToRgb.For(bitDepth, features);
  if (kernel == nullptr || width < 1 || height < 1) return 1;
  kernel(target, targetStride, source, sourceStride, width, orientation == 0 ? -height : height);
  return 1;
}

}  // namespace zor
