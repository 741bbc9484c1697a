// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <zorsurface/result_codes.h>

#include "platform/rect.h"
#include "surface/drawing_rect.h"
#include "surface/fill.h"
#include "surface/picture_layout.h"
#include "surface/surface_buffer.h"

namespace zor {

std::int32_t CZorSurfaceBuffer::FillNow(RECT* rectangle, std::uint32_t colour) {
  if (pixels_ == nullptr) return VED_E_INVALIDARG;
  SurfaceDescription& d = description_;
  if (rectangle != nullptr) {
    const RectCheck check = CheckDrawingRect(*rectangle, d.width, d.height);
    if (check != RectCheck::kDraw) return ResultOf(check);
    if (RowsRunUp(d)) TurnOver(rectangle, d.height);
    // Only an empty union is stored, and with a rectangle that is drawn there is none: unlike a
    // stretch, a fill leaves the `DirtyRect` as it is.
    RECT united;
    if (!zor::UnionRect(&united, &d.DirtyRect, rectangle)) zor::CopyRect(&d.DirtyRect, &united);
  } else {
    d.DirtyRect = {0, 0, d.width, d.height};
  }
  const bool planar = d.format == FORMAT_YUV420;
  if (!planar && !IsRgb(d.format)) return VED_E_UNSUPPORTED;
  if (!PictureInBlock(d, pixels_)) return VED_OK;
  if (planar) {
    FillRectYuv420(pixels_, d.width, d.height, d.stride, rectangle, colour);
  } else {
    FillRectRgb(pixels_, d.width, d.height, d.stride, rectangle, d.bitsPerPixel, colour);
  }
  return VED_OK;
}

}  // namespace zor
