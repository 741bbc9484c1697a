// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// A surface's export as a device-independent bitmap, looked into and let go.

#include <zorsurface/surface.h>

#include "picture.h"

namespace zorhost {

/// Exports @p surface as a bitmap in global memory and copies its pixels into @p out, whose layout
/// and size are the surface's. RGB bitmaps are bottom-up, the others hold rows from the top.
/// @param turnedOver whether rows lie the other way round, `PictureShape::turnedOver`.
/// @throws HostError with `ExitCode::kLibrary` for a failed export, or a header that tells of
/// another picture.
void ReadExportedBitmap(IZorSurface& surface, bool turnedOver, Picture& out);

}  // namespace zorhost
