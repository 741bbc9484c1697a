// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/shared_library.h"

#include "platform/system_calls.h"

namespace zor {

void* OpenSharedLibrary(const char* name) noexcept {
  return CurrentSystemCalls().sharedLibrary.open(name);
}

void* FindFunction(void* library, const char* name) noexcept {
  return CurrentSystemCalls().sharedLibrary.find(library, name);
}

}  // namespace zor
