// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// `uKelpTool`, the library of video-DIB handles.
///
/// It is looked for at run time, on Windows as uKelpTool.dll and elsewhere as libuKelpTool.so, each
/// on the system's ordinary search path. Until it is found every call fails; once found it stays
/// loaded.

#include <cstdint>

#ifdef _WIN32
#define ZOR_KELP_CALL __cdecl
#else
#define ZOR_KELP_CALL
#endif

namespace zor {

/// The four words that `KelpGetInfo` fills.
struct KelpInfo {
  std::int32_t width;     ///< pixels per row
  std::int32_t height;    ///< rows
  std::int32_t bitCount;  ///< bits per pixel
  std::int32_t stride;    ///< bytes from one row to the next
};

/// Describes the picture behind a handle. @return 0 on success.
std::int32_t KelpGetInfo(void* handle, KelpInfo* info) noexcept;
/// Gives the address of the pixels. @return 0 on success.
std::int32_t KelpLockData(void* handle, void** pixels) noexcept;
/// Ends a lock.
void KelpUnlockData(void* handle) noexcept;

}  // namespace zor
