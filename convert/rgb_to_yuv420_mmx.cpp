// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/load_store_mmx.h"
#include "convert/pixel_formats.h"
#include "convert/rgb_to_yuv420.h"
#include "convert/rgb_to_yuv420_walk.h"

namespace zor {
namespace {

/// Loads the two pixels of a pair as B, G, R, x in the low half. A 3-byte pixel's fourth byte is
/// cut off; the second one is read from the byte in front of it, so that no read passes its end.
template <class Pixel>
struct PixelPair;

template <>
struct PixelPair<Rgb32> {
  static ZOR_ALWAYS_INLINE __m64 First(const std::uint8_t* p) { return LoadFour(p); }
  static ZOR_ALWAYS_INLINE __m64 Second(const std::uint8_t* p) { return LoadFour(p + 4); }
};

template <>
struct PixelPair<Rgb24> {
  static ZOR_ALWAYS_INLINE __m64 First(const std::uint8_t* p) {
    return _mm_and_si64(LoadFour(p), _mm_cvtsi32_si64(0x00FFFFFF));
  }
  static ZOR_ALWAYS_INLINE __m64 Second(const std::uint8_t* p) {
    return _mm_srli_pi32(LoadFour(p + 2), 8);
  }
};

/// One row of the matrix: pairwise products of the four words, both halves added.
ZOR_ALWAYS_INLINE std::int32_t MatrixRow(__m64 words, __m64 row) {
  const __m64 halves = _mm_madd_pi16(words, row);
  return _mm_cvtsi64_si32(_mm_add_pi32(halves, _mm_unpackhi_pi32(halves, halves)));
}

template <class Pixel>
ZOR_ALWAYS_INLINE void ConvertGroup(const RgbToYuv420Pair& rows, std::int32_t x) {
  const __m64 zero = _mm_setzero_si64();
  const __m64 lumaRow = _mm_setr_pi16(25, 129, 66, 0);
  __m64 sum = zero;  // words of at most 1020
  for (int row = 0; row < 2; ++row) {
    const std::uint8_t* source = rows.source[row] + x * Pixel::kBytes;
    const __m64 first = _mm_unpacklo_pi8(PixelPair<Pixel>::First(source), zero);
    const __m64 second = _mm_unpacklo_pi8(PixelPair<Pixel>::Second(source), zero);
    rows.luma[row][x] = static_cast<std::uint8_t>((MatrixRow(first, lumaRow) >> 8) + 16);
    rows.luma[row][x + 1] = static_cast<std::uint8_t>((MatrixRow(second, lumaRow) >> 8) + 16);
    sum = _mm_add_pi16(sum, _mm_add_pi16(first, second));
  }
  const std::int32_t u = MatrixRow(sum, _mm_setr_pi16(112, -74, -38, 0));
  const std::int32_t v = MatrixRow(sum, _mm_setr_pi16(-18, -94, 112, 0));
  rows.u[x / 2] = static_cast<std::uint8_t>((u >> kChromaShiftOfFour) + 128);
  rows.v[x / 2] = static_cast<std::uint8_t>((v >> kChromaShiftOfFour) + 128);
}

/// Converts with MMX all row pairs in front of @p scalarFrom, and the others by the statement.
template <class Pixel>
ZOR_ALWAYS_INLINE void Convert(const ToPlanes& picture, std::int32_t scalarFrom) {
  WalkRgbToYuv420<Pixel>(
      picture, [scalarFrom](const RgbToYuv420Pair& rows, std::int32_t columns, std::int32_t pair) {
        if (pair >= scalarFrom) return std::int32_t{0};
        for (std::int32_t x = 0; x < columns; x += 2) ConvertGroup<Pixel>(rows, x);
        return columns;
      });
  _mm_empty();
}

}  // namespace

void ConvertRgb32ToYuv420Mmx(std::uint8_t* luma, std::uint8_t* u, std::uint8_t* v,
                             std::int32_t lumaStride, std::int32_t chromaStride,
                             const std::uint8_t* source, std::int32_t sourceStride,
                             std::int32_t width, std::int32_t height) noexcept {
  const std::int32_t pairs = (height < 0 ? -height : height) / 2;
  Convert<Rgb32>({luma, u, v, lumaStride, chromaStride, source, sourceStride, width, height},
                 pairs);
}

void ConvertRgb24ToYuv420Mmx(std::uint8_t* luma, std::uint8_t* u, std::uint8_t* v,
                             std::int32_t lumaStride, std::int32_t chromaStride,
                             const std::uint8_t* source, std::int32_t sourceStride,
                             std::int32_t width, std::int32_t height) noexcept {
  const std::int32_t pairs = (height < 0 ? -height : height) / 2;
  Convert<Rgb24>({luma, u, v, lumaStride, chromaStride, source, sourceStride, width, height},
                 pairs - 1);
}

}  // namespace zor
