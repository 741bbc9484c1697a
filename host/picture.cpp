// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "picture.h"

#include <cstring>

namespace zorhost {

int RowBytes(Layout layout, int width) {
  switch (layout) {
    case Layout::kRgb24:
      return width * 3;
    case Layout::kRgb32:
      return width * 4;
    case Layout::kYuy2:
      return (width + 1) / 2 * 4;
    default:
      return width;
  }
}

int NaturalStride(Layout layout, int width) {
  switch (layout) {
    case Layout::kRgb24:
      return (24 * width + 31) / 32 * 4;
    case Layout::kGray8:
      return (8 * width + 31) / 32 * 4;
    default:
      return RowBytes(layout, width);
  }
}

Picture::Picture(Layout layout, int width, int height, int pitch, std::size_t spare)
    : layout_(layout), width_(width), height_(height) {
  const int row = RowBytes(layout, width);
  planes_[0] = {0, pitch > 0 ? pitch : row, row, height};
  std::size_t bytes = static_cast<std::size_t>(planes_[0].stride) * height;
  if (Traits(layout).planar) {
    // An odd size rounds up, as decoders and files have it. Without padding the chroma rows of an
    // odd width are half of the next even pitch.
    const int chromaStride = pitch > 0 ? pitch / 2 : (width + 1) / 2;
    for (int i = 1; i < 3; ++i) {
      planes_[i] = {bytes, chromaStride, (width + 1) / 2, (height + 1) / 2};
      bytes += static_cast<std::size_t>(chromaStride) * planes_[i].rows;
    }
  }
  bytes_.assign(bytes + spare, 0);
}

std::uint8_t* Picture::row(int plane, int y) {
  const Plane& p = planes_[plane];
  const int inMemory = bottomUp ? p.rows - 1 - y : y;
  return bytes_.data() + p.offset + static_cast<std::size_t>(inMemory) * p.stride;
}

const std::uint8_t* Picture::row(int plane, int y) const {
  return const_cast<Picture*>(this)->row(plane, y);
}

Picture Picture::Cropped(int width, int height, bool asBottomUp) const {
  Picture out(layout_, width, height);
  out.bottomUp = asBottomUp;
  out.hasAlpha = hasAlpha;
  for (int p = 0; p < planeCount(); ++p) {
    for (int y = 0; y < out.planes_[p].rows; ++y) {
      std::memcpy(out.row(p, y), row(p, y), static_cast<std::size_t>(out.planes_[p].rowBytes));
    }
  }
  return out;
}

}  // namespace zorhost
