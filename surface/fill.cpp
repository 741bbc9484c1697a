// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "surface/fill.h"

#include <cstddef>
#include <cstring>

namespace zor {
namespace {

/// A rectangle of a picture in 64 bits, or why there is none.
struct Area {
  enum class Kind { kOutside, kEmpty, kSome } kind;
  std::int64_t left, top, width, height;
};

Area AreaOf(std::int32_t width, std::int32_t height, const RECT* rect) {
  const RECT whole = {0, 0, width, height};
  const RECT& r = rect != nullptr ? *rect : whole;
  if (rect != nullptr && (r.left < 0 || r.top < 0 || r.right > width || r.bottom > height)) {
    return {Area::Kind::kOutside, 0, 0, 0, 0};
  }
  const std::int64_t w = std::int64_t{r.right} - r.left;
  const std::int64_t h = std::int64_t{r.bottom} - r.top;
  return {w < 1 || h < 1 ? Area::Kind::kEmpty : Area::Kind::kSome, r.left, r.top, w, h};
}

void FillBytes(std::uint8_t* start, std::int64_t stride, std::int64_t width, std::int64_t height,
               std::uint8_t value) {
  for (std::int64_t y = 0; y < height; ++y) {
    std::memset(start + y * stride, value, static_cast<std::size_t>(width));
  }
}

std::uint8_t HoldByte(std::int32_t value) {
  return static_cast<std::uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value);
}

/// A 3-byte row leaves the value's top byte behind its last pixel.
void SpillByte(std::uint8_t* end, std::uint32_t value, const std::uint8_t* memoryEnd) {
  if (end < memoryEnd) *end = static_cast<std::uint8_t>(value >> 24);
}

/// Copies the pattern at the start of a row over the rest of it, doubling what is done.
void SpreadPattern(std::uint8_t* row, std::size_t done, std::size_t bytes) {
  while (done < bytes) {
    const std::size_t n = done < bytes - done ? done : bytes - done;
    std::memcpy(row + done, row, n);
    done += n;
  }
}

}  // namespace

FillYuv FillColourToYuv(std::uint32_t colour) noexcept {
  const auto b = static_cast<std::int32_t>(colour & 255);
  const auto g = static_cast<std::int32_t>(colour >> 8 & 255);
  const auto r = static_cast<std::int32_t>(colour >> 16 & 255);
  return {HoldByte(((66 * r + 129 * g + 25 * b + 128) >> 8) + 16),
          HoldByte(((112 * b - 38 * r - 74 * g + 128) >> 8) + 128),
          HoldByte(((112 * r - 94 * g - 18 * b + 128) >> 8) + 128)};
}

void FillRow32(std::uint8_t* row, std::uint32_t value, std::int32_t count) noexcept {
  if (count <= 0) return;
  std::memcpy(row, &value, 4);
  SpreadPattern(row, 4, 4 * static_cast<std::size_t>(count));
}

void FillRow24(std::uint8_t* row, std::uint32_t value, std::int32_t count,
               const std::uint8_t* memoryEnd) noexcept {
  if (count <= 0) return;
  const std::size_t bytes = 3 * static_cast<std::size_t>(count);
  std::memcpy(row, &value, 3);
  SpreadPattern(row, 3, bytes);
  SpillByte(row + bytes, value, memoryEnd);
}

void FillRow16(std::uint8_t* row, std::uint32_t value, std::int32_t count) noexcept {
  if (count <= 0) return;
  std::memcpy(row, &value, 2);
  SpreadPattern(row, 2, 2 * static_cast<std::size_t>(count));
}

void FillRows(std::uint8_t* start, std::int32_t stride, std::int32_t bytesPerPixel,
              std::int32_t width, std::int32_t height, std::uint32_t value,
              const std::uint8_t* memoryEnd) noexcept {
  const std::int32_t bytes = bytesPerPixel == 102 ? 2 : bytesPerPixel;
  if (bytes < 2 || bytes > 4 || width <= 0) return;
  const std::size_t rowBytes = static_cast<std::size_t>(width) * static_cast<std::size_t>(bytes);
  for (std::int64_t y = 0; y < height; ++y) {
    std::uint8_t* row = start + y * stride;
    if (value == 0) {
      std::memset(row, 0, rowBytes);
    } else if (y > 0 && stride > 0 && static_cast<std::size_t>(stride) >= rowBytes) {
      std::memcpy(row, start, rowBytes);
      if (bytes == 3) SpillByte(row + rowBytes, value, memoryEnd);
    } else if (bytes == 3) {
      FillRow24(row, value, width, memoryEnd);
    } else if (bytes == 2) {
      FillRow16(row, value, width);
    } else {
      FillRow32(row, value, width);
    }
  }
}

