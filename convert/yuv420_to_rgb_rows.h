// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The inner speed-ups of the SSE2 forms of YUV 4:2:0 to RGB. Each converts all columns it is asked
/// for, a multiple of 16, or none of fewer than its own block.

#include "convert/yuv420_to_rgb_walk.h"

namespace zor {

/// Both rows of a pair, with the filter, to RGB32.
/// @param stream whether the target may be written past the caches; its rows are whole lines then
/// @return the columns converted
using Yuv420ToRgbRows = std::int32_t(const Yuv420ToRgbPair& rows, std::int32_t columns,
                                     bool stream) noexcept;
Yuv420ToRgbRows Yuv420ToRgb32RowsAvx2;
Yuv420ToRgbRows Yuv420ToRgb32RowsAvx512;

/// One row without the filter, to RGB24. @return as above
/// @param climb to the target's next row, if it is walked upward and comes into the caches;
/// otherwise 0
using Yuv420ToRgbRow = std::int32_t(std::uint8_t* target, const std::uint8_t* luma,
                                    const std::uint8_t* u, const std::uint8_t* v,
                                    std::int32_t columns, bool stream,
                                    std::ptrdiff_t climb) noexcept;
Yuv420ToRgbRow Yuv420ToRgb24RowAvx2;
Yuv420ToRgbRow Yuv420ToRgb24RowAvx512;

}  // namespace zor
