// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The exact area scaler: every destination pixel is the mean of the source area that it covers,
/// partly covered pixels counting by the covered fraction. All sums are floats, added in the order
/// of the source.

#include "scale/scale_picture.h"

namespace zor {

/// A part below this of a source pixel makes no contribution across and no split down.
inline constexpr double kAreaTail = 0.001;

/// Reduces a picture of 1, 3 or 4 bytes a pixel, all channels alike. Sizes are at least 1 and the
/// source is not smaller than the target. Pictures of equal size are copied in one block of source
/// height times source stride bytes, whatever the target's stride.
/// @param held bytes that both pictures hold from their first pixel on; no more are copied.
/// @return false if memory was refused; the target is then as it was.
bool AreaScale(const ScaleTarget& target, const ScaleSource& source, std::int64_t held) noexcept;

}  // namespace zor
