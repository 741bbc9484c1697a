// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/scale_picture.h"

#include "scale/area.h"
#include "scale/gray.h"
#include "scale/rgb_picture.h"

namespace zor {
namespace {

/// What serves one pair of pixel sizes.
struct Route {
  std::int32_t sourceBytes;
  std::int32_t targetBytes;
  void (*scale)(const ScaleTarget&, const ScaleSource&, const ScaleAxes&, ScaleMode,
                const std::uint32_t* background) noexcept;
  bool hasArea;  ///< exact area where the source is larger, boxes elsewhere
  bool anyMode;  ///< also takes modes beyond `SCALE_AREA`
};

void Gray(const ScaleTarget& target, const ScaleSource& source, const ScaleAxes& axes,
          ScaleMode mode, const std::uint32_t*) noexcept {
  ScaleGray8(target, source, axes, mode);
}

constexpr Route kRoutes[] = {
    {1, 1, Gray, true, true},       {3, 3, ScaleRgb, true, false}, {3, 4, ScaleRgb, false, false},
    {4, 3, ScaleRgb, false, false}, {4, 4, ScaleRgb, true, false},
};

const Route* FindRoute(std::int32_t sourceBytes, std::int32_t targetBytes) noexcept {
  for (const Route& route : kRoutes) {
    if (route.sourceBytes == sourceBytes && route.targetBytes == targetBytes) return &route;
  }
  return nullptr;
}

/// The mode as the two sizes and the steps leave it.
ScaleMode Settle(const ScaleTarget& target, const ScaleSource& source, const ScaleAxes& axes,
                 ScaleMode mode) noexcept {
  if (axes.stepX < 2.0 || axes.stepY < 2.0) {
    if (mode == SCALE_BOX_FADE) mode = SCALE_BILINEAR_FADE;
    if (mode == SCALE_BOX) mode = SCALE_BILINEAR;
  }
  if (source.width == 1 || source.height == 1 || target.width == 1 || target.height == 1) {
    mode = SCALE_NEAREST;
  }
  return mode;
}

}  // namespace

void ScalePicture(const ScaleTarget& target, const ScaleSource& source, const ScaleAxes& axes,
                  ScaleMode mode, const std::uint32_t* background) noexcept {
  static constexpr std::uint32_t kBlack = 0;
  if (background == nullptr) background = &kBlack;
  const Route* route = FindRoute(source.bytesPerPixel, target.bytesPerPixel);
  if (route == nullptr || (mode > SCALE_AREA && !route->anyMode)) return;
  mode = Settle(target, source, axes, mode);
  if (source.width <= 0 || source.height <= 0 || target.width <= 0 || target.height <= 0) return;
  if (mode == SCALE_AREA && route->hasArea) {
    if (source.width > target.width && source.height > target.height) {
      AreaScale(target, source, 0);
      return;
    }
    // Unlike a box mode that was asked for, this one isn't held to steps of 2 and more.
    mode = SCALE_BOX;
  }
  route->scale(target, source, axes, mode, background);
}

}  // namespace zor
