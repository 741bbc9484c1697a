// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/yuy2_to_yuv420.h"
#include "convert/yuy2_to_yuv420_walk.h"

namespace zor {

void ConvertYuy2ToYuv420Plain(std::uint8_t* luma, std::uint8_t* u, std::uint8_t* v,
                              std::int32_t lumaStride, std::int32_t chromaStride,
                              const std::uint8_t* source, std::int32_t sourceStride,
                              std::int32_t width, std::int32_t height) noexcept {
  WalkYuy2ToYuv420({luma, u, v, lumaStride, chromaStride, source, sourceStride, width, height},
                   [](const Yuy2ToYuv420Pair&, std::int32_t) { return std::int32_t{0}; });
}

}  // namespace zor
