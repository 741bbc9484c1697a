// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "backdrop.h"

#include <cstring>

namespace zorhost {
namespace {

constexpr std::uint8_t kWhite = 255;

std::size_t BlockBytes(const SurfaceDescription& description) {
  const std::size_t bytes = static_cast<std::size_t>(description.stride) * description.height;
  return description.format == FORMAT_YUV420 ? bytes * 3 / 2 : bytes;
}

std::uint8_t* PixelsOf(IZorSurface& surface) {
  std::uint8_t* pixels = nullptr;
  Check(surface.GetPixels(&pixels), "GetPixels");
  return pixels;
}

std::vector<std::uint8_t> BytesOf(IZorSurface& surface) {
  const std::uint8_t* pixels = PixelsOf(surface);
  return {pixels, pixels + BlockBytes(Describe(surface))};
}

/// Fill has other chroma for planar surfaces than conversions have, and none for gray ones: the
/// colour is filled in as RGB and converted.
std::vector<std::uint8_t> Filled(const Library& library, const SurfaceDescription& shape,
                                 std::uint32_t colour) {
  const bool rgb = shape.format == FORMAT_RGB24 || shape.format == FORMAT_RGB32;
  // In RGB surfaces red is the lowest byte of the word.
  const std::uint32_t word = colour >> 16 | (colour & 0xFF00) | (colour & 0xFF) << 16;
  const Ref<IZorSurface> surface = library.Blank(
      shape.format == FORMAT_RGB24 ? Layout::kRgb24 : Layout::kRgb32, shape.width, shape.height);
  Check(surface->Fill(nullptr, word), "Fill");
  if (!rgb) Check(surface->ConvertNow(FORMAT_YUV420), "rgb32 to yuv420");
  std::vector<std::uint8_t> bytes = BytesOf(*surface.get());
  if (shape.format == FORMAT_RGB32) {
    for (std::size_t i = 3; i < bytes.size(); i += 4) bytes[i] = 255;  // opaque
  } else if (shape.format == FORMAT_GRAY8) {
    bytes.assign(BlockBytes(shape), bytes.front());
  }
  return bytes;
}

}  // namespace

Backdrop::Backdrop(const Library& library, Layout layout, int width, int height, int degrees,
                   std::uint32_t colour) {
  const Ref<IZorSurface> white = library.Blank(layout, width, height);
  std::memset(PixelsOf(*white.get()), kWhite, BlockBytes(Describe(*white.get())));
  Check(white->Rotate(degrees), "Rotate");
  covered_ = BytesOf(*white.get());
  colour_ = Filled(library, Describe(*white.get()), colour);
}

void Backdrop::Paint(IZorSurface& surface) const {
  // Packed rows may lie further apart than in a new surface; planes always follow each other.
  const SurfaceDescription shape = Describe(surface);
  const bool planar = shape.format == FORMAT_YUV420;
  const int rows = planar ? 1 : shape.height;
  const std::size_t step = covered_.size() / static_cast<std::size_t>(rows);
  const std::size_t count =
      planar ? step : static_cast<std::size_t>(shape.width) * shape.bitsPerPixel / 8;
  for (int y = 0; y < rows; ++y) {
    const std::size_t row = step * static_cast<std::size_t>(y);
    std::uint8_t* pixels = PixelsOf(surface) + static_cast<std::size_t>(shape.stride) * y;
    for (std::size_t i = 0; i < count; ++i) {
      if (covered_[row + i] != kWhite) pixels[i] = colour_[row + i];
    }
  }
}

}  // namespace zorhost
