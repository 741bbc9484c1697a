// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// A mask from the alpha channel of a 32-bit picture.

#include <zorsurface/surface.h>

namespace zor {

/// Makes a top-down mask that holds 255 less the alpha of a bottom-up 32-bit picture.
/// @return the mask with one reference, or null without memory or for a picture under 4 x 4.
IZorSurface* BuildMaskFromAlpha(const SurfaceDescription& picture,
                                const std::uint8_t* pixels) noexcept;

}  // namespace zor