std::uint32_t FillRectRgb(std::uint8_t* pixels, std::int32_t width, std::int32_t height,
                          std::int32_t stride, const RECT* rect, std::int32_t bitsPerPixel,
                          std::uint32_t colour) noexcept {
  if (pixels == nullptr) return 0;
  const Area area = AreaOf(width, height, rect);
  if (area.kind != Area::Kind::kSome) return area.kind == Area::Kind::kEmpty ? 1 : 0;
  const std::uint32_t word = (colour >> 16 & 255) + (colour & 255) * 65536 + (colour & 0xFF00);
  const std::int32_t bytes = bitsPerPixel / 8;
  // The only size above 4 that is painted, 102, counts as 2 in the rows but as 102 in the corner's
  // place, which may so lie outside of the picture.
  const std::int64_t last = (area.top + area.height - 1) * stride + area.left * bytes;
  if (bytes > 4 && last + 2 * area.width > std::int64_t{stride} * height) return 1;
  FillRows(pixels + area.top * stride + area.left * bytes, stride, bytes,
           static_cast<std::int32_t>(area.width), static_cast<std::int32_t>(area.height), word,
           pixels + std::int64_t{stride} * height);
  return 1;
}

std::uint32_t FillRectYuv420(std::uint8_t* pixels, std::int32_t width, std::int32_t height,
                             std::int32_t stride, const RECT* rect, std::uint32_t colour) noexcept {
  if (pixels == nullptr) return 0;
  const Area area = AreaOf(width, height, rect);
  if (area.kind != Area::Kind::kSome) return area.kind == Area::Kind::kEmpty ? 1 : 0;
  const FillYuv yuv = FillColourToYuv(colour);
  const std::int64_t s = stride;
  const std::int64_t plane = s * height;
  std::uint8_t* first = pixels + plane;
  std::uint8_t* second = first + plane / 4;
  if (rect == nullptr) {
    FillBytes(pixels, plane, plane, 1, yuv.y);
    const std::int64_t chroma = (s / 2) * height / 2;
    FillBytes(first, chroma, chroma, 1, yuv.u);
    FillBytes(second, chroma, chroma, 1, yuv.v);
    return 1;
  }
  // Odd rectangles leave their last chroma column or row; odd corners round down.
  const std::int64_t corner = (area.top / 2) * s / 2 + area.left / 2;
  FillBytes(pixels + area.top * s + area.left, s, area.width, area.height, yuv.y);
  FillBytes(first + corner, s / 2, area.width / 2, area.height / 2, yuv.u);
  FillBytes(second + corner, s / 2, area.width / 2, area.height / 2, yuv.v);
  return 1;
}

std::uint32_t FillRectPacked422(std::uint8_t* pixels, std::int32_t width, std::int32_t height,
                                std::int32_t stride, const RECT* rect,
                                std::uint32_t colour) noexcept {
  if (pixels == nullptr) return 0;
  const Area area = AreaOf(width, height, rect);
  if (area.kind != Area::Kind::kSome) return area.kind == Area::Kind::kEmpty ? 1 : 0;
  const FillYuv yuv = FillColourToYuv(colour);
  const std::uint8_t word[4] = {yuv.u, yuv.y, yuv.v, yuv.y};
  const auto pairs = static_cast<std::size_t>(area.width >> 1);
  for (std::int64_t y = 0; y < area.height; ++y) {
    std::uint8_t* row = pixels + y * stride;
    if (pairs > 0) {
      std::memcpy(row, word, 4);
      SpreadPattern(row, 4, 4 * pairs);
    }
    if (area.width % 2 != 0) {
      row[4 * pairs] = yuv.y;
      row[4 * pairs + 1] = yuv.v;
    }
  }
  return 1;
}

}  // namespace zor
