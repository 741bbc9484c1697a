// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The choice of a kernel form by the capability word, and the planes of a YUV 4:2:0 block, as the
/// conversion wrappers need them.

#include <cstddef>
#include <cstdint>

#include "convert/feature_word.h"

namespace zor {

/// The forms of one conversion. Where a family has no MMX form, the plain one stands in its place.
template <class Kernel>
struct FormChoice {
  Kernel* sse2;
  Kernel* mmx;
  Kernel* plain;

  /// @return the form for a capability word: bit 26 is asked first, then bit 23.
  constexpr Kernel* For(std::uint32_t features) const noexcept {
    if ((features & kFeatureSse2) != 0) return sse2;
    return (features & kFeatureMmx) != 0 ? mmx : plain;
  }
};

/// The forms of a conversion from or to RGB, by pixel size.
template <class Kernel>
struct RgbFormChoice {
  FormChoice<Kernel> rgb24;
  FormChoice<Kernel> rgb32;

  /// @return the form, or null for a depth other than 24 and 32.
  constexpr Kernel* For(std::int32_t bitDepth, std::uint32_t features) const noexcept {
    if (bitDepth == 24) return rgb24.For(features);
    return bitDepth == 32 ? rgb32.For(features) : nullptr;
  }
};

/// The chroma planes of a block of luma stride S and height H, with rows of S / 2 bytes. The first
/// one behind luma holds V.
template <class Byte>
struct ChromaPlanes {
  Byte* v;
  Byte* u;
  std::int32_t stride;

  /// The planes as conversions from RGB lay them: U at S x H + (S x H) / 4.
  static ChromaPlanes ByQuarter(Byte* block, std::int32_t stride, std::int32_t height) noexcept {
    const std::int64_t luma = std::int64_t{stride} * height;
    return At(block, stride, luma, luma / 4);
  }
  /// The planes as all others find them: U at S x H + ((S / 2) x H) / 2, which is another place
  /// where the stride is odd.
  static ChromaPlanes ByHalves(Byte* block, std::int32_t stride, std::int32_t height) noexcept {
    return At(block, stride, std::int64_t{stride} * height, std::int64_t{stride / 2} * height / 2);
  }

 private:
  static ChromaPlanes At(Byte* block, std::int32_t stride, std::int64_t luma,
                         std::int64_t chroma) noexcept {
    Byte* v = block + static_cast<std::ptrdiff_t>(luma);
    return {v, v + static_cast<std::ptrdiff_t>(chroma), stride / 2};
  }
};

}  // namespace zor
