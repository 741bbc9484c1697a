// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <zorsurface/result_codes.h>

#include <algorithm>
#include <cmath>

#include "surface/fill.h"
#include "surface/picture_layout.h"
#include "surface/rotate_planes.h"
#include "surface/surface_buffer.h"

namespace zor {
namespace {

bool IsQuarter(std::int32_t degrees) {
  return degrees == 90 || degrees == 270;
}

/// The frame that holds a turned picture, in 64 bits until it is known to fit.
struct Frame {
  std::int64_t width;
  std::int64_t height;
  std::int64_t stride;  ///< of the rows that are drawn

  bool FitsABlock() const { return width * height <= kMaxBlockBytes && stride <= kMaxBlockBytes; }
};

struct Size {
  std::int64_t width;
  std::int64_t height;
};

/// The size of a picture turned by other than a right angle, made even. A negative angle gives
/// none.
Size SlantedSize(std::int32_t degrees, std::int32_t width, std::int32_t height) {
  const std::int32_t a = degrees > 180 ? degrees - 180 : degrees;
  if (a < 1) return {0, 0};
  const std::int32_t t = a <= 90 ? a : 180 - a;
  const double theta = t * kRotationPi / 180;
  const double s = std::sin(theta);
  const double c = std::cos(theta);
  auto even = [](double size) {
    const auto whole = static_cast<std::int64_t>(size);
    return whole + (whole & 1);
  };
  return {even(height * s + width * c), even(height * c + width * s)};
}

Size TurnedSize(std::int32_t degrees, std::int32_t width, std::int32_t height) {
  if (degrees == 180) return {width, height};
  return IsQuarter(degrees) ? Size{height, width} : SlantedSize(degrees, width, height);
}

Frame TurnedFrame(const SurfaceDescription& d, std::int32_t degrees) {
  const Size size = TurnedSize(degrees, d.width, d.height);
  if (!IsRgbOrGray(d.format)) return {size.width, size.height, size.width};
  if (degrees == 180) return {size.width, size.height, d.stride};
  return {size.width, size.height, WordAlignedStride(d.bitsPerPixel, size.width)};
}

/// Allocates the block of a frame that fits one, zeroed. A picture of no size still has a block, so
/// that it stays a surface with pixels.
std::uint8_t* AllocateFrame(const SurfaceDescription& turned, const Frame& frame) {
  const std::int64_t bytes = PictureBytes(frame.stride, frame.height, !IsRgbOrGray(turned.format));
  const std::int64_t covered = CoveredBytes(turned, std::max<std::int64_t>(bytes, 1));
  return AllocatePixelBlock(covered, frame.width, frame.height, BlockContents::kZero);
}

/// The dirty region of a picture turned by 90 or, all the same, by 270 degrees. Words wrap, as a
/// host's may be anything.
RECT TurnedDirtyRect(const RECT& old, std::int32_t width) {
  auto fromRight = [width](std::int64_t x) { return CutToWord(width - x); };
  return {old.top, fromRight(old.right), old.bottom, fromRight(old.left)};
}

}  // namespace

std::int32_t CZorSurfaceBuffer::RotateNow(std::int32_t degrees) {
  if (pixels_ == nullptr) return VED_E_INVALIDARG;
  if (degrees == 0 || degrees == 360) return VED_OK;
  if (maskFollows_) return VED_OK;  // turned already, and reached again by way of its mask
  SurfaceDescription& d = description_;
  const bool packed = IsRgbOrGray(d.format);
  const bool served = packed || d.format == FORMAT_YUV420;
  const Frame frame = TurnedFrame(d, degrees);
  if (frame.width < 0 || frame.height < 0) return VED_E_INVALIDARG;
  if (served && !frame.FitsABlock()) return VED_E_OUTOFMEMORY;

  SurfaceDescription turned = d;
  if (IsQuarter(degrees)) turned.DirtyRect = TurnedDirtyRect(d.DirtyRect, d.width);
  if (!served) {
    d.DirtyRect = turned.DirtyRect;
    return VED_E_UNSUPPORTED;
  }
  const auto width = static_cast<std::int32_t>(frame.width);
  const auto height = static_cast<std::int32_t>(frame.height);
  const auto stride = static_cast<std::int32_t>(frame.stride);
  turned.width = width;
  turned.height = height;
  if (degrees != 180) turned.stride = stride;
  std::uint8_t* const block = AllocateFrame(turned, frame);
  if (block == nullptr) return VED_E_OUTOFMEMORY;
  if (packed) {
    RotatePlaneRgb(block, width, height, stride, d.bitsPerPixel, pixels_, d.width, d.height,
                   d.stride, d.bitsPerPixel, degrees);
  } else {
    if (degrees != 180 && !IsQuarter(degrees)) {
      FillRectYuv420(block, width, height, stride, nullptr, 0);
    }
    RotatePlanesYuv420(block, width, height, stride, pixels_, d.width, d.height, d.stride, degrees);
  }
  ReplacePixels(block);
  d = turned;
  // The picture is finished: in a circle of masks the flush below runs this surface's own queue.
  if (const MaskTurn turn(this); turn.HasMask()) {
    mask_->Rotate(degrees);
    mask_->Flush();
  }
  return VED_OK;
}

}  // namespace zor
