// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "surface/mask_from_alpha.h"

#include "object/surface_builder.h"
#include "surface/picture_layout.h"

namespace zor {

IZorSurface* BuildMaskFromAlpha(const SurfaceDescription& picture,
                                const std::uint8_t* pixels) noexcept {
  SurfaceDescription description{};
  description.size = sizeof description;
  description.width = picture.width;
  description.height = picture.height;
  description.format = FORMAT_GRAY8;
  description.bitsPerPixel = 8;
  description.stride = picture.width;
  description.Orientation = 1;
  CSurfaceBuilder builder;
  std::int32_t bytes = 0;
  IZorSurface* mask = nullptr;
  if (builder.CreateBlank(&description, &bytes, &mask) < 0) return nullptr;
  std::uint8_t* out = nullptr;
  mask->GetPixels(&out);
  if (!PictureInBlock(picture, pixels)) return mask;
  const std::int64_t width = picture.width;
  for (std::int64_t y = 0; y < picture.height; ++y) {
    const std::uint8_t* row = pixels + (picture.height - 1 - y) * picture.stride;
    for (std::int64_t x = 0; x < width; ++x) {
      out[y * width + x] = static_cast<std::uint8_t>(~row[4 * x + 3]);
    }
  }
  return mask;
}

}  // namespace zor
