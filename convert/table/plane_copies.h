// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The row copies of a single plane, and what is made of them: pictures copied in their own format,
/// YUV 4:2:0 with the planes either way, and luma with interleaved chroma.
///
/// The filter of a plane: every inner row is smoothed with its two neighbours, the first and the
/// last stay as they are. Chroma planes are filtered as planes of their own, by the same rule.

#include <cstring>

#include "convert/table/filtered_rows.h"

namespace zor {

/// Copies rows of @p width bytes by `kCopy`; at a negative height the source is walked bottom-up.
template <auto kCopy>
void CopyRows(std::uint8_t* target, std::int32_t targetStride, const std::uint8_t* source,
              std::int32_t sourceStride, std::int32_t width, std::int32_t height) noexcept {
  if (width <= 0) return;
  WalkPackedRows<const std::uint8_t>({target, targetStride, source, sourceStride, width, height},
                                     {}, [width](std::uint8_t* to, const std::uint8_t* from) {
                                       kCopy(to, from, static_cast<std::size_t>(width));
                                     });
}

/// The same with inner rows smoothed.
/// @tparam Blocks whole blocks of a row: `Blocks::Smooth(to, rows, bytes)` returns the bytes done
template <class Blocks>
void SmoothRows(std::uint8_t* target, std::int32_t targetStride, const std::uint8_t* source,
                std::int32_t sourceStride, std::int32_t width, std::int32_t height) noexcept {
  WalkFilteredRows<Smoothed>({target, targetStride, source, sourceStride, width, height}, {},
                             [width](std::uint8_t* to, const RowTriple& from) {
                               for (std::int32_t x = Blocks::Smooth(to, from, width); x < width;
                                    ++x) {
                                 to[x] = from.Smooth(x);
                               }
                             });
}

/// A picture in its own format, by its bytes: the row copy of a plane.
template <int kBytes, auto kPlane>
void CopyPicture(std::uint8_t* target, std::int32_t targetStride, const std::uint8_t* source,
                 std::int32_t sourceStride, std::int32_t width, std::int32_t height) noexcept {
  kPlane(target, targetStride, source, sourceStride, kBytes * width, height);
}

/// YUV 4:2:0, every plane by the row copy of a plane; chroma planes have half the columns and half
/// the rows, odd ones left out.
/// @tparam kExchanged whether the planes change places: U of the source goes to the address of V
template <auto kPlane, bool kExchanged>
void CopyPlanes(std::uint8_t* luma, std::uint8_t* u, std::uint8_t* v, std::int32_t lumaStride,
                std::int32_t chromaStride, const std::uint8_t* sourceLuma,
                const std::uint8_t* sourceU, const std::uint8_t* sourceV,
                std::int32_t sourceLumaStride, std::int32_t sourceChromaStride, std::int32_t width,
                std::int32_t height) noexcept {
  kPlane(luma, lumaStride, sourceLuma, sourceLumaStride, width, height);
  kPlane(kExchanged ? v : u, chromaStride, sourceU, sourceChromaStride, width / 2, height / 2);
  kPlane(kExchanged ? u : v, chromaStride, sourceV, sourceChromaStride, width / 2, height / 2);
}

/// YUV 4:2:0 to one block of luma and, behind the height taken up to a multiple of 16, a plane of
/// rows U V U V ... of the same stride. A negative height reads the planes from their last rows
/// upward. Between the two nothing is written.
/// @tparam Blocks whole blocks of a row: `Blocks::Interleave(to, u, v, samples)`
template <auto kPlane, class Filter, class Blocks>
void PlanesToLumaChroma(std::uint8_t* target, std::int32_t targetStride, const std::uint8_t* luma,
                        const std::uint8_t* u, const std::uint8_t* v, std::int32_t lumaStride,
                        std::int32_t chromaStride, std::int32_t width,
                        std::int32_t height) noexcept {
  kPlane(target, targetStride, luma, lumaStride, width, height);
  const std::int32_t rows = height < 0 ? -height : height;
  std::uint8_t* to = target + std::ptrdiff_t{targetStride} * ((std::ptrdiff_t{rows} + 15) & ~15);
  const WalkedRows<const std::uint8_t> planeU(u, chromaStride, height / 2);
  const WalkedRows<const std::uint8_t> planeV(v, chromaStride, height / 2);
  for (std::ptrdiff_t y = 0; y < planeU.height; ++y, to += targetStride) {
    const auto row = [y](const WalkedRows<const std::uint8_t>& plane) {
      return Filter::Of(plane.first + y * plane.stride, plane.stride, y == 0,
                        y == plane.height - 1);
    };
    const typename Filter::Row rowU = row(planeU);
    const typename Filter::Row rowV = row(planeV);
    for (std::int32_t x = Blocks::Interleave(to, rowU, rowV, width / 2); x < width / 2; ++x) {
      to[2 * x] = Sample(rowU, x);
      to[2 * x + 1] = Sample(rowV, x);
    }
  }
}

struct PlainPlaneBlocks {
  static std::int32_t Smooth(std::uint8_t*, const RowTriple&, std::int32_t) noexcept { return 0; }
  template <class Row>
  static std::int32_t Interleave(std::uint8_t*, const Row&, const Row&, std::int32_t) noexcept {
    return 0;
  }
};

}  // namespace zor
