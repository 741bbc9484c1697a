// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/memory.h"

#include <algorithm>
#include <atomic>

#include "platform/system_calls.h"

namespace zor {
namespace {

std::atomic<std::uint64_t> refusedRequest{0};
std::atomic<std::uint64_t> requests{0};
std::atomic<std::int64_t> liveBlocks{0};

}  // namespace

void* AllocateBytes(std::size_t bytes) noexcept {
  if (++requests == refusedRequest) return nullptr;
  void* block = CurrentSystemCalls().memory.allocate(std::max<std::size_t>(bytes, 1));
  if (block != nullptr) ++liveBlocks;
  return block;
}

void FreeBytes(void* block) noexcept {
  if (block == nullptr) return;
  --liveBlocks;
  CurrentSystemCalls().memory.free(block);
}

void RefuseAllocation(std::uint64_t index) noexcept {
  requests = 0;
  refusedRequest = index;
}

std::uint64_t CountAllocations() noexcept {
  return requests;
}

std::int64_t LiveAllocations() noexcept {
  return liveBlocks;
}

}  // namespace zor
