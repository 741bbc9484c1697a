// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Global memory: blocks under a handle, which hosts and library hand to each other.
///
/// On Windows these are the platform's functions. Elsewhere a handle is the address of its block,
/// which comes from `malloc`: a host makes one with `malloc`, reads one plainly and frees it with
/// `free`.

#include <cstddef>
#include <cstdint>

#include <zorsurface/types.h>

#ifndef _WIN32
inline constexpr std::uint32_t GMEM_MOVEABLE = 0x2;
inline constexpr std::uint32_t GMEM_ZEROINIT = 0x40;
#endif

namespace zor {

using GlobalHandle = void*;

/// @param flags `GMEM_MOVEABLE`, `GMEM_ZEROINIT`. @return the new block's handle, or null.
GlobalHandle GlobalAlloc(std::uint32_t flags, std::size_t bytes) noexcept;
/// @return the address of the block, or null.
void* GlobalLock(GlobalHandle handle) noexcept;
/// Ends a lock; does nothing for null.
void GlobalUnlock(GlobalHandle handle) noexcept;
/// @return the bytes of the block that may be touched, at least those that were asked for; 0 for
///         null.
std::size_t GlobalSize(GlobalHandle handle) noexcept;
/// Frees the block; null is fine.
void GlobalFree(GlobalHandle handle) noexcept;

}  // namespace zor
