// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <zorsurface/result_codes.h>

#include <cmath>

#include "surface/fill.h"
#include "surface/rotate_planes.h"
#include "surface/surface_buffer.h"

namespace zor {
namespace {

struct Size {
  std::int64_t width;
  std::int64_t height;
};

/// The frame of a picture turned by other than a right angle, of even sizes. A negative angle gives
/// no frame.
Size TurnedSize(std::int32_t degrees, std::int32_t width, std::int32_t height) {
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

bool IsPacked(std::int32_t format) {
  return format == FORMAT_RGB24 || format == FORMAT_RGB32 || format == FORMAT_GRAY8;
}

}  // namespace

std::int32_t CZorSurfaceBuffer::RotateNow(std::int32_t degrees) {
  if (pixels_ == nullptr) return VED_E_INVALIDARG;
  if (degrees == 0 || degrees == 360) return VED_OK;
  if (maskFollows_) return VED_OK;  // turned already, and reached again by way of its mask
  const SurfaceDescription& d = description_;
  const bool packed = IsPacked(d.format);
  const bool served = packed || d.format == FORMAT_YUV420;
  const bool quarter = degrees == 90 || degrees == 270;
  const bool half = degrees == 180;

  Size size{d.width, d.height};  // in 64 bits until it is known to fit
  if (quarter) {
    size = {d.height, d.width};
  } else if (!half) {
    size = TurnedSize(degrees, d.width, d.height);
  }
  if (size.width < 0 || size.height < 0) return VED_E_INVALIDARG;
  const std::int64_t rowBytes = (size.width * d.bitsPerPixel + 31) / 32 * 4;
  const std::int64_t stride = !packed ? size.width : half ? d.stride : rowBytes;
  if (served && (size.width * size.height > kMaxBlockBytes || stride > kMaxBlockBytes)) {
    return VED_E_OUTOFMEMORY;
  }
  const std::int64_t bytes = packed ? size.height * stride : size.height * stride * 3 / 2;

  std::uint8_t* block = nullptr;
  if (served) {
    SurfaceDescription turned = d;
    turned.width = static_cast<std::int32_t>(size.width);
    turned.height = static_cast<std::int32_t>(size.height);
    turned.stride = half ? d.stride : static_cast<std::int32_t>(stride);
    // A picture of no size still has a block, so that it stays a surface with pixels.
    const std::int64_t covered = CoveredBytes(turned, bytes > 0 ? bytes : 1);
    block = AllocatePixelBlock(covered, size.width, size.height, BlockContents::kZero);
    if (block == nullptr) return VED_E_OUTOFMEMORY;
  }
  if (quarter) {
    const RECT old = d.DirtyRect;
    auto fromRight = [&](std::int64_t x) {  // wraps as the host's words may
      return static_cast<std::int32_t>(static_cast<std::uint32_t>(d.width - x));
    };
    description_.DirtyRect = {old.top, fromRight(old.right), old.bottom, fromRight(old.left)};
  }
  if (!served) return VED_E_UNSUPPORTED;

  const auto newWidth = static_cast<std::int32_t>(size.width);
  const auto newHeight = static_cast<std::int32_t>(size.height);
  const auto newStride = static_cast<std::int32_t>(stride);
  if (packed) {
    RotatePlaneRgb(block, newWidth, newHeight, newStride, d.bitsPerPixel, pixels_, d.width,
                   d.height, d.stride, d.bitsPerPixel, degrees);
  } else {
    if (!quarter && !half) FillRectYuv420(block, newWidth, newHeight, newStride, nullptr, 0);
    RotatePlanesYuv420(block, newWidth, newHeight, newStride, pixels_, d.width, d.height, d.stride,
                       degrees);
  }
  ReplacePixels(block);
  if (!half) {
    description_.stride = newStride;
    description_.width = newWidth;
    description_.height = newHeight;
  }
  // In a circle of masks this surface's own queue may run from in here, on the finished picture.
  if (const MaskTurn turn(this); turn.HasMask()) {
    mask_->Rotate(degrees);
    mask_->Flush();
  }
  return VED_OK;
}

}  // namespace zor
