// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The walk over the rows of a picture from YUY2 to RGB.

#include "convert/packed_rows.h"
#include "convert/table_colour.h"

namespace zor {

/// Converts a pair of columns by the table arithmetic.
template <class Pixel>
ZOR_ALWAYS_INLINE void ConvertYuy2Pair(std::uint8_t* target, const std::uint8_t* source) noexcept {
  const TableChroma chroma(source[1], source[3]);
  for (int i = 0; i < 2; ++i) chroma.Store<Pixel>(target + i * Pixel::kBytes, source[2 * i]);
}

/// Calls `convert(target, source, columns)` for every row and converts by the table arithmetic what
/// columns it leaves. It returns how many it did, an even number.
template <class Pixel, class Convert>
ZOR_ALWAYS_INLINE void WalkYuy2ToRgb(const PackedPicture<>& picture,
                                     const Convert& convert) noexcept {
  const std::int32_t odd = picture.width & 1;
  const std::int32_t columns = picture.width - odd;
  WalkPackedRows(picture, {odd * Pixel::kBytes, odd * 2},
                 [&](std::uint8_t* target, const std::uint8_t* source) {
                   for (std::int32_t x = convert(target, source, columns); x < columns; x += 2) {
                     ConvertYuy2Pair<Pixel>(target + x * Pixel::kBytes, source + 2 * x);
                   }
                 });
}

}  // namespace zor
