// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/system_calls.h"

#include "platform/memory_reserve.h"

namespace zor {

const SystemCalls& NativeSystemCalls() noexcept {
  static const SystemCalls calls = {ReservedMemoryCalls(),   NativeGlobalMemoryCalls(),
                                    NativeDirectDrawCalls(), NativeDirectDrawSurfaceCalls(),
                                    NativeKelpToolCalls(),   NativeSharedLibraryCalls()};
  return calls;
}

SystemCalls& CurrentSystemCalls() noexcept {
  static SystemCalls calls = NativeSystemCalls();
  return calls;
}

}  // namespace zor
