// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The host's memory as the target of an operation.

#include <cstdint>

namespace zor {

/// Keeps an operation inside of a host's memory.
///
/// An operation whose extent lies in the memory writes there directly. Otherwise it works on a
/// scratch block that starts with the host's bytes and has guards on both sides, and `Finish`
/// copies back what belongs to the host.
class LentMemory {
 public:
  /// @param bytes of the host's memory that may be written.
  /// @param reach bytes from @p memory on that the operation may write.
  /// @param drifts whether it may also write in front of @p memory.
  /// @param width, height of the picture, from which the guards are taken.
  LentMemory(std::uint8_t* memory, std::int64_t bytes, std::int64_t reach, bool drifts,
             std::int64_t width, std::int64_t height) noexcept;
  ~LentMemory();
  LentMemory(const LentMemory&) = delete;
  LentMemory& operator=(const LentMemory&) = delete;

  /// @return where to write, or null without memory for a scratch block.
  std::uint8_t* Target() const noexcept { return target_; }
  /// Copies the host's part of the scratch block back, if there is one.
  void Finish() noexcept;

 private:
  std::uint8_t* memory_;
  std::int64_t bytes_;
  std::uint8_t* scratch_ = nullptr;
  std::uint8_t* target_;
};

}  // namespace zor
