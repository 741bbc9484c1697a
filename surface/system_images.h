// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Making of the empty system images that a surface exports itself into.

#include <cstdint>

#include "platform/direct_draw.h"
#include "platform/global_memory.h"

namespace zor {

/// The pixels of an exported bitmap begin right behind its header.
inline constexpr std::int64_t kDibHeaderBytes = 40;

/// Makes a device-independent bitmap in global memory, its pixels all zeros.
/// @param bits bits per pixel; with 12 the header counts the bytes of three planes.
/// @param needed bytes that will be written behind the header, where that is more than it says.
/// @return the handle, which is the caller's, or null.
GlobalHandle CreateGlobalDib(std::int32_t width, std::int32_t height, std::int32_t bits,
                             std::int64_t needed) noexcept;

/// The kinds of surface that `CreateDirectDrawSurface` makes.
enum class DrawSurface : std::int32_t {
  kPlain = 0,          ///< no format and no height of its own
  kRgb = 1,            ///< the picture's size and bit count
  kPlanarAs24 = 2,     ///< half the height in 24 bits: room for the bytes of three planes
  kHalfAs32 = 3,       ///< half the height in 32 bits, without masks
  kHalfAs32Again = 4,  ///< as `kHalfAs32`: both numbers stand for it
};

/// Makes a DirectDraw object for this one surface.
/// @param out receives the surface, with one reference for the caller.
/// @return the first code of making the object or the surface that isn't 0, or 0.
std::int32_t CreateDirectDrawSurface(IDirectDrawSurface7** out, std::int32_t width,
                                     std::int32_t height, std::int32_t bits, DrawSurface kind,
                                     bool systemMemory) noexcept;

}  // namespace zor
