// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The SSE2 form of the table's kernels: blocks of sixteen columns out of the same policies.
/// Colours come by the 6-bit arithmetic, all else gives the bytes of the plain step. Included by
/// SSE2 forms only.

#include "convert/rgb_groups_sse2.h"
#include "convert/row_filter_sse2.h"
#include "convert/table/formats.h"
#include "convert/yuv_pixels_sse2.h"

namespace zor {
namespace {

ZOR_ALWAYS_INLINE __m128i LoadSamples(const SingleRow& row, std::ptrdiff_t i) {
  return LoadSixteen(row.bytes + i);
}
ZOR_ALWAYS_INLINE __m128i LoadSamples(const RowTriple& rows, std::ptrdiff_t i) {
  return Smooth<LoadSixteen>(rows, i);
}
ZOR_ALWAYS_INLINE __m128i LoadEightSamples(const SingleRow& row, std::ptrdiff_t i) {
  return LoadLowEight(row.bytes + i);
}
ZOR_ALWAYS_INLINE __m128i LoadEightSamples(const RowTriple& rows, std::ptrdiff_t i) {
  return Smooth<LoadLowEight>(rows, i);
}

/// Sixteen luma samples, and eight of U and V each in the low half.
struct SixteenColumns {
  __m128i y;
  __m128i u;
  __m128i v;
};

/// The even (`kOdd` 0) or odd bytes of two registers.
template <int kOdd>
ZOR_ALWAYS_INLINE __m128i EverySecond(__m128i low, __m128i high) {
  if constexpr (kOdd == 0) {
    const __m128i mask = _mm_set1_epi16(0x00FF);
    return _mm_packus_epi16(_mm_and_si128(low, mask), _mm_and_si128(high, mask));
  } else {
    return _mm_packus_epi16(_mm_srli_epi16(low, 8), _mm_srli_epi16(high, 8));
  }
}

template <class Packed, class Row>
ZOR_ALWAYS_INLINE SixteenColumns LoadColumns(const Row& row, std::ptrdiff_t x) {
  const __m128i low = LoadSamples(row, 2 * x);
  const __m128i high = LoadSamples(row, 2 * x + 16);
  const __m128i chroma = EverySecond<1 - Packed::kLuma>(low, high);  // in turn U V, or V U
  constexpr int kUFirst = Packed::kU < Packed::kV ? 0 : 1;
  return {EverySecond<Packed::kLuma>(low, high), EverySecond<kUFirst>(chroma, chroma),
          EverySecond<1 - kUFirst>(chroma, chroma)};
}

template <class Chroma, class Row>
ZOR_ALWAYS_INLINE SixteenColumns LoadColumns(const PlanarRow<Row>& rows, std::ptrdiff_t x) {
  const __m128i y = LoadSamples(rows.luma, x);
  if constexpr (Chroma::kStep == 1) {
    return {y, LoadEightSamples(rows.u, x / 2), LoadEightSamples(rows.v, x / 2)};
  } else {
    const __m128i chroma = LoadSamples(rows.u, x);
    return {y, EverySecond<0>(chroma, chroma), EverySecond<1>(chroma, chroma)};
  }
}

/// Eight bytes of 16-bit pixels to dwords B, G, R, 0.
template <int kGreenBits>
ZOR_ALWAYS_INLINE __m128i SpreadWords(const std::uint8_t* pixels) {
  constexpr int kTop = (1 << kGreenBits) - 1;
  const __m128i words = _mm_unpacklo_epi16(LoadLowEight(pixels), _mm_setzero_si128());
  const __m128i blue = _mm_slli_epi32(_mm_and_si128(words, _mm_set1_epi32(0x1F)), 3);
  const __m128i green =
      _mm_slli_epi32(_mm_and_si128(words, _mm_set1_epi32(kTop << 5)), 11 - kGreenBits);
  const __m128i red = _mm_slli_epi32(_mm_and_si128(words, _mm_set1_epi32(0x1F << (5 + kGreenBits))),
                                     14 - kGreenBits);
  return _mm_or_si128(_mm_or_si128(blue, green), red);
}

template <>
ZOR_ALWAYS_INLINE __m128i LoadFourPixels<Rgb565>(const std::uint8_t* pixels) {
  return SpreadWords<6>(pixels);
}
template <>
ZOR_ALWAYS_INLINE __m128i LoadFourPixels<Rgb555>(const std::uint8_t* pixels) {
  return SpreadWords<5>(pixels);
}

template <class Pixel>
ZOR_ALWAYS_INLINE __m128i LoadPixels(const SingleRow& row, std::ptrdiff_t i) {
  return LoadFourPixels<Pixel>(row.bytes + i);
}
template <class Pixel>
ZOR_ALWAYS_INLINE __m128i LoadPixels(const RowTriple& rows, std::ptrdiff_t i) {
  return Smooth<LoadFourPixels<Pixel>>(rows, i);
}

/// Eight words of 16-bit pixels out of words of blue, green and red.
template <int kGreenBits>
ZOR_ALWAYS_INLINE __m128i JoinWords(__m128i blue, __m128i green, __m128i red) {
  const __m128i top = _mm_slli_epi16(_mm_srli_epi16(red, 3), 5 + kGreenBits);
  const __m128i middle = _mm_slli_epi16(_mm_srli_epi16(green, 8 - kGreenBits), 5);
  return _mm_or_si128(_mm_or_si128(top, middle), _mm_srli_epi16(blue, 3));
}

/// Stores sixteen columns of a packing.
template <int kLuma, int kU, int kV>
ZOR_ALWAYS_INLINE void StoreColumns(const Packing<kLuma, kU, kV>&, std::uint8_t* target,
                                    const SixteenColumns& columns) {
  const __m128i chroma =
      kU < kV ? _mm_unpacklo_epi8(columns.u, columns.v) : _mm_unpacklo_epi8(columns.v, columns.u);
  const __m128i even = kLuma == 0 ? columns.y : chroma;
  const __m128i odd = kLuma == 0 ? chroma : columns.y;
  StoreSixteen(target, _mm_unpacklo_epi8(even, odd));
  StoreSixteen(target + 16, _mm_unpackhi_epi8(even, odd));
}

/// RGB targets whose colours are bytes, and those whose pixels are words of 16 bits.
template <class Target>
concept RgbOfBytes = Target::kIsRgb && Target::kBytes != 2;
template <class Target>
concept RgbOfWords = Target::kIsRgb && Target::kBytes == 2;

/// Stores sixteen pixels.
template <RgbOfBytes Target>
ZOR_ALWAYS_INLINE void StoreColumns(const Target& to, std::uint8_t* target,
                                    const SixteenColumns& columns) {
  StoreColours<typename Target::Pixel>(target, columns.y, ChromaOfSixteen(columns.u, columns.v));
  if constexpr (requires { to.FourthByte(std::uint8_t{0}); }) {
    alignas(16) std::uint8_t y[16];
    _mm_store_si128(reinterpret_cast<__m128i*>(y), columns.y);
    for (int i = 0; i < 16; ++i) target[4 * i + 3] = to.FourthByte(y[i]);
  }
}

template <RgbOfWords Target>
ZOR_ALWAYS_INLINE void StoreColumns(const Target&, std::uint8_t* target,
                                    const SixteenColumns& columns) {
  constexpr int kGreenBits = Target::Pixel::kGreenBitCount;
  const __m128i zero = _mm_setzero_si128();
  const SixteenColours of(columns.y, ChromaOfSixteen(columns.u, columns.v));
  StoreSixteen(target, JoinWords<kGreenBits>(_mm_unpacklo_epi8(of.blue, zero),
                                             _mm_unpacklo_epi8(of.green, zero),
                                             _mm_unpacklo_epi8(of.red, zero)));
  StoreSixteen(target + 16, JoinWords<kGreenBits>(_mm_unpackhi_epi8(of.blue, zero),
                                                  _mm_unpackhi_epi8(of.green, zero),
                                                  _mm_unpackhi_epi8(of.red, zero)));
}

/// Stores sixteen columns of two rows in planes; chroma is the average of both rows'.
template <class Source, class Row>
ZOR_ALWAYS_INLINE void StoreGroups(std::uint8_t* upper, std::uint8_t* lower, std::uint8_t* u,
                                   std::uint8_t* v, const Row (&rows)[2], std::ptrdiff_t x) {
  const SixteenColumns above = LoadColumns<Source>(rows[0], x);
  const SixteenColumns below = LoadColumns<Source>(rows[1], x);
  StoreSixteen(upper, above.y);
  StoreSixteen(lower, below.y);
  _mm_storel_epi64(reinterpret_cast<__m128i*>(u), _mm_avg_epu8(above.u, below.u));
  _mm_storel_epi64(reinterpret_cast<__m128i*>(v), _mm_avg_epu8(above.v, below.v));
}

struct Sse2Form {
  static constexpr std::int32_t kColumns = 16;

