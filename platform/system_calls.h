// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The one seam through which the platform layer calls what may fail outside of the library.
///
/// The layer looks every such call up in `CurrentSystemCalls`. A test puts functions of its own
/// there to make a call fail or to count calls, and puts the native ones back. Only a test changes
/// the table, and only while no other thread is inside of the library.

#include <cstddef>
#include <cstdint>

#include "platform/direct_draw.h"
#include "platform/global_memory.h"
#include "platform/kelp_tool.h"

namespace zor {

/// The heap.
struct MemoryCalls {
  /// @return @p bytes bytes aligned to 64, or null.
  void* (*allocate)(std::size_t bytes);
  void (*free)(void* block);
};

/// Global memory; arguments and results as in global_memory.h.
struct GlobalMemoryCalls {
  GlobalHandle (*alloc)(std::uint32_t flags, std::size_t bytes);
  void* (*lock)(GlobalHandle handle);
  void (*unlock)(GlobalHandle handle);
  std::size_t (*size)(GlobalHandle handle);
  void (*free)(GlobalHandle handle);
};

/// The DirectDraw object; arguments and results as in direct_draw.h.
struct DirectDrawCalls {
  std::int32_t (*createEx)(IDirectDraw7** out);
  std::int32_t (*setCooperativeLevel)(IDirectDraw7* directDraw, std::uint32_t flags);
  std::int32_t (*createSurface)(IDirectDraw7* directDraw, DDSURFACEDESC2* desc,
                                IDirectDrawSurface7** out);
  std::uint32_t (*release)(IDirectDraw7* directDraw);
};

/// The DirectDraw surface; arguments and results as in direct_draw.h.
struct DirectDrawSurfaceCalls {
  std::int32_t (*getSurfaceDesc)(IDirectDrawSurface7* surface, DDSURFACEDESC2* desc);
  std::int32_t (*lock)(IDirectDrawSurface7* surface, DDSURFACEDESC2* desc);
  std::int32_t (*unlock)(IDirectDrawSurface7* surface);
  std::uint32_t (*release)(IDirectDrawSurface7* surface);
};

/// `uKelpTool`; arguments and results as in kelp_tool.h.
struct KelpToolCalls {
  std::int32_t(ZOR_KELP_CALL* getInfo)(void* handle, KelpInfo* info);
  std::int32_t(ZOR_KELP_CALL* lockData)(void* handle, void** pixels);
  std::int32_t(ZOR_KELP_CALL* unlockData)(void* handle);
};

/// Libraries that are found at run time; arguments and results as in shared_library.h.
struct SharedLibraryCalls {
  void* (*open)(const char* name);
  void* (*find)(void* library, const char* name);
};

/// All calls of the layer.
struct SystemCalls {
  MemoryCalls memory;
  GlobalMemoryCalls globalMemory;
  DirectDrawCalls directDraw;
  DirectDrawSurfaceCalls directDrawSurface;
  KelpToolCalls kelpTool;
  SharedLibraryCalls sharedLibrary;
};

/// @return the system's own functions.
const SystemCalls& NativeSystemCalls() noexcept;

/// @return the table in use.
SystemCalls& CurrentSystemCalls() noexcept;

// The parts of the native table.
MemoryCalls NativeMemoryCalls() noexcept;
GlobalMemoryCalls NativeGlobalMemoryCalls() noexcept;
DirectDrawCalls NativeDirectDrawCalls() noexcept;
DirectDrawSurfaceCalls NativeDirectDrawSurfaceCalls() noexcept;
KelpToolCalls NativeKelpToolCalls() noexcept;
SharedLibraryCalls NativeSharedLibraryCalls() noexcept;

}  // namespace zor
