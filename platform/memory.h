// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// All memory that the library takes from the heap. Every taker tests for null: nothing here
/// throws. A test can refuse the k-th request.

#include <cstddef>
#include <cstdint>

namespace zor {

/// The alignment of every block: a cache line, and the widest vector.
inline constexpr int kLineBytes = 64;

/// @return a number of bytes rounded up to whole lines, so that what stands behind is aligned too.
template <class Integer>
constexpr Integer WholeLines(Integer bytes) noexcept {
  return (bytes + kLineBytes - 1) / kLineBytes * kLineBytes;
}

/// @return a block of at least @p bytes, aligned to `kLineBytes`, or null.
void* AllocateBytes(std::size_t bytes) noexcept;
/// Frees a block of `AllocateBytes`; null is fine.
void FreeBytes(void* block) noexcept;

/// Test hook: refuses request number @p index from now on, counted from 1; 0 refuses none.
void RefuseAllocation(std::uint64_t index) noexcept;
/// Test hook: @return the number of requests since the last `RefuseAllocation`.
std::uint64_t CountAllocations() noexcept;
/// Test hook: @return the blocks that are out at present.
std::int64_t LiveAllocations() noexcept;

/// An array for the length of a scope, for tables and scratch rows. Elements start unset.
template <class T>
class WorkArray {
 public:
  explicit WorkArray(std::uint64_t count) noexcept
      : data_(count > SIZE_MAX / sizeof(T)
                  ? nullptr
                  : static_cast<T*>(AllocateBytes(static_cast<std::size_t>(count) * sizeof(T)))) {}
  ~WorkArray() { FreeBytes(data_); }
  WorkArray(const WorkArray&) = delete;
  WorkArray& operator=(const WorkArray&) = delete;

  /// @return whether the memory was given.
  explicit operator bool() const noexcept { return data_ != nullptr; }
  T* data() noexcept { return data_; }
  T& operator[](std::size_t i) noexcept { return data_[i]; }

 private:
  T* data_;
};

}  // namespace zor
