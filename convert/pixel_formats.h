// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The RGB formats of the kernels, as policies: the size of a pixel, and how it is taken apart into
/// bytes B, G, R and put together.

#include <cstdint>

#include "platform/compiler.h"

namespace zor {

/// B, G, R in rising addresses.
struct Rgb24 {
  static constexpr std::int32_t kBytes = 3;

  static ZOR_ALWAYS_INLINE void Get(const std::uint8_t* pixel, std::uint8_t* bgr) noexcept {
#pragma GCC unroll 3
    for (int i = 0; i < 3; ++i) bgr[i] = pixel[i];
  }
  static ZOR_ALWAYS_INLINE void Put(std::uint8_t* pixel, const std::uint8_t* bgr) noexcept {
#pragma GCC unroll 3
    for (int i = 0; i < 3; ++i) pixel[i] = bgr[i];
  }
};

/// B, G, R and a fourth byte in rising addresses. The fourth byte is ignored when it is read, and
/// written as 0.
struct Rgb32 {
  static constexpr std::int32_t kBytes = 4;

  static ZOR_ALWAYS_INLINE void Get(const std::uint8_t* pixel, std::uint8_t* bgr) noexcept {
    Rgb24::Get(pixel, bgr);
  }
  static ZOR_ALWAYS_INLINE void Put(std::uint8_t* pixel, const std::uint8_t* bgr) noexcept {
    Rgb24::Put(pixel, bgr);
    pixel[3] = 0;
  }
};

/// A 16-bit word, low byte first: blue in the low 5 bits, green above it, red in the 5 bits above
/// green. A colour keeps the top bits of its 8; what is dropped comes back as 0. A bit above red is
/// ignored when it is read, and written as 0.
template <int kGreenBits>
struct RgbWord {
  static constexpr std::int32_t kBytes = 2;
  static constexpr int kGreenBitCount = kGreenBits;

  static ZOR_ALWAYS_INLINE void Get(const std::uint8_t* pixel, std::uint8_t* bgr) noexcept {
    const int word = pixel[0] | pixel[1] << 8;
    bgr[0] = static_cast<std::uint8_t>(word << 3);
    bgr[1] = static_cast<std::uint8_t>(word >> 5 << (8 - kGreenBits));
    bgr[2] = static_cast<std::uint8_t>(word >> (5 + kGreenBits) << 3);
  }
  static ZOR_ALWAYS_INLINE void Put(std::uint8_t* pixel, const std::uint8_t* bgr) noexcept {
    const int word =
        bgr[0] >> 3 | bgr[1] >> (8 - kGreenBits) << 5 | bgr[2] >> 3 << (5 + kGreenBits);
    pixel[0] = static_cast<std::uint8_t>(word);
    pixel[1] = static_cast<std::uint8_t>(word >> 8);
  }
};

using Rgb565 = RgbWord<6>;
using Rgb555 = RgbWord<5>;

}  // namespace zor
