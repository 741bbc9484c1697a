// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Counts the calls that the library makes of its system, and makes one of them fail.

#include <cstdint>

namespace zor::test {

/// The calls of the platform layer's seam.
enum class SystemCall {
  kAllocate,
  kFree,
  kGlobalAlloc,
  kGlobalLock,
  kGlobalUnlock,
  kGlobalSize,
  kGlobalFree,
  kDirectDrawCreateEx,
  kSetCooperativeLevel,
  kCreateSurface,
  kReleaseDirectDraw,
  kGetSurfaceDesc,
  kLock,
  kUnlock,
  kReleaseSurface,
  kKelpGetInfo,
  kKelpLockData,
  kKelpUnlockData,
  kOpenLibrary,
  kFindFunction,
  kCount
};

/// Watches the calls for the length of a scope; one watch at a time. Calls go on to the system.
class SystemCallWatch {
 public:
  SystemCallWatch();
  ~SystemCallWatch();
  SystemCallWatch(const SystemCallWatch&) = delete;
  SystemCallWatch& operator=(const SystemCallWatch&) = delete;

  /// Makes the @p nth call from now on (counted from 1) fail without reaching the system. A call
  /// that answers with a pointer, a handle or a size gives null or 0, one that answers with a code
  /// gives @p code. `kFree`, `kGlobalFree` and the `kRelease` calls never fail.
  void Fail(SystemCall call, std::int32_t code = -1, int nth = 1);

  /// @return the calls made since the watch began, failed ones included.
  int Count(SystemCall call) const;
};

}  // namespace zor::test
