// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "surface/engine_table.h"

#include <zorsurface/surface_description.h>

#include "convert/wrappers.h"

namespace zor {
namespace {

/// A wrapper without depth and orientation arguments.
template <auto kWrapper>
std::uint32_t IgnoreOrientation(const std::uint8_t* source, std::int32_t sourceStride,
                                std::uint8_t* target, std::int32_t targetStride, std::int32_t width,
                                std::int32_t height, std::uint32_t features, std::int32_t,
                                std::uint32_t) {
  return kWrapper(source, sourceStride, target, targetStride, width, height, features);
}

/// A wrapper without a depth argument.
template <auto kWrapper>
std::uint32_t IgnoreDepth(const std::uint8_t* source, std::int32_t sourceStride,
                          std::uint8_t* target, std::int32_t targetStride, std::int32_t width,
                          std::int32_t height, std::uint32_t features, std::int32_t,
                          std::uint32_t orientation) {
  return kWrapper(source, sourceStride, target, targetStride, width, height, features, orientation);
}

/// The source is the surface's own block, which the conversion may change.
std::uint32_t RgbToYuy2(const std::uint8_t* source, std::int32_t sourceStride, std::uint8_t* target,
                        std::int32_t targetStride, std::int32_t width, std::int32_t height,
                        std::uint32_t features, std::int32_t bitDepth, std::uint32_t orientation) {
  return ConvertRgbToYuy2(const_cast<std::uint8_t*>(source), sourceStride, target, targetStride,
                          width, height, features, bitDepth, orientation);
}

constexpr auto kRowOrder = OrientationArgument::kRowOrder;
constexpr auto kOne = OrientationArgument::kOne;

constexpr Conversion kConversions[] = {
    {FORMAT_RGB24, FORMAT_RGB32, IgnoreDepth<PackRgb24ToRgb32>, 0, kOne},
    {FORMAT_RGB24, FORMAT_YUV420, ConvertRgbToYuv420, 0, kRowOrder},
    {FORMAT_RGB24, FORMAT_YUY2, RgbToYuy2, 0, kRowOrder},
    {FORMAT_RGB32, FORMAT_RGB24, IgnoreDepth<PackRgb32ToRgb24>, 0, kOne},
    {FORMAT_RGB32, FORMAT_YUV420, ConvertRgbToYuv420, 0, kRowOrder},
    {FORMAT_RGB32, FORMAT_YUY2, RgbToYuy2, 0, kRowOrder},
    {FORMAT_YUV420, FORMAT_RGB24, ConvertYuv420ToRgb, 24, kRowOrder},
    {FORMAT_YUV420, FORMAT_RGB32, ConvertYuv420ToRgb, 32, kRowOrder},
    {FORMAT_YUV420, FORMAT_YUY2, IgnoreOrientation<ConvertYuv420ToYuy2>, 0, kOne},
    {FORMAT_YUV420, FORMAT_YVU420, nullptr, 0, kOne},
    {FORMAT_YUY2, FORMAT_RGB24, ConvertYuy2ToRgb, 24, kRowOrder},
    {FORMAT_YUY2, FORMAT_RGB32, ConvertYuy2ToRgb, 32, kRowOrder},
    {FORMAT_YUY2, FORMAT_YUV420, IgnoreOrientation<ConvertYuy2ToYuv420>, 0, kOne},
};

}  // namespace

const Conversion* FindConversion(std::int32_t from, std::int32_t to) noexcept {
  for (const Conversion& conversion : kConversions) {
    if (conversion.from == from && conversion.to == to) return &conversion;
  }
  return nullptr;
}

}  // namespace zor
