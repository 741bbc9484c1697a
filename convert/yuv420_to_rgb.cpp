// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/yuv420_to_rgb.h"

#include "convert/form_choice.h"
#include "convert/wrappers.h"

namespace zor {
namespace {

constexpr RgbFormChoice<Yuv420ToRgbKernel> kForms = {
    {ConvertYuv420ToRgb24Sse2, ConvertYuv420ToRgb24Plain, ConvertYuv420ToRgb24Plain},
    {ConvertYuv420ToRgb32Sse2, ConvertYuv420ToRgb32Mmx, ConvertYuv420ToRgb32Plain}};

}  // namespace

std::uint32_t ConvertYuv420ToRgb(const std::uint8_t* source, std::int32_t sourceStride,
                                 std::uint8_t* target, std::int32_t targetStride,
                                 std::int32_t width, std::int32_t height, std::uint32_t features,
                                 std::int32_t bitDepth, std::uint32_t orientation) noexcept {
  if (source == nullptr || target == nullptr) return 0;
  Yuv420ToRgbKernel* form = kForms.For(bitDepth, features);
  if (form == nullptr || width < 1 || height < 1) return 1;
  const auto planes = ChromaPlanes<const std::uint8_t>::ByHalves(source, sourceStride, height);
  form(target, targetStride, source, planes.u, planes.v, sourceStride, planes.stride, width,
       orientation != 0 ? -height : height);
  return 1;
}

}  // namespace zor
