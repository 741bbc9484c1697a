// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <zorsurface/zorsurface.h>
#include <zorsurface/ref.hpp>

// An outside program: a blank planar surface becomes black RGB32.
int main() {
  const zor::Ref<ISurfaceBuilder> builder = zor::LoadBuilder();
  if (!builder) return 1;
  const SurfaceDescription description = zor::MakeDescription(FORMAT_YUV420, 64, 32);
  std::int32_t bytes = 0;
  zor::Ref<IZorSurface> surface;
  if (builder->CreateBlank(&description, &bytes, surface.put()) != VED_OK) return 2;
  if (bytes != 64 * 32 * 3 / 2) return 3;
  surface->QueueConvert(FORMAT_RGB32);
  std::uint8_t pixels[64 * 32 * 4];
  for (std::uint8_t& byte : pixels) byte = 99;
  if (surface->ReadPixels(pixels, 64 * 4, 1) != VED_OK) return 4;
  for (const std::uint8_t byte : pixels) {
    if (byte != 0) return 5;
  }
  return 0;
}
