// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Rectangles as fills and stretches take them.

#include <zorsurface/result_codes.h>
#include <zorsurface/surface_description.h>

#include "surface/picture_layout.h"

namespace zor {

/// What a rectangle is good for.
enum class RectCheck {
  kOutside,   ///< leaves the picture: `VED_E_INVALIDARG`
  kTooSmall,  ///< narrower or lower than 2: a silent success
  kDraw
};

/// @param width, height of the picture.
inline RectCheck CheckDrawingRect(const RECT& rect, std::int32_t width, std::int32_t height) {
  if (rect.left < 0 || rect.top < 0 || rect.right > width || rect.bottom > height) {
    return RectCheck::kOutside;
  }
  const bool small =
      std::int64_t{rect.bottom} - rect.top < 2 || std::int64_t{rect.right} - rect.left < 2;
  return small ? RectCheck::kTooSmall : RectCheck::kDraw;
}

/// @return what a slot answers that doesn't draw.
inline std::int32_t ResultOf(RectCheck check) {
  return check == RectCheck::kOutside ? VED_E_INVALIDARG : VED_OK;
}

/// @return whether a picture's rows run from the bottom up in memory, so that rectangles are turned
///         over. Gray pictures aren't.
inline bool RowsRunUp(const SurfaceDescription& description) {
  return IsRgb(description.format) && description.Orientation == 0;
}

/// Turns a rectangle over in a picture of @p height rows.
inline void TurnOver(RECT* rect, std::int32_t height) {
  const auto rows = rect->bottom - rect->top;
  rect->bottom = height - rect->top;
  rect->top = rect->bottom - rows;
}

}  // namespace zor
