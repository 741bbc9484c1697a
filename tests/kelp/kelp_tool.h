// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// A `uKelpTool` for the tests: the three functions that the library looks for, and a few more to
/// make handles and to see what was done to them.

#include <stdint.h>

#ifdef _WIN32
#define KELP_CALL __cdecl
#ifdef KELP_BUILDS
#define KELP_API __declspec(dllexport)
#else
#define KELP_API
#endif
#else
#define KELP_CALL
#define KELP_API __attribute__((visibility("default")))
#endif

extern "C" {

/// Fills width, height, bit count and stride. @return 0, or 1 for a null pointer.
KELP_API int32_t KELP_CALL KelpGetInfo(void* handle, int32_t* info);
/// Gives the address of the pixels. @return 0, or 1 for a null pointer.
KELP_API int32_t KELP_CALL KelpLockData(void* handle, void** pixels);
/// Ends a lock. @return 0, or 1 for a null handle or without a lock.
KELP_API int32_t KELP_CALL KelpUnlockData(void* handle);

/// Makes a handle with a copy of @p bytes bytes of pixels. @return null without memory.
KELP_API void* KELP_CALL KelpTestMake(const int32_t* info, const void* pixels, uint32_t bytes);
KELP_API void KELP_CALL KelpTestFree(void* handle);
/// @return the locks that are held.
KELP_API int32_t KELP_CALL KelpTestLocks(void* handle);
/// @return the calls of `KelpLockData` that gave a lock.
KELP_API int32_t KELP_CALL KelpTestLockCalls(void* handle);

}  // extern "C"
