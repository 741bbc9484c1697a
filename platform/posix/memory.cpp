// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <stdlib.h>

#include "platform/system_calls.h"

namespace zor {
namespace {

// Not aligned_alloc: that wants whole multiples of 64, and the bytes added would hide an access
// behind a block from the sanitizers.
void* Allocate(std::size_t bytes) {
  void* block = nullptr;
  return posix_memalign(&block, 64, bytes) == 0 ? block : nullptr;
}

}  // namespace

MemoryCalls NativeMemoryCalls() noexcept {
  return {Allocate, free};
}

}  // namespace zor
