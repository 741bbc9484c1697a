// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <zorsurface/result_codes.h>

#include "platform/rect.h"
#include "surface/drawing_rect.h"
#include "surface/fill.h"
#include "surface/surface_buffer.h"

namespace zor {

std::int32_t CZorSurfaceBuffer::FillNow(RECT* rectangle, std::uint32_t colour) {
  if (pixels_ == nullptr) return VED_E_INVALIDARG;
  SurfaceDescription& d = description_;
  if (rectangle != nullptr) {
    const RectCheck check = CheckDrawingRect(*rectangle, d.width, d.height);
    if (check != RectCheck::kDraw) return ResultOf(check);
    if (RowsRunUp(d)) TurnOver(rectangle, d.height);
    // Only an empty union reaches the description, and this one never is.
    RECT united;
    if (!zor::UnionRect(&united, &d.DirtyRect, rectangle)) zor::CopyRect(&d.DirtyRect, &united);
  } else {
    d.DirtyRect = {0, 0, d.width, d.height};
  }
  if (d.format == FORMAT_RGB24 || d.format == FORMAT_RGB32) {
    FillRectRgb(pixels_, d.width, d.height, d.stride, rectangle, d.bitsPerPixel, colour);
    return VED_OK;
  }
  if (d.format == FORMAT_YUV420) {
    FillRectYuv420(pixels_, d.width, d.height, d.stride, rectangle, colour);
    return VED_OK;
  }
  return VED_E_UNSUPPORTED;
}

}  // namespace zor
