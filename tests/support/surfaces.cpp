// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "support/surfaces.h"

#include <cstring>
#include <stdexcept>

#include "support/guarded_memory.h"

namespace zor::test {
namespace {

void Require(std::int32_t result, const char* what) {
  if (result < 0) throw std::runtime_error(what);
}

}  // namespace

HeldBuilder MakeBuilder() {
  void* builder = nullptr;
  Require(CreateObject(&CLSID_SurfaceBuilder, &IID_ISurfaceBuilder, &builder), "no builder");
  return HeldBuilder(static_cast<ISurfaceBuilder*>(builder));
}

SurfaceDescription Describe(std::int32_t width, std::int32_t height, std::int32_t format) {
  struct Shape {
    std::int32_t bits;
    std::int32_t stride;
  };
  const Shape shapes[] = {{0, 0},          {24, (24 * width + 31) / 32 * 4},
                          {32, 4 * width}, {8, (8 * width + 31) / 32 * 4},
                          {12, width},     {16, 2 * width},
                          {12, width}};
  SurfaceDescription description = {};
  description.size = sizeof description;
  description.width = width;
  description.height = height;
  description.format = format;
  if (format >= FORMAT_RGB24 && format <= FORMAT_YVU420) {
    description.bitsPerPixel = shapes[format].bits;
    description.stride = shapes[format].stride;
  }
  description.Orientation = 1;
  return description;
}

SurfaceDescription DescribeOriented(std::int32_t width, std::int32_t height, std::int32_t format,
                                    std::uint32_t orientation) {
  SurfaceDescription description = Describe(width, height, format);
  description.Orientation = orientation;
  return description;
}

std::size_t PictureBytes(const SurfaceDescription& description) {
  const auto plane =
      static_cast<std::size_t>(description.stride) * static_cast<std::size_t>(description.height);
  const bool planar = description.format == FORMAT_YUV420 || description.format == FORMAT_YVU420;
  return planar ? plane * 3 / 2 : plane;
}

HeldSurface MakeSurface(const SurfaceDescription& description, const Bytes& bytes) {
  VectorSource source(bytes);
  HeldSurface surface;
  Require(MakeBuilder()->CreateFromMemory(&description, &source, surface.Reset()), "no surface");
  return surface;
}

HeldSurface MakeBlank(const SurfaceDescription& description) {
  std::int32_t bytes = 0;
  HeldSurface surface;
  Require(MakeBuilder()->CreateBlank(&description, &bytes, surface.Reset()), "no blank surface");
  return surface;
}

HeldSurface MakeEven(const SurfaceDescription& description, std::uint8_t value) {
  HeldSurface surface = MakeBlank(description);
  std::memset(PixelsOf(surface), value, PictureBytes(description));
  return surface;
}

HeldSurface MakeNoisy(const SurfaceDescription& description, std::uint64_t seed) {
  HeldSurface surface = MakeBlank(description);
  Noise(seed).Fill(PixelsOf(surface), PictureBytes(description));
  return surface;
}

SurfaceDescription DescriptionOf(IZorSurface* surface) {
  SurfaceDescription description = {};
  Require(surface->GetDescription(&description), "no description");
  return description;
}

std::uint8_t* PixelsOf(const HeldSurface& surface) {
  std::uint8_t* pixels = nullptr;
  Require(surface->GetPixels(&pixels), "no pixels");
  return pixels;
}

Bytes BlockOf(IZorSurface* surface, std::size_t bytes) {
  std::uint8_t* pixels = nullptr;
  Require(surface->GetPixels(&pixels), "no pixels");
  return {pixels, pixels + bytes};
}

std::uint32_t CountOf(VideoEdit::IVedUnknown* object) {
  object->AddRef();
  return object->Release();
}

}  // namespace zor::test
