// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The one seam through which the platform layer calls the operating system.
///
/// The layer looks every call up in `CurrentSystemCalls`. A test puts functions of its own there to
/// make a call fail or to count calls, and puts the native ones back. Only a test changes the
/// table, and only while no other thread is inside of the library.

#include <cstddef>

namespace zor {

/// The heap.
struct MemoryCalls {
  /// @return @p bytes bytes aligned to 64, or null.
  void* (*allocate)(std::size_t bytes);
  void (*free)(void* block);
};

/// All system calls of the layer.
struct SystemCalls {
  MemoryCalls memory;
};

/// @return the operating system's own functions.
const SystemCalls& NativeSystemCalls() noexcept;

/// @return the table in use.
SystemCalls& CurrentSystemCalls() noexcept;

/// The parts of the native table; one for each file below win32/ and posix/.
MemoryCalls NativeMemoryCalls() noexcept;

}  // namespace zor
