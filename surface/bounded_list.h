// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// A list with a bound.

#include <cstddef>
#include <list>
#include <new>
#include <stdexcept>

namespace zor {

/// A list that refuses to outgrow @p Bound elements. @tparam T element, cheap to copy.
template <class T, std::size_t Bound>
class BoundedList : public std::list<T> {
 public:
  /// Appends. @return false without memory. @throws std::length_error "list<T> too long" when full.
  bool Append(const T& value) {
    if (this->size() >= Bound) throw std::length_error("list<T> too long");
    try {
      this->push_back(value);
    } catch (const std::bad_alloc&) {
      return false;
    }
    return true;
  }
};

}  // namespace zor
