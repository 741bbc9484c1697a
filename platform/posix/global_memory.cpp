// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/global_memory.h"

#include <malloc.h>
#include <stdlib.h>

#include "platform/system_calls.h"

namespace zor {
namespace {

GlobalHandle Alloc(std::uint32_t flags, std::size_t bytes) {
  return (flags & GMEM_ZEROINIT) != 0 ? calloc(1, bytes) : malloc(bytes);
}

// A block stands where its handle says: there is nothing to do.
void* Lock(GlobalHandle handle) {
  return handle;
}
void Unlock(GlobalHandle) {}

std::size_t Size(GlobalHandle handle) {
  return malloc_usable_size(handle);
}

}  // namespace

GlobalMemoryCalls NativeGlobalMemoryCalls() noexcept {
  return {Alloc, Lock, Unlock, Size, free};
}

}  // namespace zor
