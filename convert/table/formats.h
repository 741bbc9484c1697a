// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The formats of the kernel table as policies of the plain steps. A source gives pairs of columns
/// or groups of 2 x 2 pixels in Y, U and V, a target takes pairs; both name the bytes of a pixel.

#include "convert/forward_matrix.h"
#include "convert/pixel_formats.h"
#include "convert/rgb_to_yuy2_statement.h"
#include "convert/table/filtered_rows.h"
#include "convert/table_colour.h"

namespace zor {

/// Two pixels that share their chroma.
struct YuvPair {
  std::uint8_t y[2];
  std::uint8_t u;
  std::uint8_t v;
};

/// Two pairs, one below the other, that share it.
struct YuvGroup {
  std::uint8_t y[2][2];
  std::uint8_t u;
  std::uint8_t v;
};

/// A 4:2:2 packing: where in the 4 bytes of a pair its samples stand. Luma has every second byte.
template <int kFirstLuma, int kUByte, int kVByte>
struct Packing {
  static constexpr std::int32_t kBytes = 2;
  static constexpr bool kIsRgb = false;
  static constexpr int kLuma = kFirstLuma;
  static constexpr int kU = kUByte;
  static constexpr int kV = kVByte;

  template <class Row>
  static ZOR_ALWAYS_INLINE YuvPair ReadPair(const Row& row, std::int32_t x) noexcept {
    const std::ptrdiff_t i = 2 * std::ptrdiff_t{x};
    return {{Sample(row, i + kLuma), Sample(row, i + kLuma + 2)},
            Sample(row, i + kU),
            Sample(row, i + kV)};
  }
  /// Chroma of a group is the rounding average of its pairs, after the filter.
  template <class Row>
  static ZOR_ALWAYS_INLINE YuvGroup ReadGroup(const Row (&rows)[2], std::int32_t x) noexcept {
    const YuvPair upper = ReadPair(rows[0], x);
    const YuvPair lower = ReadPair(rows[1], x);
    return {{{upper.y[0], upper.y[1]}, {lower.y[0], lower.y[1]}},
            RoundingFilter::Average(upper.u, lower.u),
            RoundingFilter::Average(upper.v, lower.v)};
  }
  ZOR_ALWAYS_INLINE void StorePair(std::uint8_t* target, const YuvPair& pair) const noexcept {
    target[kLuma] = pair.y[0];
    target[kLuma + 2] = pair.y[1];
    target[kU] = pair.u;
    target[kV] = pair.v;
  }
};

using Yuy2 = Packing<0, 1, 3>;
using Yvyu = Packing<0, 3, 1>;
using Uyvy = Packing<1, 0, 2>;
using Vyuy = Packing<1, 2, 0>;

/// RGB pixels as a source. The filter works on bytes B, G and R, of packed words too.
template <class PixelFormat>
struct RgbSource {
  using Pixel = PixelFormat;
  static constexpr std::int32_t kBytes = Pixel::kBytes;
  static constexpr bool kIsRgb = true;

