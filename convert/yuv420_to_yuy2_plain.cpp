// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/yuv420_to_yuy2.h"
#include "convert/yuv420_to_yuy2_walk.h"

namespace zor {

void ConvertYuv420ToYuy2Plain(std::uint8_t* target, std::int32_t targetStride,
                              const std::uint8_t* luma, const std::uint8_t* u,
                              const std::uint8_t* v, std::int32_t lumaStride,
                              std::int32_t chromaStride, std::int32_t width,
                              std::int32_t height) noexcept {
  WalkYuv420ToYuy2({target, targetStride, luma, u, v, lumaStride, chromaStride, width, height},
                   [](const Yuv420ToYuy2Pair&, std::int32_t) { return std::int32_t{0}; });
}

}  // namespace zor
