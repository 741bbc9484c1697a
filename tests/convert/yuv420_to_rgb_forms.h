// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The forms of the conversion from planes to RGB, and pictures of one colour through them.

#include <cstdint>
#include <vector>

#include "convert/feature_word.h"
#include "convert/operand.h"
#include "convert/yuv420_to_rgb.h"

namespace zor::test {

/// Which arithmetic and which blocks and tails a form has.
enum class Rules { kPlain, kMmx, kSse2, kSse2Raw };

struct RgbForm : Form<Yuv420ToRgbKernel> {
  int pixel;
  Rules rules;
};

inline const RgbForm kForms[] = {
    {{"rgb32 plain", ConvertYuv420ToRgb32Plain}, 4, Rules::kPlain},
    {{"rgb32 mmx", ConvertYuv420ToRgb32Mmx}, 4, Rules::kMmx},
    {{"rgb32 sse2", ConvertYuv420ToRgb32Sse2}, 4, Rules::kSse2},
    {{"rgb32 sse2 with avx2", ConvertYuv420ToRgb32Sse2, VectorLevel::kAvx2}, 4, Rules::kSse2},
    {{"rgb32 sse2 with avx512", ConvertYuv420ToRgb32Sse2, VectorLevel::kAvx512}, 4, Rules::kSse2},
    {{"rgb24 plain", ConvertYuv420ToRgb24Plain}, 3, Rules::kPlain},
    {{"rgb24 sse2", ConvertYuv420ToRgb24Sse2}, 3, Rules::kSse2Raw},
    {{"rgb24 sse2 with avx2", ConvertYuv420ToRgb24Sse2, VectorLevel::kAvx2}, 3, Rules::kSse2Raw},
    {{"rgb24 sse2 with avx512", ConvertYuv420ToRgb24Sse2, VectorLevel::kAvx512},
     3,
     Rules::kSse2Raw}};

/// A picture of one value of each sample. @return the target's bytes.
inline std::vector<std::uint8_t> Uniform(const RgbForm& form, int width, int height, int y, int u,
                                         int v) {
  const PinnedVectorLevel pinned(form.level);
  const auto bytes = [](int count, int value) {
    return std::vector<std::uint8_t>(static_cast<std::size_t>(count),
                                     static_cast<std::uint8_t>(value));
  };
  const auto luma = bytes(width * height + 64, y);
  const auto planeU = bytes(width * height + 64, u), planeV = bytes(width * height + 64, v);
  auto target = bytes(width * height * form.pixel + 64, 77);
  form.kernel(target.data(), width * form.pixel, luma.data(), planeU.data(), planeV.data(), width,
              width / 2, width, height);
  return target;
}

}  // namespace zor::test
