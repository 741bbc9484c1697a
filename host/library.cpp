// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "library.h"

#include <cstdio>
#include <cstring>

namespace zorhost {
namespace {

struct CodeText {
  std::int32_t code;
  const char* text;
};
const CodeText kCodes[] = {
    {VED_E_UNSUPPORTED, "VED_E_UNSUPPORTED: the library doesn't serve this pair of formats"},
    {VED_E_INVALIDARG, "VED_E_INVALIDARG: an argument is outside of its range"},
    {VED_E_COMPOSE, "VED_E_COMPOSE: the target can't be drawn on"},
    {VED_E_OUTOFMEMORY, "VED_E_OUTOFMEMORY: no memory for a picture of this size"},
    {VED_E_KERNEL, "VED_E_KERNEL: the exchange of chroma planes failed"},
    {static_cast<std::int32_t>(E_FAIL), "E_FAIL: the library couldn't do it"},
};

SurfaceDescription DescriptionOf(Layout layout, int width, int height, int stride, bool bottomUp) {
  SurfaceDescription description = zor::MakeDescription(Traits(layout).format, width, height);
  description.stride = stride;
  description.Orientation = bottomUp ? 0 : 1;
  description.ComposeInPlace = 1;
  return description;
}

}  // namespace

std::string ResultText(std::int32_t code) {
  char number[16];
  std::snprintf(number, sizeof number, "0x%08X", static_cast<unsigned>(code));
  for (const CodeText& known : kCodes) {
    if (known.code != code) continue;
    const std::string text = known.text;
    const std::size_t colon = text.find(':');
    return text.substr(0, colon) + " (" + number + ")" + text.substr(colon);
  }
  return number;
}

void Check(std::int32_t result, const std::string& what) {
  if (result < 0)
    throw HostError(ExitCode::kLibrary, "library: " + what + ": " + ResultText(result));
}

SurfaceDescription Describe(IZorSurface& surface) {
  SurfaceDescription description = {};
  Check(surface.GetDescription(&description), "GetDescription");
  return description;
}

Library::Library() {
  void* builder = nullptr;
  Check(CreateObject(&CLSID_SurfaceBuilder, &IID_ISurfaceBuilder, &builder), "CreateObject");
  builder_ = Ref<ISurfaceBuilder>(static_cast<ISurfaceBuilder*>(builder));
}

Ref<IZorSurface> Library::Blank(Layout layout, int width, int height) const {
  const SurfaceDescription description =
      DescriptionOf(layout, width, height, NaturalStride(layout, width), Traits(layout).rgb);
  Ref<IZorSurface> surface;
  std::int32_t bytes = 0;
  Check(builder_->CreateBlank(&description, &bytes, surface.put()), "CreateBlank");
  return surface;
}

Ref<IZorSurface> Library::HandIn(const Picture& picture) const {
  if (picture.layout() == Layout::kGray8) {
    Ref<IZorSurface> surface = Blank(Layout::kGray8, picture.width(), picture.height());
    std::uint8_t* pixels = nullptr;
    Check(surface->GetPixels(&pixels), "GetPixels");
    const int stride = Describe(*surface.get()).stride;
    for (int y = 0; y < picture.height(); ++y) {
      std::memcpy(pixels + static_cast<std::size_t>(stride) * y, picture.row(0, y),
                  static_cast<std::size_t>(picture.width()));
    }
    return surface;
  }
  const SurfaceDescription description = DescriptionOf(
      picture.layout(), picture.width(), picture.height(), picture.pitch(), picture.bottomUp);
  zor::LentPixels lent(picture.data());
  Ref<IZorSurface> surface;
  Check(builder_->CreateFromMemory(&description, &lent, surface.put()), "CreateFromMemory");
  return surface;
}

}  // namespace zorhost
