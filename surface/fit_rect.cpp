// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <zorsurface/result_codes.h>

#include <algorithm>
#include <cmath>

#include "surface/surface.h"

namespace zor {
namespace {

constexpr double kSameRatio = 0.000001;

std::int32_t Hold(std::int64_t value) {
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
}

/// @return the value cut towards zero and held to 32 bits; 0 for no number.
std::int32_t Truncate(double value) {
  if (std::isnan(value)) return 0;
  return static_cast<std::int32_t>(
      std::clamp(value, static_cast<double>(INT32_MIN), static_cast<double>(INT32_MAX)));
}

/// @return a x b / c with the product in 32 bits, wrapped around.
std::int32_t Proportion(std::int32_t a, std::int32_t b, std::int32_t c) {
  const std::uint32_t product = static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b);
  return static_cast<std::int32_t>(product) / c;
}

/// One axis of a picture that stands centred between two bars.
struct Span {
  std::int32_t start;
  std::int32_t end;
};
Span Centre(std::int32_t room, std::int32_t extent) {
  const std::int64_t start = (std::int64_t{room} - extent) / 2;
  return {Hold(start), Hold(start + extent)};
}

}  // namespace

std::int32_t CZorSurface::ComputeFitRect(std::int32_t width, std::int32_t height, RECT* out) {
  if (out == nullptr) return VED_E_INVALIDARG;
  std::int32_t w = description_.width;
  std::int32_t h = description_.height;
  const double a = aspectWidth_;
  const double b = aspectHeight_;
  if (aspectWidth_ > 0 && aspectHeight_ > 0 &&
      std::fabs(static_cast<double>(w) / h - a / b) > kSameRatio) {
    if (w / a <= h / b) {
      h = Proportion(aspectHeight_, w, aspectWidth_);
    } else {
      w = Proportion(aspectWidth_, h, aspectHeight_);
    }
  }

  const double picture = static_cast<double>(w) / h;
  const double target = static_cast<double>(width) / height;
  if (!(target <= picture)) {  // narrower than the target, or not comparable
    const Span across = Centre(width, Truncate(picture * height));
    out->left = across.start;
    out->right = across.end;
    out->bottom = height;
  } else {
    const Span down = Centre(height, Truncate(width / picture));
    out->top = down.start;
    out->bottom = down.end;
    out->right = width;
  }
  return VED_OK;
}

}  // namespace zor