  static ZOR_ALWAYS_INLINE void ReadPixel(const SingleRow& row, std::int32_t x,
                                          std::uint8_t* bgr) noexcept {
    Pixel::Get(row.bytes + std::ptrdiff_t{x} * Pixel::kBytes, bgr);
  }
  static ZOR_ALWAYS_INLINE void ReadPixel(const RowTriple& rows, std::int32_t x,
                                          std::uint8_t* bgr) noexcept {
    const std::ptrdiff_t i = std::ptrdiff_t{x} * Pixel::kBytes;
    std::uint8_t above[3];
    std::uint8_t centre[3];
    std::uint8_t below[3];
    Pixel::Get(rows.above + i, above);
    Pixel::Get(rows.centre + i, centre);
    Pixel::Get(rows.below + i, below);
#pragma GCC unroll 3
    for (int k = 0; k < 3; ++k) bgr[k] = RoundingFilter::Smooth(above[k], centre[k], below[k]);
  }
  /// By the plain form of RGB to YUY2: chroma of both pixels.
  template <class Row>
  static ZOR_ALWAYS_INLINE YuvPair ReadPair(const Row& row, std::int32_t x) noexcept {
    std::uint8_t bgr[2][3];
#pragma GCC unroll 2
    for (int i = 0; i < 2; ++i) ReadPixel(row, x + i, bgr[i]);
    std::uint8_t yuy2[4];
    RgbToYuy2Pair(yuy2, bgr[0], bgr[1]);
    return {{yuy2[0], yuy2[2]}, yuy2[1], yuy2[3]};
  }
  /// Chroma of the sums of all four pixels.
  template <class Row>
  static ZOR_ALWAYS_INLINE YuvGroup ReadGroup(const Row (&rows)[2], std::int32_t x) noexcept {
    YuvGroup group;
    RgbSum sum;
#pragma GCC unroll 2
    for (int row = 0; row < 2; ++row) {
#pragma GCC unroll 2
      for (int column = 0; column < 2; ++column) {
        std::uint8_t bgr[3];
        ReadPixel(rows[row], x + column, bgr);
        group.y[row][column] = LumaOfRgb(bgr);
        sum.Add(bgr);
      }
    }
    group.u = UOfRgb<kChromaShiftOfFour>(sum);
    group.v = VOfRgb<kChromaShiftOfFour>(sum);
    return group;
  }
};

/// RGB pixels as a target, by the table arithmetic.
template <class PixelFormat>
struct RgbTarget {
  using Pixel = PixelFormat;
  static constexpr std::int32_t kBytes = Pixel::kBytes;
  static constexpr bool kIsRgb = true;

  ZOR_ALWAYS_INLINE void StorePair(std::uint8_t* target, const YuvPair& pair) const noexcept {
    const TableChroma chroma(pair.u, pair.v);
#pragma GCC unroll 2
    for (int i = 0; i < 2; ++i) {
      std::uint8_t bgr[3];
      chroma.Store<Rgb24>(bgr, pair.y[i]);
      Pixel::Put(target + i * kBytes, bgr);
    }
  }
};

/// RGB32 with luma in the fourth byte: the sample that the colour is made of, so after the filter.
struct Rgb32WithLuma : RgbTarget<Rgb32> {
  static ZOR_ALWAYS_INLINE std::uint8_t FourthByte(std::uint8_t y) noexcept { return y; }
};

/// RGB32 with 255 in the fourth byte where that sample is greater than a threshold, and 0
/// elsewhere: the same sample as in `Rgb32WithLuma`, keyed. Any threshold below 0 keys all, 255
/// none.
struct Rgb32Keyed : RgbTarget<Rgb32> {
  std::int32_t threshold;

  explicit Rgb32Keyed(std::int32_t key) noexcept : threshold(key) {}
  ZOR_ALWAYS_INLINE std::uint8_t FourthByte(std::uint8_t y) const noexcept {
    return y > threshold ? 255 : 0;
  }
};

/// Writes a pair whatever its target.
template <class Target>
ZOR_ALWAYS_INLINE void StorePair(const Target& to, std::uint8_t* target,
                                 const YuvPair& pair) noexcept {
  to.StorePair(target, pair);
  if constexpr (requires { to.FourthByte(pair.y[0]); }) {
#pragma GCC unroll 2
    for (int i = 0; i < 2; ++i) target[4 * i + 3] = to.FourthByte(pair.y[i]);
  }
}

/// The distance of chroma samples in rows of their own, and where U and V take turns, U first.
struct SeparateChroma {
  static constexpr std::ptrdiff_t kStep = 1;
};
struct InterleavedChroma {
  static constexpr std::ptrdiff_t kStep = 2;
};

/// Reads a pair of planes for @p Target: RGB takes the chroma rows of the table arithmetic.
template <class Target, class Chroma, class Row>
ZOR_ALWAYS_INLINE YuvPair ReadPlanarPair(const PlanarRow<Row>& rows, std::int32_t x) noexcept {
  const std::ptrdiff_t i = x / 2 * Chroma::kStep;
  const Row& u = Target::kIsRgb ? rows.tableU : rows.u;
  const Row& v = Target::kIsRgb ? rows.tableV : rows.v;
  return {{Sample(rows.luma, x), Sample(rows.luma, x + 1)}, Sample(u, i), Sample(v, i)};
}

}  // namespace zor
