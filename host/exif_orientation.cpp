// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "exif_orientation.h"

#include <cstddef>
#include <cstring>

namespace zorhost {
namespace {

constexpr std::uint16_t kOrientationTag = 0x0112;

/// A TIFF block: numbers in the byte order that its first two bytes state.
class Tiff {
 public:
  Tiff(const std::uint8_t* bytes, std::size_t size) : bytes_(bytes), size_(size) {}
  std::uint32_t Get(std::size_t at, int count) const {
    if (at > size_ || size_ - at < static_cast<std::size_t>(count)) return 0;
    std::uint32_t value = 0;
    for (int i = 0; i < count; ++i) {
      value = value << 8 | bytes_[at + (bytes_[0] == 'M' ? i : count - 1 - i)];
    }
    return value;
  }
  int Orientation() const {
    if (size_ < 8) return 1;
    const std::size_t directory = Get(4, 4);
    const std::uint32_t entries = Get(directory, 2);
    for (std::uint32_t i = 0; i < entries; ++i) {
      const std::size_t entry = directory + 2 + std::size_t{12} * i;
      if (Get(entry, 2) != kOrientationTag) continue;
      const std::uint32_t value = Get(entry + 8, 2);
      return value >= 1 && value <= 8 ? static_cast<int>(value) : 1;
    }
    return 1;
  }

 private:
  const std::uint8_t* bytes_;
  std::size_t size_;
};

}  // namespace

int ExifOrientation(const std::vector<std::uint8_t>& jpeg) {
  // Segments: FF, kind, length in two bytes with itself counted; the entropy data ends the walk.
  std::size_t at = 2;
  while (at + 4 <= jpeg.size() && jpeg[at] == 0xFF && jpeg[at + 1] != 0xDA) {
    const std::size_t length = std::size_t{jpeg[at + 2]} << 8 | jpeg[at + 3];
    if (length < 2 || at + 2 + length > jpeg.size()) break;
    const std::uint8_t* body = &jpeg[at + 4];
    if (jpeg[at + 1] == 0xE1 && length > 8 && std::memcmp(body, "Exif\0\0", 6) == 0) {
      return Tiff(body + 6, length - 8).Orientation();
    }
    at += 2 + length;
  }
  return 1;
}

}  // namespace zorhost
