// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <zorsurface/types.h>

#include "platform/system_calls.h"

namespace zor {
namespace {

void* Open(const char* name) {
  return LoadLibraryA(name);
}

void* Find(void* library, const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

}  // namespace

SharedLibraryCalls NativeSharedLibraryCalls() noexcept {
  return {Open, Find};
}

}  // namespace zor
