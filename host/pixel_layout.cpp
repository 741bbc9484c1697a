// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "pixel_layout.h"

#include <zorsurface/surface_description.h>

#include "exit_code.h"

namespace zorhost {
namespace {

constexpr LayoutTraits kLayouts[] = {
    {Layout::kRgb24, "rgb24", FORMAT_RGB24, 24, true, false, "B G R"},
    {Layout::kRgb32, "rgb32", FORMAT_RGB32, 32, true, false, "B G R A"},
    {Layout::kGray8, "gray", FORMAT_GRAY8, 8, false, false, "Y"},
    {Layout::kYuv420, "yuv420", FORMAT_YUV420, 12, false, true, "planes Y, V, U"},
    {Layout::kYuy2, "yuy2", FORMAT_YUY2, 16, false, false, "Y0 U Y1 V"},
    {Layout::kYvu420, "yvu420", FORMAT_YVU420, 12, false, true, "planes Y, U, V"},
};

}  // namespace

const LayoutTraits& Traits(Layout layout) {
  for (const LayoutTraits& traits : kLayouts) {
    if (traits.layout == layout) return traits;
  }
  throw std::logic_error("a layout without traits");
}

Layout LayoutFromName(std::string_view name) {
  for (const LayoutTraits& traits : kLayouts) {
    if (name == traits.name) return traits.layout;
  }
  throw UsageError("unknown format '" + std::string(name) + "'; known: " + KnownLayouts());
}

std::string KnownLayouts() {
  std::string names;
  for (const LayoutTraits& traits : kLayouts) {
    if (!names.empty()) names += ", ";
    names += traits.name;
  }
  return names;
}

}  // namespace zorhost
