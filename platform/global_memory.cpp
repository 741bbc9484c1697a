// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/global_memory.h"

#include "platform/system_calls.h"

namespace zor {

GlobalHandle GlobalAlloc(std::uint32_t flags, std::size_t bytes) noexcept {
  return CurrentSystemCalls().globalMemory.alloc(flags, bytes);
}

void* GlobalLock(GlobalHandle handle) noexcept {
  return CurrentSystemCalls().globalMemory.lock(handle);
}

void GlobalUnlock(GlobalHandle handle) noexcept {
  CurrentSystemCalls().globalMemory.unlock(handle);
}

std::size_t GlobalSize(GlobalHandle handle) noexcept {
  return CurrentSystemCalls().globalMemory.size(handle);
}

void GlobalFree(GlobalHandle handle) noexcept {
  CurrentSystemCalls().globalMemory.free(handle);
}

}  // namespace zor
