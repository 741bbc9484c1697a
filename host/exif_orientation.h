// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The one EXIF entry that changes how a photo is looked at.

#include <cstdint>
#include <vector>

namespace zorhost {

/// @return 1 to 8 as the camera wrote it; 1 (upright) where the JPEG says nothing or is damaged.
int ExifOrientation(const std::vector<std::uint8_t>& jpeg);

}  // namespace zorhost
