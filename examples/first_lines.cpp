// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <zorsurface/ref.hpp>

#include <cstdio>
#include <vector>

// Shows a planar frame at another size in the host's own RGB memory.
int main() {
  const zor::Ref<ISurfaceBuilder> builder = zor::LoadBuilder();
  if (!builder) return 1;

  // A decoder's frame: luma, then U, then V. The library's own order has V first, so the frame is
  // handed over as FORMAT_YVU420 and its chroma planes are exchanged while it is copied.
  std::vector<std::uint8_t> frame(320 * 240 * 3 / 2, 128);
  zor::LentPixels pixels(frame.data());
  const SurfaceDescription description = zor::MakeDescription(FORMAT_YVU420, 320, 240);
  zor::Ref<IZorSurface> surface;
  if (builder->CreateFromMemory(&description, &pixels, surface.put()) != VED_OK) return 2;

  // Nothing happens yet: both wishes wait until somebody needs the pixels.
  surface->QueueResize(640, 360, /*fit=*/1, SCALE_BILINEAR);
  surface->QueueConvert(FORMAT_RGB32);

  // The conversion, being the last wish, writes straight into this memory, top row first.
  std::vector<std::uint8_t> rgb(640 * 360 * 4);
  if (surface->ReadPixels(rgb.data(), 640 * 4, /*orientation=*/1) != VED_OK) return 3;

  const std::uint8_t* middle = rgb.data() + (180 * 640 + 320) * 4;
  std::printf("B %d, G %d, R %d\n", middle[0], middle[1], middle[2]);
  return middle[0] == middle[2] && middle[0] > 100 ? 0 : 4;
}
