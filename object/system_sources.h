// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The three system images that a surface can be copied from. Arguments, errors and ownership as
/// `ISurfaceBuilder::CreateFromSource`; the handle and @p out aren't null.

#include <zorsurface/surface.h>

namespace zor {

/// @param handle a `uKelpTool` video-DIB. Formats 1, 2 and 4. RGB rows are turned over.
std::int32_t CreateFromKelp(void* handle, std::int32_t format, std::uint32_t flags,
                            IZorSurface** out);

/// @param handle an `IDirectDrawSurface7`. Formats 1, 2 and 4. Failures of `GetSurfaceDesc` and
///        `Lock` are returned as they are.
std::int32_t CreateFromDirectDraw(void* handle, std::int32_t format, std::uint32_t flags,
                                  IZorSurface** out);

/// @param handle a global-memory block that holds a device-independent bitmap. Formats 1, 2, 4
///        and 5. Rows stay in the bitmap's order.
std::int32_t CreateFromGlobalDib(void* handle, std::int32_t format, std::uint32_t flags,
                                 IZorSurface** out);

}  // namespace zor
