// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Spans of the nearest-neighbour warp whose positions all lie in the source, in forms of equal
/// bytes. They read and write nothing but the pixels they copy.

#include <cstdint>

#include "convert/feature_word.h"

namespace zor {

/// One span. Positions are 16.16 words below 2^31, with the half that rounds.
struct WarpSpan {
  const std::uint8_t* source;  ///< row 0, column 0
  std::uint8_t* target;        ///< of the first column
  std::int32_t sourceStep;     ///< at most 32767
  std::uint32_t x;             ///< of the first column
  std::uint32_t y;
  std::uint32_t xStep;  ///< per column
  std::uint32_t yStep;
  std::int32_t count;  ///< at least 1
};

using WarpSpanKernel = void (*)(const WarpSpan& span) noexcept;

/// The kernels of one instruction set, by bytes a pixel.
struct WarpSpanForm {
  const char* name;
  WarpSpanKernel gray;
  WarpSpanKernel rgb24;
  /// For spans that stay above the source's last row: reads a byte behind each pixel.
  WarpSpanKernel rgb24Above;
  WarpSpanKernel rgb32;
};

extern const WarpSpanForm kWarpSpansPlain;
extern const WarpSpanForm kWarpSpansSse2;
extern const WarpSpanForm kWarpSpansAvx2;
extern const WarpSpanForm kWarpSpansAvx512;

/// The forms from plain to widest.
inline constexpr const WarpSpanForm* kWarpSpanForms[] = {&kWarpSpansPlain, &kWarpSpansSse2,
                                                         &kWarpSpansAvx2, &kWarpSpansAvx512};

}  // namespace zor
