// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The inner speed-ups of the SSE2 form of YUY2 to YUV 4:2:0, a pair of rows at a time. Each
/// converts all columns, or none if there are fewer than a block; all give the same bytes.

#include "convert/yuy2_to_yuv420_walk.h"

namespace zor {

/// @param columns an even number
/// @param stream whether the planes may be written past the caches; they start at whole lines then
/// @return the columns converted
using Yuy2ToYuv420Rows = std::int32_t(const Yuy2ToYuv420Pair& rows, std::int32_t columns,
                                      bool stream) noexcept;

Yuy2ToYuv420Rows Yuy2ToYuv420RowsAvx2;
Yuy2ToYuv420Rows Yuy2ToYuv420RowsAvx512;

}  // namespace zor
