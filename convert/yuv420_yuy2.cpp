// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/form_choice.h"
#include "convert/wrappers.h"
#include "convert/yuv420_to_yuy2.h"
#include "convert/yuy2_to_yuv420.h"

namespace zor {
namespace {

constexpr FormChoice<Yuv420ToYuy2Kernel> kToYuy2 = {ConvertYuv420ToYuy2Sse2, ConvertYuv420ToYuy2Mmx,
                                                    ConvertYuv420ToYuy2Plain};
constexpr FormChoice<Yuy2ToYuv420Kernel> kToYuv420 = {
    ConvertYuy2ToYuv420Sse2, ConvertYuy2ToYuv420Mmx, ConvertYuy2ToYuv420Plain};

}  // namespace

std::uint32_t ConvertYuv420ToYuy2(const std::uint8_t* source, std::int32_t sourceStride,
                                  std::uint8_t* target, std::int32_t targetStride,
                                  std::int32_t width, std::int32_t height,
                                  std::uint32_t features) noexcept {
  if (source == nullptr || target == nullptr) return 0;
  if (width < 1 || height < 1) return 1;
  const auto planes = ChromaPlanes<const std::uint8_t>::ByHalves(source, sourceStride, height);
  kToYuy2.For(features)(target, targetStride, source, planes.u, planes.v, sourceStride,
                        planes.stride, width, height);
  return 1;
}

std::uint32_t ConvertYuy2ToYuv420(const std::uint8_t* source, std::int32_t sourceStride,
                                  std::uint8_t* target, std::int32_t targetStride,
                                  std::int32_t width, std::int32_t height,
                                  std::uint32_t features) noexcept {
  if (source == nullptr || target == nullptr) return 0;
  if (width < 1 || height < 1) return 1;
  const auto planes = ChromaPlanes<std::uint8_t>::ByHalves(target, targetStride, height);
  kToYuv420.For(features)(target, planes.u, planes.v, targetStride, planes.stride, source,
                          sourceStride, width, height);
  return 1;
}

}  // namespace zor
