// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/rgb_to_yuv420.h"

#include "convert/form_choice.h"
#include "convert/wrappers.h"

namespace zor {
namespace {

constexpr RgbFormChoice<RgbToYuv420Kernel> kForms = {
    {ConvertRgb24ToYuv420Sse2, ConvertRgb24ToYuv420Mmx, ConvertRgb24ToYuv420Plain},
    {ConvertRgb32ToYuv420Sse2, ConvertRgb32ToYuv420Mmx, ConvertRgb32ToYuv420Plain}};

}  // namespace

std::uint32_t ConvertRgbToYuv420(const std::uint8_t* source, std::int32_t sourceStride,
                                 std::uint8_t* target, std::int32_t targetStride,
                                 std::int32_t width, std::int32_t height, std::uint32_t features,
                                 std::int32_t bitDepth, std::uint32_t orientation) noexcept {
  if (source == nullptr || target == nullptr) return 0;
  RgbToYuv420Kernel* const kernel = kForms.For(bitDepth, features);
  if (kernel == nullptr || width < 1 || height < 1) return 1;
  const auto planes = ChromaPlanes<std::uint8_t>::ByQuarter(target, targetStride, height);
  kernel(target, planes.u, planes.v, targetStride, planes.stride, source, sourceStride, width,
         orientation == 0 ? -height : height);
  return 1;
}

}  // namespace zor
