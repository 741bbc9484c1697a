// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "surface/engine_table.h"

#include <zorsurface/surface_description.h>

#include "convert/wrappers.h"

namespace zor {
namespace {

constexpr Conversion kConversions[] = {
    {FORMAT_YUV420, FORMAT_RGB24, ConvertYuv420ToRgb, 24, OrientationArgument::kFlip},
    {FORMAT_YUV420, FORMAT_RGB32, ConvertYuv420ToRgb, 32, OrientationArgument::kFlip},
    {FORMAT_YUV420, FORMAT_YVU420, nullptr, 0, OrientationArgument::kOne},
};

}  // namespace

const Conversion* FindConversion(std::int32_t from, std::int32_t to) noexcept {
  for (const Conversion& conversion : kConversions) {
    if (conversion.from == from && conversion.to == to) return &conversion;
  }
  return nullptr;
}

}  // namespace zor
