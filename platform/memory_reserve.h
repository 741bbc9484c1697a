// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Large blocks that were let go and wait for the next taker.
///
/// A heap asks the operating system for each large block and hands it back when it is freed. Every
/// page of a new one is then faulted in and zeroed, which takes several times as long as writing a
/// picture into it. A video engine asks for blocks of the same few sizes frame after frame.

#include <array>
#include <atomic>
#include <cstddef>

#include "platform/system_calls.h"

namespace zor {

/// An allocator in front of another one. Calls may come from any thread; none waits for another.
class MemoryReserve {
 public:
  /// Blocks below this come and go as the allocator behind has them.
  static constexpr std::size_t kLeastBytes = std::size_t{128} << 10;
  /// All that waits at one time is at most this.
  static constexpr std::size_t kMostBytes = std::size_t{sizeof(void*) == 8 ? 128 : 64} << 20;
  /// As many blocks wait at most. One that nobody takes leaves after as many others came.
  static constexpr std::size_t kPlaces = 32;

  /// @param behind the allocator that blocks are from and go back to; its blocks are aligned to 64.
  constexpr explicit MemoryReserve(const MemoryCalls& behind) noexcept : behind_(behind) {}
  MemoryReserve(const MemoryReserve&) = delete;
  MemoryReserve& operator=(const MemoryReserve&) = delete;
  ~MemoryReserve() { Close(); }

  /// @return a block of at least @p bytes, aligned to 64, whose contents are anything; or null, if
  ///         there is none even when nothing waits any more.
  void* Allocate(std::size_t bytes) noexcept;
  /// Takes back a block of `Allocate`.
  void Free(void* block) noexcept;
  /// Gives everything that waits back, now and from here on.
  void Close() noexcept;

 private:
  /// Stands in front of each block and keeps it aligned.
  struct alignas(64) Header {
    std::size_t bytes;
  };

  Header* TakeWaiting(std::size_t bytes) noexcept;
  void KeepWaiting(Header* block) noexcept;
  bool EmptyPlace(std::size_t place) noexcept;
  bool EmptyAllPlaces() noexcept;

  MemoryCalls behind_;
  std::array<std::atomic<Header*>, kPlaces> places_{};
  std::atomic<std::size_t> nextPlace_{0};  // filled next: what waits there has waited longest
  std::atomic<std::size_t> waitingBytes_{0};
  std::atomic<bool> closed_{false};
};

/// The system's heap behind a reserve that lasts as long as the library is loaded.
MemoryCalls ReservedMemoryCalls() noexcept;

}  // namespace zor
