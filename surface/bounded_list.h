// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// A list with a bound, in memory that a test can refuse.

#include <algorithm>
#include <cstddef>
#include <list>
#include <new>
#include <stdexcept>

#include "platform/memory.h"

namespace zor {

/// Gives a container the memory of platform/memory.h.
template <class T>
struct PlatformAllocator {
  using value_type = T;

  PlatformAllocator() noexcept = default;
  template <class U>
  PlatformAllocator(const PlatformAllocator<U>&) noexcept {}

  T* allocate(std::size_t count) {
    void* block = AllocateBytes(count * sizeof(T));
    if (block == nullptr) throw std::bad_alloc();
    return static_cast<T*>(block);
  }
  void deallocate(T* block, std::size_t) noexcept { FreeBytes(block); }

  template <class U>
  bool operator==(const PlatformAllocator<U>&) const noexcept {
    return true;
  }
};

/// A list that refuses to outgrow @p Bound elements. @tparam T element, cheap to copy.
template <class T, std::size_t Bound>
class BoundedList : public std::list<T, PlatformAllocator<T>> {
 public:
  using Base = std::list<T, PlatformAllocator<T>>;
  static constexpr std::size_t kBound = Bound;

  /// Appends. @return false without memory. @throws std::length_error "list<T> too long" when full.
  bool Append(const T& value) {
    if (this->size() >= bound_) throw std::length_error("list<T> too long");
    try {
      this->push_back(value);
    } catch (const std::bad_alloc&) {
      return false;
    }
    return true;
  }

  /// Test hook: lets this list grow to @p bound elements only.
  void LowerBound(std::size_t bound) noexcept { bound_ = std::min(bound, Bound); }

 private:
  std::size_t bound_ = Bound;
};

}  // namespace zor
