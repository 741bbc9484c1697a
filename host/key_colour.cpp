// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "key_colour.h"

#include <algorithm>
#include <cmath>

namespace zorhost {
namespace {

/// Whole numbers around a value that are a byte.
struct Span {
  explicit Span(double middle)
      : first(std::clamp(static_cast<int>(std::lround(middle)) - 4, 0, 255)),
        last(std::clamp(static_cast<int>(std::lround(middle)) + 4, 0, 255)) {}
  int first;
  int last;
};

}  // namespace

YuvSample KeySample(std::uint32_t backColour) {
  const double b = backColour & 255;
  const double g = backColour >> 8 & 255;
  const double r = backColour >> 16 & 255;
  return {static_cast<int>(0.299 * r + 0.587 * g + 0.114 * b) + 16,
          static_cast<int>(0.5 * b - (0.169 * r + 0.331 * g) + 128),
          static_cast<int>(0.5 * r - 0.419 * g - 0.081 * b + 128)};
}

std::optional<std::uint32_t> BackColourFor(const YuvSample& sample) {
  // The inverse of the matrix gives the neighbourhood; truncation leaves a few to try.
  const double luma = sample.luma - 16;
  const double blue = luma + (sample.first - 128) * 1.772;
  const double red = luma + (sample.second - 128) * 1.402;
  const Span r(red);
  const Span g((luma - 0.299 * red - 0.114 * blue) / 0.587);
  const Span b(blue);
  for (int i = r.first; i <= r.last; ++i) {
    for (int j = g.first; j <= g.last; ++j) {
      for (int k = b.first; k <= b.last; ++k) {
        const auto colour = static_cast<std::uint32_t>(i << 16 | j << 8 | k);
        if (KeySample(colour) == sample) return colour;
      }
    }
  }
  return std::nullopt;
}

YuvSample SampleOf(const Library& library, std::uint32_t colour) {
  constexpr int kSide = 16;
  Picture picture(Layout::kRgb24, kSide, kSide);
  picture.bottomUp = true;
  for (std::size_t i = 0; i < picture.size(); ++i) {
    picture.data()[i] = static_cast<std::uint8_t>(colour >> 8 * (i % 3));
  }
  const Ref<IZorSurface> surface = library.HandIn(picture);
  Check(surface->QueueConvert(FORMAT_YUV420), "rgb24 to yuv420");
  std::uint8_t* pixels = nullptr;
  Check(surface->GetPixels(&pixels), "GetPixels");
  return {pixels[0], pixels[kSide * kSide], pixels[kSide * kSide * 5 / 4]};
}

}  // namespace zorhost
