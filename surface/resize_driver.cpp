// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <zorsurface/result_codes.h>

#include <algorithm>
#include <cstring>

#include "scale/stretch.h"
#include "surface/fill.h"
#include "surface/lent_memory.h"
#include "surface/picture_layout.h"
#include "surface/surface_buffer.h"

namespace zor {
namespace {

/// The byte that a new packed block's first quarter is filled with.
constexpr std::uint8_t kPackedBlank = 0x80;

/// A new picture and the bytes of its block.
struct NewPicture {
  SurfaceDescription picture;
  std::int64_t bytes;
};

/// @return the picture that a resize makes in a block of its own.
NewPicture LayOut(const SurfaceDescription& from, std::int32_t width, std::int32_t height) {
  NewPicture target{from, 0};
  std::int64_t stride = 0;
  switch (from.format) {
    case FORMAT_YUV420:
      stride = width;
      target.bytes = PictureBytes(stride, height, true);
      break;
    case FORMAT_YUY2:
      stride = std::int64_t{width} * 2;
      target.bytes = stride * height;
      break;
    default:
      stride = WordAlignedStride(from.bitsPerPixel, width);
      target.bytes = stride > kMaxBlockBytes ? stride : stride * height;
      break;
  }
  target.picture.width = width;
  target.picture.height = height;
  target.picture.stride = static_cast<std::int32_t>(stride > kMaxBlockBytes ? 0 : stride);
  return target;
}

/// Prepares a new block before the picture is drawn into it.
void PaintNewBlock(const SurfaceDescription& picture, std::uint8_t* block) {
  if (picture.format == FORMAT_YUV420) {
    FillRectYuv420(block, picture.width, picture.height, picture.stride, nullptr, 0);
  } else if (picture.format == FORMAT_YUY2) {
    const std::int64_t bytes = std::int64_t{picture.stride} * picture.height;
    std::memset(block, kPackedBlank, static_cast<std::size_t>(bytes >> 2));
  }
}

/// Scales a whole picture into a whole one, or into a rectangle of it between bands.
void ScaleWhole(const SurfaceDescription& from, std::uint8_t* source, const SurfaceDescription& to,
                std::uint8_t* target, const RECT* rect, ScaleMode mode) {
  const auto fit = rect != nullptr ? 1 : 0;
  const auto width = static_cast<std::uint32_t>(from.width);
  const auto targetWidth = static_cast<std::uint32_t>(to.width);
  if (from.format == FORMAT_YUV420) {
    StretchYuv420(source, width, from.height, from.stride, nullptr, target, targetWidth, to.height,
                  to.stride, rect, fit, mode, 0);
  } else if (from.format == FORMAT_YUY2) {
    StretchYuy2(source, width, from.height, from.stride, nullptr, target, targetWidth, to.height,
                to.stride, rect, fit, mode, 0);
  } else {
    StretchRgb(target, targetWidth, to.height, rect, to.stride, to.bitsPerPixel, to.Orientation,
               source, width, from.height, nullptr, from.stride, from.bitsPerPixel,
               from.Orientation, fit, mode);
  }
}

bool IsServed(std::int32_t format) {
  return IsRgbOrGray(format) || format == FORMAT_YUV420 || format == FORMAT_YUY2;
}

/// @return the bytes of @p to that drawing reaches, and the planar black that is written before.
std::int64_t ReachOf(const SurfaceDescription& to) {
  const std::int64_t cleared = PictureBytes(to.stride, to.height, true);
  if (to.format == FORMAT_YUV420) {
    return std::max(cleared, PlanarReach(to.stride, to.width, to.height));
  }
  const std::int64_t pixel = to.format == FORMAT_YUY2 ? 16 : to.bitsPerPixel;
  const std::int64_t row = (std::int64_t{to.width} * pixel + 7) / 8;
  return std::max(cleared, (std::int64_t{to.height} - 1) * to.stride + row);
}

}  // namespace

std::int32_t CZorSurfaceBuffer::ResizeNow(std::int32_t width, std::int32_t height, std::int32_t fit,
                                          std::uint32_t quality) {
  if (pixels_ == nullptr || width < 1 || height < 1) return VED_E_INVALIDARG;
  SurfaceDescription& d = description_;
  const bool direct = direct_.active != 0;
  if (width == d.width && height == d.height && aspectWidth_ == 0 && aspectHeight_ == 0) {
    if (direct) CopyRowsOut(direct_.memory, direct_.stride, direct_.orientation);
    return VED_OK;
  }
  RECT rect{};
  if (fit != 0) {
    ComputeFitRect(width, height, &rect);
    d.DirtyRect = rect;
  } else {
    d.DirtyRect = {0, 0, width, height};
  }
  const RECT* inside = fit != 0 ? &rect : nullptr;
  return direct ? ResizeIntoMemory(width, height, inside, quality)
                : ResizeIntoBlock(width, height, inside, quality);
}

std::int32_t CZorSurfaceBuffer::ResizeIntoMemory(std::int32_t width, std::int32_t height,
                                                 const RECT* rect, ScaleMode mode) {
  const SurfaceDescription& d = description_;
  SurfaceDescription to = d;
  to.width = width;
  to.height = height;
  to.stride = direct_.stride;
  to.Orientation = direct_.orientation;
  LentMemory lent(direct_.memory, PictureBytes(to.stride, height, true), ReachOf(to), false, width,
                  height);
  if (lent.Target() == nullptr) return VED_E_OUTOFMEMORY;
  FillRectYuv420(lent.Target(), width, height, to.stride, nullptr, 0);
  if (IsServed(d.format) && PictureInBlock(d, pixels_)) {
    ScaleWhole(d, pixels_, to, lent.Target(), rect, mode);
  }
  lent.Finish();
  return IsServed(d.format) ? VED_OK : VED_E_UNSUPPORTED;
}

std::int32_t CZorSurfaceBuffer::ResizeIntoBlock(std::int32_t width, std::int32_t height,
                                                const RECT* rect, ScaleMode mode) {
  SurfaceDescription& d = description_;
  if (!IsServed(d.format)) {
    aspectWidth_ = aspectHeight_ = 0;
    return VED_E_UNSUPPORTED;
  }
  const NewPicture made = LayOut(d, width, height);
  // Planar black reaches every byte of a picture of even sizes.
  const bool painted = d.format == FORMAT_YUV420 && ((width | height) & 1) == 0;
  std::uint8_t* const block = AllocateResult(
      made.picture, made.bytes, painted ? BlockContents::kUnset : BlockContents::kZero);
  if (block == nullptr) return IsRgbOrGray(d.format) ? E_FAIL : VED_E_OUTOFMEMORY;
  PaintNewBlock(made.picture, block);
  aspectWidth_ = aspectHeight_ = 0;
  if (PictureInBlock(d, pixels_)) ScaleWhole(d, pixels_, made.picture, block, rect, mode);
  ReplacePixels(block);
  d.stride = made.picture.stride;
  d.height = height;
  d.width = width;
  // The picture is finished: in a circle of masks the flush below runs this surface's own queue.
  if (const MaskTurn turn(this); turn.HasMask()) {
    mask_->QueueResize(width, height, 0, 0);
    mask_->Flush();
  }
  return VED_OK;
}

}  // namespace zor
