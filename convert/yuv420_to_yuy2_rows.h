// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The inner speed-ups of the SSE2 form of YUV 4:2:0 to YUY2, a pair of rows at a time. Each
/// converts all columns, or none if there are fewer than a block; all give the same bytes.

#include "convert/yuv420_to_yuy2_walk.h"

namespace zor {

/// @param columns an even number
/// @param stream whether the target may be written past the caches; it starts at whole lines then
/// @return the columns converted
using Yuv420ToYuy2Rows = std::int32_t(const Yuv420ToYuy2Pair& rows, std::int32_t columns,
                                      bool stream) noexcept;

Yuv420ToYuy2Rows Yuv420ToYuy2RowsAvx2;
Yuv420ToYuy2Rows Yuv420ToYuy2RowsAvx512;

}  // namespace zor
