// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The inner speed-ups of the SSE2 form of RGB to YUY2: the blocks of 8 columns of a row. Each
/// converts all columns it is asked for, a multiple of 8, or none of fewer than its own block.

#include "convert/packed_rows.h"
#include "convert/rows_ahead.h"

namespace zor {

/// Bytes from one group of 8 pixels to the next, in both pixel sizes: 3-byte pixels are followed by
/// 8 bytes that are left out.
inline constexpr std::int32_t kYuy2GroupBytes = 32;
using AskForGroupsAbove = AskForRowAbove<kYuy2GroupBytes / 8>;

PackedRow Rgb32ToYuy2RowAvx2;
PackedRow Rgb24ToYuy2RowAvx2;
PackedRow Rgb32ToYuy2RowAvx512;
PackedRow Rgb24ToYuy2RowAvx512;

}  // namespace zor
