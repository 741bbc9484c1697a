// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/global_memory.h"

#include "platform/system_calls.h"

namespace zor {
namespace {

GlobalHandle Alloc(std::uint32_t flags, std::size_t bytes) {
  return ::GlobalAlloc(flags, bytes);
}
void* Lock(GlobalHandle handle) {
  return ::GlobalLock(handle);
}
void Unlock(GlobalHandle handle) {
  ::GlobalUnlock(handle);
}
std::size_t Size(GlobalHandle handle) {
  return handle != nullptr ? ::GlobalSize(handle) : 0;
}
void Free(GlobalHandle handle) {
  ::GlobalFree(handle);
}

}  // namespace

GlobalMemoryCalls NativeGlobalMemoryCalls() noexcept {
  return {Alloc, Lock, Unlock, Size, Free};
}

}  // namespace zor
