// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// DirectDraw 7, as far as the library needs it: making a surface, and looking into one.
///
/// On Windows these are the calls of the system's ddraw.dll, which is looked for when a DirectDraw
/// object is wanted for the first time. Elsewhere a software DirectDraw of our own stands behind
/// them, with surfaces in system memory only. Records and constants have the platform's names on
/// both. Results are `HRESULT`s: negative is failure.

#include <zorsurface/direct_draw.h>

#include <cstdint>

#ifndef _WIN32
struct IDirectDraw7;  ///< the software DirectDraw object; its operations are the functions below
#endif

namespace zor {

/// The size word of every `DDSURFACEDESC2`.
inline constexpr std::uint32_t kSurfaceDescSize = 124;

/// @return a description of zeros with its size word set.
DDSURFACEDESC2 EmptySurfaceDesc() noexcept;

/// Makes a DirectDraw object on the default driver. @return `E_FAIL` where there is no DirectDraw.
std::int32_t DirectDrawCreateEx(IDirectDraw7** out) noexcept;
/// Sets how the object shares the display, without a window. @param flags `DDSCL_NORMAL`.
std::int32_t SetCooperativeLevel(IDirectDraw7* directDraw, std::uint32_t flags) noexcept;
/// Makes a surface, with one reference for the caller. Its new memory is zeros.
std::int32_t CreateSurface(IDirectDraw7* directDraw, DDSURFACEDESC2* desc,
                           IDirectDrawSurface7** out) noexcept;
/// Gives the object back; surfaces that it made live on. @return the references left.
std::uint32_t ReleaseDirectDraw(IDirectDraw7* directDraw) noexcept;

/// Fills @p desc, whose size word is set; the pixel address stays out.
std::int32_t GetSurfaceDesc(IDirectDrawSurface7* surface, DDSURFACEDESC2* desc) noexcept;
/// Locks the whole surface with `DDLOCK_WAIT` and fills @p desc with the pixel address too: the
/// memory is `lPitch` x `dwHeight` bytes. The address may be null even after a success, when the
/// system could not back a very large surface.
std::int32_t LockSurface(IDirectDrawSurface7* surface, DDSURFACEDESC2* desc) noexcept;
/// Unlocks the whole surface.
std::int32_t UnlockSurface(IDirectDrawSurface7* surface) noexcept;
/// Gives one reference back. @return the references left.
std::uint32_t ReleaseSurface(IDirectDrawSurface7* surface) noexcept;

}  // namespace zor
