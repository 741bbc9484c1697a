// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/load_store_mmx.h"
#include "convert/pixel_formats.h"
#include "convert/yuv_colour_mmx.h"
#include "convert/yuy2_rgb.h"
#include "convert/yuy2_rgb_walk.h"

namespace zor {
namespace {

constexpr std::int32_t kColumns = 8;

/// Four columns of packed samples.
ZOR_ALWAYS_INLINE FourPixels ConvertFour(__m64 yuy2) {
  // U0 V0 U1 V1, then each for both pixels of its pair.
  const __m64 chroma = _mm_srli_pi16(yuy2, 8);
  const __m64 low = _mm_unpacklo_pi16(chroma, chroma);   // U0 U0 V0 V0
  const __m64 high = _mm_unpackhi_pi16(chroma, chroma);  // U1 U1 V1 V1
  return ConvertFour(_mm_and_si64(yuy2, _mm_set1_pi16(0x00FF)), _mm_unpacklo_pi32(low, high),
                     _mm_unpackhi_pi32(low, high));
}

/// Two pixels without their fourth bytes, in bytes 0 to 5; zeros behind them.
ZOR_ALWAYS_INLINE __m64 SqueezeTwo(__m64 pixels) {
  return _mm_or_si64(_mm_and_si64(pixels, _mm_cvtsi32_si64(0x00FFFFFF)),
                     _mm_slli_si64(_mm_srli_si64(pixels, 32), 24));
}

template <class Pixel>
ZOR_ALWAYS_INLINE void StoreEightPixels(std::uint8_t* target, const FourPixels& low,
                                        const FourPixels& high) {
  if constexpr (Pixel::kBytes == 4) {
    for (int i = 0; i < 2; ++i) {
      StoreEight(target + 8 * i, low.pixels[i]);
      StoreEight(target + 16 + 8 * i, high.pixels[i]);
    }
  } else {
    const __m64 a = SqueezeTwo(low.pixels[0]);
    const __m64 b = SqueezeTwo(low.pixels[1]);
    const __m64 c = SqueezeTwo(high.pixels[0]);
    const __m64 d = SqueezeTwo(high.pixels[1]);
    // aaaaaabb bbbbcccc ccdddddd
    StoreEight(target, _mm_or_si64(a, _mm_slli_si64(b, 48)));
    StoreEight(target + 8, _mm_or_si64(_mm_srli_si64(b, 16), _mm_slli_si64(c, 32)));
    StoreEight(target + 16, _mm_or_si64(_mm_srli_si64(c, 32), _mm_slli_si64(d, 16)));
  }
}

template <class Pixel>
void Convert(const PackedPicture<>& picture) noexcept {
  WalkYuy2ToRgb<Pixel>(picture, [](std::uint8_t* target, const std::uint8_t* source,
                                   std::int32_t columns) {
    std::int32_t x = 0;
    for (; x + kColumns <= columns; x += kColumns) {
      StoreEightPixels<Pixel>(target + x * Pixel::kBytes, ConvertFour(LoadEight(source + 2 * x)),
                              ConvertFour(LoadEight(source + 2 * x + 8)));
    }
    return x;
  });
  _mm_empty();
}

}  // namespace

void ConvertYuy2ToRgb32Mmx(std::uint8_t* target, std::int32_t targetStride,
                           const std::uint8_t* source, std::int32_t sourceStride,
                           std::int32_t width, std::int32_t height) noexcept {
  Convert<Rgb32>({target, targetStride, source, sourceStride, width, height});
}

void ConvertYuy2ToRgb24Mmx(std::uint8_t* target, std::int32_t targetStride,
                           const std::uint8_t* source, std::int32_t sourceStride,
                           std::int32_t width, std::int32_t height) noexcept {
  Convert<Rgb24>({target, targetStride, source, sourceStride, width, height});
}

}  // namespace zor
