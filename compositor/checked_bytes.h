// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// A block whose bounds hold at every access.

#include <cstdint>

#include "compositor/blend.h"
#include "compositor/blend_statement.h"

namespace zor {

/// A run of offsets, half open.
struct Extent {
  std::int64_t first;
  std::int64_t end;
};

/// @return whether a run lies in a block; an empty run always does.
inline bool Inside(const BlockBytes& block, const Extent& run) noexcept {
  return run.first >= run.end || (run.first >= 0 && run.end <= block.size);
}

/// @return whether three runs of one block lie in it without touching one another, so that it
///         doesn't show in which order they are worked.
inline bool InsideApart(const BlockBytes& block, const Extent& y, const Extent& u,
                        const Extent& v) noexcept {
  return Inside(block, y) && Inside(block, u) && Inside(block, v) && y.end <= u.first &&
         u.end <= v.first;
}

/// What is read from outside of the block is 0; what is written there is dropped.
class CheckedBytes {
 public:
  explicit CheckedBytes(const BlockBytes& block) noexcept : block_(block) {}

  std::uint8_t operator[](std::int64_t at) const noexcept {
    return Holds(at) ? block_.data[at] : 0;
  }
  void Put(std::int64_t at, std::uint8_t value) const noexcept {
    if (Holds(at)) block_.data[at] = value;
  }
  bool SharesMemoryWith(const CheckedBytes& other) const noexcept {
    return block_.data == other.block_.data;
  }

 private:
  bool Holds(std::int64_t at) const noexcept { return at >= 0 && at < block_.size; }

  BlockBytes block_;
};

/// The same face for walks that are known to stay inside.
class InsideBytes {
 public:
  explicit InsideBytes(const BlockBytes& block) noexcept : data_(block.data) {}

  std::uint8_t operator[](std::int64_t at) const noexcept { return data_[at]; }
  void Put(std::int64_t at, std::uint8_t value) const noexcept { data_[at] = value; }

 private:
  std::uint8_t* data_;
};

/// @return the blend of a child's sample over a target's.
template <class Bytes>
std::uint8_t BlendAt(const Bytes& target, std::int64_t to, const Bytes& child, std::int64_t from,
                     std::uint32_t weight) noexcept {
  return BlendSample(child[from], target[to], weight);
}

}  // namespace zor