  template <class Source, class Target, class Row>
  static ZOR_ALWAYS_INLINE std::int32_t Packed(std::uint8_t* target, const Row& row,
                                               std::int32_t columns) noexcept {
    std::int32_t x = 0;
    for (; x + kColumns <= columns; x += kColumns) {
      StoreColumns(Target{}, target + std::ptrdiff_t{x} * Target::kBytes,
                   LoadColumns<Source>(row, x));
    }
    return x;
  }
  template <class Chroma, class Target, class Row>
  static ZOR_ALWAYS_INLINE std::int32_t Planar(const Target& to, std::uint8_t* target,
                                               const PlanarRow<Row>& rows,
                                               std::int32_t columns) noexcept {
    std::int32_t x = 0;
    for (; x + kColumns <= columns; x += kColumns) {
      StoreColumns(to, target + std::ptrdiff_t{x} * Target::kBytes, LoadColumns<Chroma>(rows, x));
    }
    return x;
  }
  template <class Source, class Row>
  static ZOR_ALWAYS_INLINE std::int32_t Groups(std::uint8_t* const (&luma)[2], std::uint8_t* u,
                                               std::uint8_t* v, const Row (&rows)[2],
                                               std::int32_t columns) noexcept {
    std::int32_t x = 0;
    for (; x + kColumns <= columns; x += kColumns) {
      if constexpr (Source::kIsRgb) {
        const SixteenGroupColumns groups([&](int row, int i) __attribute__((always_inline)) {
          return LoadPixels<typename Source::Pixel>(rows[row],
                                                    (std::ptrdiff_t{x} + 4 * i) * Source::kBytes);
        });
        groups.Store(luma[0] + x, luma[1] + x, u + x / 2, v + x / 2);
      } else {
        StoreGroups<Source>(luma[0] + x, luma[1] + x, u + x / 2, v + x / 2, rows, x);
      }
    }
    return x;
  }

  /// Bytes of a plane.
  static ZOR_ALWAYS_INLINE std::int32_t Smooth(std::uint8_t* target, const RowTriple& rows,
                                               std::int32_t bytes) noexcept {
    std::int32_t x = 0;
    for (; x + 16 <= bytes; x += 16) StoreSixteen(target + x, LoadSamples(rows, x));
    return x;
  }
  template <class Row>
  static ZOR_ALWAYS_INLINE std::int32_t Interleave(std::uint8_t* target, const Row& u, const Row& v,
                                                   std::int32_t samples) noexcept {
    std::int32_t x = 0;
    for (; x + 16 <= samples; x += 16) {
      const __m128i rowU = LoadSamples(u, x);
      const __m128i rowV = LoadSamples(v, x);
      StoreSixteen(target + 2 * x, _mm_unpacklo_epi8(rowU, rowV));
      StoreSixteen(target + 2 * x + 16, _mm_unpackhi_epi8(rowU, rowV));
    }
    return x;
  }
};

}  // namespace
}  // namespace zor
