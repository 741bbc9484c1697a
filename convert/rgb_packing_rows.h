// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The inner speed-ups of RGB packing. Each converts all columns of a row, or none of a row shorter
/// than its block; all give the same bytes.

#include "convert/packed_rows.h"

namespace zor {

PackedRow Rgb24ToRgb32RowSse2;
PackedRow Rgb32ToRgb24RowSse2;
PackedRow Rgb24ToRgb32RowAvx2;
PackedRow Rgb32ToRgb24RowAvx2;

}  // namespace zor
