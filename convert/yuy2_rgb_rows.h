// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The inner speed-ups of the SSE2 form of YUY2 to RGB: the blocks of 16 columns of a row, all in
/// the 6-bit vector arithmetic. Each converts all columns it is asked for, a multiple of 16, or
/// none of fewer than its own block.

#include "convert/packed_rows.h"

namespace zor {

PackedRow Yuy2ToRgb32RowAvx2;
PackedRow Yuy2ToRgb24RowAvx2;
PackedRow Yuy2ToRgb32RowAvx512;
PackedRow Yuy2ToRgb24RowAvx512;

}  // namespace zor
