// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <zorsurface/result_codes.h>

#include <cstring>

#include "platform/rect.h"
#include "scale/stretch.h"
#include "surface/drawing_rect.h"
#include "surface/lent_memory.h"
#include "surface/picture_layout.h"
#include "surface/surface_buffer.h"

namespace zor {
namespace {

/// A picture and the part of it that takes part; null for all of it.
struct Operand {
  const SurfaceDescription& picture;
  std::uint8_t* pixels;
  const RECT* rect;
};

/// Draws one operand into the other by the family of @p to. Nothing but planes is drawn into
/// planes.
void StretchPart(const Operand& from, const Operand& to, ScaleMode mode) {
  const SurfaceDescription& s = from.picture;
  const SurfaceDescription& t = to.picture;
  const auto width = static_cast<std::uint32_t>(s.width);
  const auto targetWidth = static_cast<std::uint32_t>(t.width);
  if (t.format == FORMAT_YUV420) {
    if (s.format != FORMAT_YUV420) return;
    StretchYuv420(from.pixels, width, s.height, s.stride, from.rect, to.pixels, targetWidth,
                  t.height, t.stride, to.rect, 0, mode, 0);
  } else {
    StretchRgb(to.pixels, targetWidth, t.height, to.rect, t.stride, t.bitsPerPixel, t.Orientation,
               from.pixels, width, s.height, from.rect, s.stride, s.bitsPerPixel, s.Orientation, 0,
               mode);
  }
}

/// @return whether every pixel of a packed picture, by its bit count, lies in its block.
bool PixelsInBlock(const SurfaceDescription& d, const std::uint8_t* pixels) {
  if (pixels == nullptr || !PictureInBlock(d, pixels)) return false;
  const std::int64_t row = std::int64_t{d.width} * (d.bitsPerPixel / 8);
  return (std::int64_t{d.height} - 1) * d.stride + row <= PixelBlockBytes(pixels);
}

/// A copy of a rectangle, in memory rows of its picture.
class MemoryRect {
 public:
  MemoryRect(const RECT* rect, const SurfaceDescription& picture) {
    if (rect == nullptr) return;
    rect_ = *rect;
    if (RowsRunUp(picture)) TurnOver(&rect_, picture.height);
    given_ = true;
  }
  const RECT* get() const { return given_ ? &rect_ : nullptr; }

 private:
  RECT rect_{};
  bool given_ = false;
};

}  // namespace

std::int32_t CZorSurfaceBuffer::StretchFromSurfaceNow(RECT* target, IZorSurface* source,
                                                      RECT* sourceRect, std::uint32_t quality) {
  if (pixels_ == nullptr || source == nullptr) return VED_E_INVALIDARG;
  SurfaceDescription& d = description_;
  if (target != nullptr) {
    const RectCheck check = CheckDrawingRect(*target, d.width, d.height);
    if (check != RectCheck::kDraw) return ResultOf(check);
    const RECT dirty = d.DirtyRect;
    zor::UnionRect(&d.DirtyRect, &dirty, target);
  } else {
    d.DirtyRect = {0, 0, d.width, d.height};
  }
  const MemoryRect to(target, d);
  const SurfaceDescription before = DescriptionOf(source);
  if (sourceRect != nullptr) {
    const RectCheck check = CheckDrawingRect(*sourceRect, before.width, before.height);
    if (check != RectCheck::kDraw) return ResultOf(check);
  }
  const MemoryRect from(sourceRect, before);

  if (d.format == FORMAT_YUV420 && IsRgb(before.format)) source->QueueConvert(FORMAT_YUV420);
  if (IsRgb(d.format) && before.format == FORMAT_YUV420) source->QueueConvert(FORMAT_RGB24);
  std::uint8_t* pixels = nullptr;
  source->GetPixels(&pixels);
  if (!IsRgbOrGray(d.format) && d.format != FORMAT_YUV420) return VED_E_UNSUPPORTED;

  // The queue may have left the source smaller than its rectangle, or without pixels. This surface
  // may be the source itself, or its mask.
  const SurfaceDescription after = DescriptionOf(source);
  const bool readable =
      PixelsInBlock(after, pixels) &&
      (sourceRect == nullptr ||
       CheckDrawingRect(*from.get(), after.width, after.height) == RectCheck::kDraw);
  const bool writable =
      PixelsInBlock(d, pixels_) &&
      (target == nullptr || CheckDrawingRect(*to.get(), d.width, d.height) == RectCheck::kDraw);
  if (!readable || !writable) return VED_OK;
  if (pixels != pixels_) {
    StretchPart({after, pixels, from.get()}, {d, pixels_, to.get()}, quality);
    return VED_OK;
  }
  // Onto itself: what is read is the picture as it was.
  const std::int64_t bytes = PixelBlockBytes(pixels);
  std::uint8_t* const copy =
      AllocatePixelBlock(bytes, after.width, after.height, BlockContents::kUnset);
  if (copy == nullptr) return VED_E_OUTOFMEMORY;
  std::memcpy(copy, pixels, static_cast<std::size_t>(bytes));
  StretchPart({after, copy, from.get()}, {d, pixels_, to.get()}, quality);
  FreePixelBlock(copy);
  return VED_OK;
}

std::int32_t CZorSurfaceBuffer::StretchToMemoryNow(RECT* source, RECT* target, std::uint8_t* memory,
                                                   std::int32_t width, std::int32_t height,
                                                   std::int32_t stride, std::uint32_t quality) {
  if (memory == nullptr || width < 1 || height < 1) return VED_E_INVALIDARG;
  const SurfaceDescription& d = description_;
  if (source != nullptr) {
    const RectCheck check = CheckDrawingRect(*source, d.width, d.height);
    if (check != RectCheck::kDraw) return ResultOf(check);
  }
  if (target != nullptr) {
    const RectCheck check = CheckDrawingRect(*target, width, height);
    if (check != RectCheck::kDraw) return ResultOf(check);
  }
  const bool planar = d.format == FORMAT_YUV420;
  if (!planar && !IsRgbOrGray(d.format)) return VED_E_UNSUPPORTED;

  SurfaceDescription to = d;
  to.width = width;
  to.height = height;
  const std::int64_t natural = planar ? width : WordAlignedStride(d.bitsPerPixel, width);
  to.stride = stride >= 1 ? stride : FitsWord(natural) ? static_cast<std::int32_t>(natural) : 0;
  if (to.stride < 1 || !PixelsInBlock(d, pixels_)) return VED_OK;
  const std::int64_t row = std::int64_t{width} * (d.bitsPerPixel / 8);
  const std::int64_t reach =
      planar ? PlanarReach(to.stride, width, height) : (std::int64_t{height} - 1) * to.stride + row;
  LentMemory lent(memory, PictureBytes(to.stride, height, planar), reach, false, width, height);
  if (lent.Target() == nullptr) return VED_E_OUTOFMEMORY;
  StretchPart({d, pixels_, source}, {to, lent.Target(), target}, quality);
  lent.Finish();
  return VED_OK;
}

std::int32_t CZorSurfaceBuffer::WarpRegionNow(std::int32_t handle, std::uint32_t /*value*/,
                                              double a, double /*b*/, double c, double /*d*/,
                                              std::int32_t /*value2*/) {
  if (handle == 0 || a < 0 || c < 0) return VED_E_INVALIDARG;
  return VED_E_UNSUPPORTED;
}

}  // namespace zor
