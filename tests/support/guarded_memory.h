// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Memory for kernel tests: guard bytes around a buffer, and pages without access behind them.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zor::test {

/// A buffer that stands as close as its alignment allows to pages that fault on any access.
///
/// With `Edge::kEnd` the byte behind the buffer is the first of a no-access page; with
/// `Edge::kStart` the byte in front of it is the last of one. The other side is filled with a
/// pattern that `GuardsIntact` checks.
class GuardedMemory {
 public:
  enum class Edge { kStart, kEnd };

  GuardedMemory(std::size_t bytes, Edge edge, std::uint8_t fill = 0xA5);
  ~GuardedMemory();
  GuardedMemory(const GuardedMemory&) = delete;
  GuardedMemory& operator=(const GuardedMemory&) = delete;

  std::uint8_t* data() { return data_; }
  std::size_t size() const { return bytes_; }
  /// @return whether the bytes between the buffer and the accessible page's other end are as made.
  bool GuardsIntact() const;
  /// @return a copy of the buffer.
  std::vector<std::uint8_t> Copy() const { return {data_, data_ + bytes_}; }

 private:
  std::uint8_t* mapping_;  // [no access][accessible pages][no access]
  std::size_t mappingBytes_;
  std::size_t pageBytes_;
  std::size_t bytes_;
  std::uint8_t* data_;
};

/// Seeded noise; the same bytes on every target. A few extremes (0, 1, 254, 255) are mixed in.
class Noise {
 public:
  explicit Noise(std::uint64_t seed) : state_(seed * 2 + 1) {}
  std::uint32_t Next();
  std::uint8_t Byte();
  std::int32_t Range(std::int32_t low, std::int32_t high) {  ///< inclusive
    return low + static_cast<std::int32_t>(Next() % static_cast<std::uint32_t>(high - low + 1));
  }
  void Fill(std::uint8_t* bytes, std::size_t count);
  std::vector<std::uint8_t> Bytes(std::size_t count);

 private:
  std::uint64_t state_;
};

/// FNV-1a of a run of bytes, for recorded checksums.
std::uint64_t Fnv1a(const std::uint8_t* bytes, std::size_t count,
                    std::uint64_t hash = 0xCBF29CE484222325ull);

}  // namespace zor::test
