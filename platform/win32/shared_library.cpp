// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/shared_library.h"

#include <zorsurface/types.h>

namespace zor {

void* OpenSharedLibrary(const char* name) noexcept {
  return LoadLibraryA(name);
}

void* FindFunction(void* library, const char* name) noexcept {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

}  // namespace zor
