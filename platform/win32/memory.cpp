// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <malloc.h>

#include "platform/system_calls.h"

namespace zor {
namespace {

void* Allocate(std::size_t bytes) {
  return _aligned_malloc(bytes, 64);
}
void Free(void* block) {
  _aligned_free(block);
}

}  // namespace

MemoryCalls NativeMemoryCalls() noexcept {
  return {Allocate, Free};
}

}  // namespace zor
