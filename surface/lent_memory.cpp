// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "surface/lent_memory.h"

#include <cstddef>
#include <cstring>

#include "platform/pixel_block.h"

namespace zor {

LentMemory::LentMemory(std::uint8_t* memory, std::int64_t bytes, std::int64_t reach, bool drifts,
                       std::int64_t width, std::int64_t height) noexcept
    : memory_(memory), bytes_(bytes), target_(memory) {
  if (reach <= bytes && !drifts) return;
  const std::int64_t whole = reach > bytes ? reach : bytes;
  target_ = scratch_ = AllocatePixelBlock(whole, width, height, BlockContents::kZero);
  if (scratch_ != nullptr) std::memcpy(scratch_, memory_, static_cast<std::size_t>(bytes_));
}

LentMemory::~LentMemory() {
  FreePixelBlock(scratch_);
}

void LentMemory::Finish() noexcept {
  if (scratch_ != nullptr) std::memcpy(memory_, scratch_, static_cast<std::size_t>(bytes_));
}

}  // namespace zor
