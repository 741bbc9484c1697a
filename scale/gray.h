// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The scaler of one plane of one byte per pixel.

#include "scale/scale_picture.h"

namespace zor {

/// Scales a plane: mode 0 picks the nearest pixel, every other mode interpolates two by two, with
/// `SCALE_ROW_PAIRS` over rows of one parity. Nothing fades and nothing is averaged. Sizes are at
/// least 1. If memory is refused the target stays as it was.
void ScaleGray8(const ScaleTarget& target, const ScaleSource& source, const ScaleAxes& axes,
                ScaleMode mode) noexcept;

}  // namespace zor
