// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "bmp.h"

#include <algorithm>
#include <cstring>

#include "exit_code.h"

namespace zorhost {
namespace {

constexpr std::size_t kFileHeader = 14;
constexpr std::size_t kInfoHeader = 40;
constexpr std::int32_t kLargestSide = 65535;

std::uint32_t Get(const std::vector<std::uint8_t>& bytes, std::size_t at, int count) {
  std::uint32_t value = 0;
  for (int i = count - 1; i >= 0; --i) value = value << 8 | bytes[at + i];
  return value;
}

void Put(std::vector<std::uint8_t>& bytes, std::size_t at, std::uint32_t value, int count) {
  for (int i = 0; i < count; ++i) bytes[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
}

std::size_t RowOf(int width, int bits) {
  return (static_cast<std::size_t>(width) * bits + 31) / 32 * 4;
}

struct Palette {
  std::uint8_t colours[256][4] = {};
  bool gray = true;
};

Palette ReadPalette(const std::vector<std::uint8_t>& file, std::size_t at, std::size_t entries) {
  Palette palette;
  for (std::size_t i = 0; i < entries && at + 4 <= file.size(); ++i, at += 4) {
    std::memcpy(palette.colours[i], &file[at], 4);
    for (int c = 0; c < 3; ++c) palette.gray &= palette.colours[i][c] == i;
  }
  return palette;
}

}  // namespace

Picture DecodeBmp(const std::vector<std::uint8_t>& file, const std::string& name) {
  if (file.size() < kFileHeader + kInfoHeader || file[0] != 'B' || file[1] != 'M') {
    throw InputError(name + ": is not a bitmap file");
  }
  const std::uint32_t pixels = Get(file, 10, 4);
  const std::uint32_t headerSize = Get(file, 14, 4);
  const std::int32_t width = static_cast<std::int32_t>(Get(file, 18, 4));
  const std::int32_t signedHeight = static_cast<std::int32_t>(Get(file, 22, 4));
  const int bits = static_cast<int>(Get(file, 28, 2));
  const std::uint32_t compression = Get(file, 30, 4);
  if (headerSize < kInfoHeader || headerSize > file.size()) {
    throw InputError(name + ": bitmap header of a kind the host doesn't read");
  }
  // Kind 3 names its masks; with 32 bits those of every common writer are B, G, R, A.
  if (compression != 0 && !(compression == 3 && bits == 32)) {
    throw InputError(name + ": compressed bitmaps are not read");
  }
  if (bits != 8 && bits != 24 && bits != 32) {
    throw InputError(name + ": bitmap of " + std::to_string(bits) +
                     " bits a pixel; the host reads 8, 24 and 32");
  }
  if (width < 1 || width > kLargestSide || signedHeight == 0 || signedHeight > kLargestSide ||
      signedHeight < -kLargestSide) {
    throw InputError(name + ": bitmap of an impossible size");
  }
  const int height = signedHeight < 0 ? -signedHeight : signedHeight;
  const std::size_t stride = RowOf(width, bits);
  if (pixels > file.size() || file.size() - pixels < stride * height) {
    throw InputError(name + ": truncated bitmap (" + std::to_string(file.size()) + " bytes, " +
                     std::to_string(pixels + stride * height) + " wanted)");
  }
  const Palette palette =
      bits == 8
          ? ReadPalette(file, kFileHeader + headerSize,
                        pixels > kFileHeader + headerSize
                            ? std::min<std::size_t>(256, (pixels - kFileHeader - headerSize) / 4)
                            : 0)
          : Palette{};
  const Layout layout = bits == 32     ? Layout::kRgb32
                        : bits == 24   ? Layout::kRgb24
                        : palette.gray ? Layout::kGray8
                                       : Layout::kRgb24;
  Picture picture(layout, width, height);
  picture.bottomUp = signedHeight > 0;
  for (int y = 0; y < height; ++y) {
    const std::uint8_t* from = &file[pixels + stride * y];
    std::uint8_t* to = picture.data() + static_cast<std::size_t>(picture.pitch()) * y;
    if (bits == 8 && layout == Layout::kRgb24) {
      for (int x = 0; x < width; ++x) std::memcpy(to + 3 * x, palette.colours[from[x]], 3);
    } else {
      std::memcpy(to, from, static_cast<std::size_t>(RowBytes(layout, width)));
    }
  }
  return picture;
}

std::vector<std::uint8_t> EncodeBmp(const Picture& picture) {
  const int bits = Traits(picture.layout()).bitsPerPixel;
  const std::size_t stride = RowOf(picture.width(), bits);
  const std::size_t paletteBytes = bits == 8 ? 1024 : 0;
  const std::size_t pixels = kFileHeader + kInfoHeader + paletteBytes;
  std::vector<std::uint8_t> file(pixels + stride * picture.height());
  file[0] = 'B';
  file[1] = 'M';
  Put(file, 2, static_cast<std::uint32_t>(file.size()), 4);
  Put(file, 10, static_cast<std::uint32_t>(pixels), 4);
  Put(file, 14, kInfoHeader, 4);
  Put(file, 18, static_cast<std::uint32_t>(picture.width()), 4);
  const std::uint32_t height = static_cast<std::uint32_t>(picture.height());
  Put(file, 22, picture.bottomUp ? height : 0u - height, 4);
  Put(file, 26, 1, 2);
  Put(file, 28, static_cast<std::uint32_t>(bits), 2);
  Put(file, 34, static_cast<std::uint32_t>(stride * picture.height()), 4);
  for (std::size_t i = 0; i < paletteBytes / 4; ++i) {
    for (int c = 0; c < 3; ++c) {
      file[kFileHeader + kInfoHeader + 4 * i + c] = static_cast<std::uint8_t>(i);
    }
  }
  for (int y = 0; y < picture.height(); ++y) {
    std::memcpy(&file[pixels + stride * y],
                picture.data() + static_cast<std::size_t>(picture.pitch()) * y,
                static_cast<std::size_t>(picture.plane(0).rowBytes));
  }
  return file;
}

}  // namespace zorhost
