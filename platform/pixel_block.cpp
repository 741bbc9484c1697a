// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/pixel_block.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "platform/memory.h"
#include "platform/osa_layer.h"

namespace zor {
namespace {

/// Stands at the start of an allocation:
///
///     | header | front guard | picture | up to 63 bytes | rear guard |
///              ^ 64                    ^ bytes
///
/// The size of the guard differs from block to block and kernels may write into it, so that nothing
/// at a fixed distance from the picture could lead back here; the list below does.
struct alignas(kLineBytes) BlockHeader {
  BlockHeader* next;
  std::uint8_t* pixels;
  std::int64_t bytes;
};

/// The blocks that are out, in chains by address.
class BlockList {
 public:
  BlockList() noexcept { OsaInitCriticalSection(&lock_); }

  void Add(BlockHeader* block) {
    const OsaGuard guard(&lock_);
    BlockHeader*& chain = ChainOf(block->pixels);
    block->next = chain;
    chain = block;
  }

  /// @return the header taken out of the list, or null for a pointer that is no block's.
  BlockHeader* Remove(const std::uint8_t* pixels) {
    const OsaGuard guard(&lock_);
    for (BlockHeader** link = &ChainOf(pixels); *link != nullptr; link = &(*link)->next) {
      if (BlockHeader* block = *link; block->pixels == pixels) {
        *link = block->next;
        return block;
      }
    }
    return nullptr;
  }

  /// @return the block's size, or 0 for a pointer that is no block's.
  std::int64_t BytesOf(const std::uint8_t* pixels) {
    const OsaGuard guard(&lock_);
    const BlockHeader* block = ChainOf(pixels);
    while (block != nullptr && block->pixels != pixels) block = block->next;
    return block != nullptr ? block->bytes : 0;
  }

 private:
  static constexpr std::size_t kChains = 1024;

  BlockHeader*& ChainOf(const std::uint8_t* pixels) {
    const auto address = reinterpret_cast<std::uintptr_t>(pixels);
    return chains_[(address / kLineBytes ^ address >> 16) % kChains];
  }

  OsaCriticalSection lock_;
  BlockHeader* chains_[kChains] = {};
};

/// The list is never destroyed: a host may let go of surfaces at its very end.
BlockList& Blocks() noexcept {
  alignas(BlockList) static unsigned char storage[sizeof(BlockList)];
  static BlockList& blocks = *new (storage) BlockList;
  return blocks;
}

/// @return the bytes of one row as the steps on a picture of this format read it.
std::int64_t RowBytes(const SurfaceDescription& description) {
  const std::int64_t width = std::max<std::int64_t>(description.width, 0);
  // Fills and scalers of these formats go by the bits per pixel, and know pixels of 1 to 4 bytes.
  const std::int64_t pixel = description.bitsPerPixel / 8;
  const std::int64_t byBits = pixel >= 1 && pixel <= 4 ? pixel * width : 0;
  switch (description.format) {
    case FORMAT_RGB24:
      return std::max(3 * width, byBits);
    case FORMAT_RGB32:
      return std::max(4 * width, byBits);
    case FORMAT_GRAY8:
      return std::max(width, byBits);
    case FORMAT_YUY2:
      return 4 * ((width + 1) / 2);
    default:
      return width;
  }
}

/// @return @p a x @p b, or a number above every block if that is larger. None is negative.
std::int64_t Product(std::int64_t a, std::int64_t b) {
  constexpr std::int64_t kTooLarge = std::int64_t{1} << 62;
  return a != 0 && b > kTooLarge / a ? kTooLarge : a * b;
}

}  // namespace

std::int64_t GuardBytes(std::int64_t width, std::int64_t height) noexcept {
  // What kernels are defined to reach at most:
  // - rows that start one pixel further left than the row before: 4 bytes a row, doubled for
  //   operands that walk their rows in both steps;
  // - a last row that is read or written in 4-byte steps though its pixels have fewer bytes, and
  //   tails that run on to a whole block: below 4 bytes a pixel of one row;
  // - whole vectors at the ends.
  return WholeLines(8 * std::clamp<std::int64_t>(height, 0, INT32_MAX) +
                    4 * std::clamp<std::int64_t>(width, 0, INT32_MAX) + 256);
}

std::int64_t CoveredBytes(const SurfaceDescription& description, std::int64_t reported) noexcept {
  const std::int64_t height = std::max<std::int64_t>(description.height, 0);
  const std::int64_t stride = std::max<std::int64_t>(description.stride, RowBytes(description));
  const std::int64_t luma = Product(stride, height);
  if (description.format != FORMAT_YUV420 && description.format != FORMAT_YVU420) {
    return std::max(luma, reported);
  }
  // The second chroma plane starts at most a quarter of the luma bytes behind the first, and has
  // at most the rounded-up halves of stride and height; with odd ones that is more than half of
  // the luma bytes for both planes.
  const std::int64_t chroma = Product((stride + 1) / 2, (height + 1) / 2);
  return std::max({luma + luma / 2, luma + luma / 4 + chroma, reported});
}

std::uint8_t* AllocatePixelBlock(std::int64_t bytes, std::int64_t width, std::int64_t height,
                                 BlockContents contents) noexcept {
  if (bytes < 1 || bytes > kMaxBlockBytes) return nullptr;
  const std::int64_t guard = GuardBytes(width, height);
  const std::int64_t total =
      static_cast<std::int64_t>(sizeof(BlockHeader)) + guard + WholeLines(bytes) + guard;
  if (static_cast<std::uint64_t>(total) > SIZE_MAX) return nullptr;
  auto* const start = static_cast<std::uint8_t*>(AllocateBytes(static_cast<std::size_t>(total)));
  if (start == nullptr) return nullptr;

  std::uint8_t* const front = start + sizeof(BlockHeader);
  std::uint8_t* const pixels = front + guard;
  if (contents == BlockContents::kZero) {
    std::memset(front, 0, static_cast<std::size_t>(start + total - front));
  } else {
    std::memset(front, 0, static_cast<std::size_t>(guard));
    std::memset(pixels + bytes, 0, static_cast<std::size_t>(start + total - (pixels + bytes)));
  }
  Blocks().Add(new (start) BlockHeader{nullptr, pixels, bytes});
  return pixels;
}

void FreePixelBlock(std::uint8_t* pixels) noexcept {
  if (pixels != nullptr) FreeBytes(Blocks().Remove(pixels));
}

std::int64_t PixelBlockBytes(const std::uint8_t* pixels) noexcept {
  return Blocks().BytesOf(pixels);
}

}  // namespace zor
