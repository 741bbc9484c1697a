// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// A run's choices, taken from bytes.

#include <cstddef>
#include <cstdint>

namespace zor::fuzz {

/// Hands out bytes one after the other, and zeros behind the end.
class ByteReader {
 public:
  ByteReader(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

  bool AtEnd() const { return at_ == size_; }
  std::uint8_t Byte() { return AtEnd() ? std::uint8_t{0} : data_[at_++]; }
  /// @return a number from @p low to @p high, which lie less than 65536 apart.
  std::int32_t Range(std::int32_t low, std::int32_t high) {
    const auto span = static_cast<std::uint32_t>(high - low) + 1;
    std::uint32_t value = Byte();
    if (span > 256) value = value << 8 | Byte();
    return low + static_cast<std::int32_t>(value % span);
  }
  bool OneIn(std::int32_t n) { return Range(1, n) == n; }
  std::uint32_t Word() {
    std::uint32_t word = 0;
    for (int i = 0; i < 4; ++i) word = word << 8 | Byte();
    return word;
  }
  template <class T, std::size_t N>
  const T& Of(const T (&choices)[N]) {
    return choices[Range(0, static_cast<std::int32_t>(N) - 1)];
  }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
  std::size_t at_ = 0;
};

}  // namespace zor::fuzz
