// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/planar.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "scale/area.h"
#include "scale/scale_picture.h"
#include "scale/sharpen.h"

namespace zor {
namespace {

/// One plane of a picture with the shape it is worked on in.
struct ShapedPlane {
  Plane plane;
  std::int32_t width;
  std::int32_t height;
  std::int32_t stride;

  ScaleTarget Target() const noexcept { return {plane.pixels, width, height, stride, 1}; }
  ScaleSource Source() const noexcept { return {plane.pixels, width, height, stride, 1}; }
};

ShapedPlane Luma(const PlanarPicture& picture) noexcept {
  return {picture.luma, picture.width, picture.height, picture.stride};
}

ShapedPlane Chroma(const PlanarPicture& picture, Plane PlanarPicture::*which) noexcept {
  return {picture.*which, picture.width / 2, picture.height / 2, picture.stride / 2};
}

bool Larger(const PlanarPicture& a, const PlanarPicture& b) noexcept {
  return a.width > b.width && a.height > b.height;
}

/// Exact area on one plane. Odd luma sizes can leave chroma planes of equal size or of none.
void AreaPlane(const ShapedPlane& target, const ShapedPlane& source) noexcept {
  if (target.width <= 0 || target.height <= 0) return;
  AreaScale(target.Target(), source.Source(), std::min(target.plane.bytes, source.plane.bytes));
}

/// All planes by the core, with the steps of luma: for odd sizes they are not quite the chroma
/// planes' own.
void ScalePlanes(const PlanarPicture& target, const PlanarPicture& source, ScaleMode lumaMode,
                 ScaleMode chromaMode) noexcept {
  const ScaleAxes axes{0.0, static_cast<double>(source.width) / target.width, 0.0,
                       static_cast<double>(source.height) / target.height};
  ScalePicture(Luma(target).Target(), Luma(source).Source(), axes, lumaMode, nullptr);
  for (const auto which : {&PlanarPicture::first, &PlanarPicture::second}) {
    ScalePicture(Chroma(target, which).Target(), Chroma(source, which).Source(), axes, chromaMode,
                 nullptr);
  }
}

/// Copies a row as far as it lies in front of @p end.
void CopyHeld(std::uint8_t* out, const std::uint8_t* in, std::int64_t bytes,
              const std::uint8_t* end) noexcept {
  const std::int64_t held = std::min<std::int64_t>(bytes, end - out);
  if (held > 0) std::memcpy(out, in, static_cast<std::size_t>(held));
}

/// The planar modes at equal sizes. The chroma of both pictures is walked by the source's stride;
/// nothing is written behind the target's planes.
void CopyPlanes(const PlanarPicture& target, const PlanarPicture& source) noexcept {
  for (std::int32_t y = 0; y < source.height; ++y) {
    std::memcpy(target.luma.pixels + static_cast<std::ptrdiff_t>(y) * target.stride,
                source.luma.pixels + static_cast<std::ptrdiff_t>(y) * source.stride,
                static_cast<std::size_t>(source.width));
  }
  const std::int32_t stride = source.stride / 2;
  const std::uint8_t* end = std::max(target.first.pixels + target.first.bytes,
                                     target.second.pixels + target.second.bytes);
  for (std::int32_t y = 0; y < source.height / 2; ++y) {
    for (const auto which : {&PlanarPicture::second, &PlanarPicture::first}) {
      const std::ptrdiff_t row = static_cast<std::ptrdiff_t>(y) * stride;
      if (row >= end - (target.*which).pixels) continue;
      CopyHeld((target.*which).pixels + row, (source.*which).pixels + row, source.width / 2, end);
    }
  }
}

/// Exact area for `SCALE_PLANAR_AREA`: the second chroma plane, handled before the first, is walked
/// by its half width instead of its half stride.
void AreaPlanar(const PlanarPicture& target, const PlanarPicture& source) noexcept {
  AreaPlane(Luma(target), Luma(source));
  ShapedPlane second = Chroma(source, &PlanarPicture::second);
  second.stride = second.width;
  AreaPlane(Chroma(target, &PlanarPicture::second), second);
  AreaPlane(Chroma(target, &PlanarPicture::first), Chroma(source, &PlanarPicture::first));
}

void ScaleYuv420Special(const PlanarPicture& target, const PlanarPicture& source,
                        ScaleMode mode) noexcept {
  if (source.width == target.width && source.height == target.height) {
    CopyPlanes(target, source);
  } else if (mode == SCALE_PLANAR_NEAREST) {
    ScalePlanes(target, source, SCALE_NEAREST, SCALE_NEAREST);
  } else if (mode == SCALE_PLANAR_SHARPEN) {
    if (!SharpenPlane(source.luma.pixels, source.width, source.height, source.stride)) return;
    ScalePlanes(target, source, SCALE_BILINEAR, SCALE_BILINEAR);
  } else if (Larger(source, target)) {
    AreaPlanar(target, source);
  } else {
    ScalePlanes(target, source, SCALE_BILINEAR_FADE, SCALE_BILINEAR_FADE);
  }
}

}  // namespace

void ScaleYuv420(const PlanarPicture& target, const PlanarPicture& source,
                 ScaleMode mode) noexcept {
  if (source.width <= 0 || source.height <= 0 || target.width <= 0 || target.height <= 0) return;
  if (mode == SCALE_PLANAR_NEAREST || mode == SCALE_PLANAR_SHARPEN || mode == SCALE_PLANAR_AREA) {
    ScaleYuv420Special(target, source, mode);
    return;
  }
  if (mode == SCALE_AREA) {
    if (Larger(source, target)) {
      AreaPlane(Luma(target), Luma(source));
      AreaPlane(Chroma(target, &PlanarPicture::first), Chroma(source, &PlanarPicture::first));
      AreaPlane(Chroma(target, &PlanarPicture::second), Chroma(source, &PlanarPicture::second));
      return;
    }
    mode = SCALE_BILINEAR_FADE;
  }
  ScalePlanes(target, source, mode, mode == SCALE_ROW_PAIRS ? SCALE_BILINEAR : mode);
}

}  // namespace zor
