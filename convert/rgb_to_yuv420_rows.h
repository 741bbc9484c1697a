// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The inner speed-ups of the SSE2 form of RGB to YUV 4:2:0, a pair of rows at a time. All give the
/// same bytes.

#include "convert/rgb_to_yuv420_walk.h"

namespace zor {

/// Converts all of an even number of columns, or none if there are fewer than a block.
/// @param stream whether the planes may be written past the caches; they start at whole lines then
/// @return the columns converted
using RgbToYuv420Rows = std::int32_t(const RgbToYuv420Pair& rows, std::int32_t columns,
                                     bool stream) noexcept;

RgbToYuv420Rows Rgb32ToYuv420RowsAvx2;
RgbToYuv420Rows Rgb24ToYuv420RowsAvx2;
RgbToYuv420Rows Rgb32ToYuv420RowsAvx512;
RgbToYuv420Rows Rgb24ToYuv420RowsAvx512;

}  // namespace zor
