// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <dlfcn.h>

#include "platform/system_calls.h"

namespace zor {
namespace {

void* Open(const char* name) {
  return dlopen(name, RTLD_NOW | RTLD_LOCAL);
}

}  // namespace

SharedLibraryCalls NativeSharedLibraryCalls() noexcept {
  return {Open, dlsym};
}

}  // namespace zor
