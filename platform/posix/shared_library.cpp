// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/shared_library.h"

#include <dlfcn.h>

namespace zor {

void* OpenSharedLibrary(const char* name) noexcept {
  return dlopen(name, RTLD_NOW | RTLD_LOCAL);
}

void* FindFunction(void* library, const char* name) noexcept {
  return dlsym(library, name);
}

}  // namespace zor
