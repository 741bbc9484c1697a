// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The kernels of the table: one template for each kind of step. Policies give the source, the
/// target, the row filter, and the form, which does whole blocks of a row and leaves the rest to
/// the plain step.

#include <type_traits>

#include "convert/table/formats.h"

namespace zor {

/// The form without blocks.
struct PlainForm {
  template <class Source, class Target, class Row>
  static std::int32_t Packed(std::uint8_t*, const Row&, std::int32_t) noexcept {
    return 0;
  }
  template <class Chroma, class Target, class Row>
  static std::int32_t Planar(const Target&, std::uint8_t*, const PlanarRow<Row>&,
                             std::int32_t) noexcept {
    return 0;
  }
  template <class Source, class Row>
  static std::int32_t Groups(std::uint8_t* const (&)[2], std::uint8_t*, std::uint8_t*,
                             const Row (&)[2], std::int32_t) noexcept {
    return 0;
  }
};

/// Between packed pictures with Y, U and V on a side: pairs of columns. An odd last column isn't
/// converted, and each next row then starts one pixel further left on both sides.
template <class Form, class Source, class Target, class Filter, class Byte = const std::uint8_t>
void ConvertPackedPairs(std::uint8_t* target, std::int32_t targetStride, Byte* source,
                        std::int32_t sourceStride, std::int32_t width,
                        std::int32_t height) noexcept {
  const std::int32_t odd = width & 1;
  WalkFilteredRows<Filter>(
      {target, targetStride, source, sourceStride, width, height},
      {odd * Target::kBytes, odd * Source::kBytes},
      [columns = width - odd](std::uint8_t* to, const typename Filter::Row& from) {
        for (std::int32_t x = Form::template Packed<Source, Target>(to, from, columns); x < columns;
             x += 2) {
          StorePair(Target{}, to + std::ptrdiff_t{x} * Target::kBytes, Source::ReadPair(from, x));
        }
      });
}

/// Between RGB formats: pixel by pixel, any size whole.
template <class Source, class Target, class Filter>
void ConvertPixels(std::uint8_t* target, std::int32_t targetStride, const std::uint8_t* source,
                   std::int32_t sourceStride, std::int32_t width, std::int32_t height) noexcept {
  WalkFilteredRows<Filter>({target, targetStride, source, sourceStride, width, height}, {},
                           [width](std::uint8_t* to, const typename Filter::Row& from) {
                             for (std::int32_t x = 0; x < width; ++x) {
                               std::uint8_t bgr[3];
                               RgbSource<Source>::ReadPixel(from, x, bgr);
                               Target::Put(to + std::ptrdiff_t{x} * Target::kBytes, bgr);
                             }
                           });
}

template <class Form, class Chroma, class Target, class Filter>
ZOR_ALWAYS_INLINE void ConvertPlanarRows(const Target& target, const FromPlanes& picture) noexcept {
  const std::int32_t columns = picture.width & ~1;
  WalkPlanarRows<Filter, Target::kBytes>(
      picture, [&](std::uint8_t* to, const PlanarRow<typename Filter::Row>& from) {
        for (std::int32_t x = Form::template Planar<Chroma>(target, to, from, columns); x < columns;
             x += 2) {
          StorePair(target, to + std::ptrdiff_t{x} * Target::kBytes,
                    ReadPlanarPair<Target, Chroma>(from, x));
        }
      });
}

/// From planes to a packed picture.
template <class Form, class Target, class Filter>
void ConvertPlanes(std::uint8_t* target, std::int32_t targetStride, const std::uint8_t* luma,
                   const std::uint8_t* u, const std::uint8_t* v, std::int32_t lumaStride,
                   std::int32_t chromaStride, std::int32_t width, std::int32_t height) noexcept {
  ConvertPlanarRows<Form, SeparateChroma, Target, Filter>(
      Target{}, {target, targetStride, luma, u, v, lumaStride, chromaStride, width, height});
}

template <class Form, class Filter>
void ConvertPlanesKeyed(std::uint8_t* target, std::int32_t targetStride, const std::uint8_t* luma,
                        const std::uint8_t* u, const std::uint8_t* v, std::int32_t lumaStride,
                        std::int32_t chromaStride, std::int32_t width, std::int32_t height,
                        std::int32_t threshold) noexcept {
  ConvertPlanarRows<Form, SeparateChroma, Rgb32Keyed, Filter>(
      Rgb32Keyed(threshold),
      {target, targetStride, luma, u, v, lumaStride, chromaStride, width, height});
}

template <class Form, class Target, class Filter>
void ConvertLumaChroma(std::uint8_t* target, std::int32_t targetStride, const std::uint8_t* luma,
                       const std::uint8_t* chroma, std::int32_t lumaStride,
                       std::int32_t chromaStride, std::int32_t width,
                       std::int32_t height) noexcept {
  ConvertPlanarRows<Form, InterleavedChroma, Target, Filter>(
      Target{},
      {target, targetStride, luma, chroma, chroma + 1, lumaStride, chromaStride, width, height});
}

/// From a packed picture to planes, in groups of 2 x 2 pixels; the filter is the one from YUY2: the
/// first row of the first pair and the last of the last stay as they are.
template <class Form, class Source, class Filter>
void ConvertToPlanes(std::uint8_t* luma, std::uint8_t* u, std::uint8_t* v, std::int32_t lumaStride,
                     std::int32_t chromaStride, const std::uint8_t* source,
                     std::int32_t sourceStride, std::int32_t width, std::int32_t height) noexcept {
  const ToPlanes picture = {luma,         u,     v,     lumaStride, chromaStride, source,
                            sourceStride, width, height};
  WalkRowPairs<Source::kBytes>(picture, [](const auto& pair) {
    typename Filter::Row rows[2];
    Filter::Pair(rows, pair.packed, pair.packedStride, pair.first, pair.last);
    std::uint8_t* const to[2] = {pair.luma, pair.luma + pair.lumaStride};
    for (std::int32_t x = Form::template Groups<Source>(to, pair.u, pair.v, rows, pair.columns);
         x < pair.columns; x += 2) {
      const YuvGroup group = Source::ReadGroup(rows, x);
#pragma GCC unroll 2
      for (int row = 0; row < 2; ++row) {
#pragma GCC unroll 2
        for (int column = 0; column < 2; ++column) to[row][x + column] = group.y[row][column];
      }
      pair.u[x / 2] = group.u;
      pair.v[x / 2] = group.v;
    }
  });
}

}  // namespace zor
