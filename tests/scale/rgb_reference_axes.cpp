// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <algorithm>
#include <cmath>

#include "scale/rgb_reference.h"

namespace zor::test {
namespace {

std::int64_t Trunc(double value) {
  return static_cast<std::int64_t>(std::trunc(value));
}
std::uint32_t Replicate(std::int64_t weight) {
  return static_cast<std::uint32_t>(weight) * 0x01010101u;
}
std::uint32_t WeightOf(double frac) {
  return frac > 0 ? Replicate(Trunc(frac * 255 + 0.5) & 255) : 0;
}

/// Fills the tables position by position.
struct Positions {
  RgbRefAxis& axis;
  std::int64_t stride;

  void Set(int i, std::int64_t index, std::uint32_t word) {
    axis.places[static_cast<std::size_t>(i)] = index * stride;
    axis.words[static_cast<std::size_t>(i)] = word;
  }
  void First(int next) { axis.first = std::max(axis.first, next); }
  void Last(int i) { axis.last = std::min(axis.last, i); }
};

void NearestAxis(Positions& at, int count, int length, double start, double step) {
  double pos = start + 0.5 * step;
  for (int i = 0; i < count; ++i) {
    const std::int64_t idx = Trunc(pos + 1e-9);
    if (idx < 0) at.First(i + 1);
    if (idx >= length - 1) at.Last(i);
    at.Set(i, idx < 0 ? 0 : idx < length - 1 ? idx : length - 1, 0);
    pos += step;
  }
}

void BilinearAxis(Positions& at, int count, int length, double start, double step) {
  const int limit = at.stride == 3 ? length - 2 : length - 1;
  double pos = start + 0.5 * step - 0.5;
  for (int i = 0; i < count; ++i) {
    const std::int64_t idx = Trunc(pos + 1e-9);
    const bool behind = pos > (length - 1) + step;
    if (pos < -step || (!behind && idx < 0)) {
      at.First(i + 1);
      at.Set(i, 0, 0xFFFFFFFF);
    } else if (behind || idx >= limit) {
      at.Last(i);
      at.Set(i, length - 1, 0xFFFFFFFF);
    } else {
      at.Set(i, idx, WeightOf(pos - static_cast<double>(idx)));
    }
    pos += step;
  }
}

void FadeAxis(Positions& at, int count, int length, double start, double step) {
  double pos = start + 0.5 * step - 0.5;
  for (int i = 0; i < count; ++i) {
    const std::int64_t idx = Trunc(pos + 1e-9);
    if (pos < -step) {
      at.First(i + 1);
      at.Set(i, 0, 0);
    } else if (pos > (length - 1) + step) {
      at.Last(i);
      at.Set(i, length - 1, 0);
    } else if (pos < 0) {
      at.First(i + 1);
      at.Set(i, 0, Replicate(Trunc((pos + step) / step * 255 + 0.5) & 255));
    } else if (idx < length - 1) {
      at.Set(i, idx, WeightOf(pos - static_cast<double>(idx)));
    } else {
      at.Last(i);
      at.Set(i, length - 1,
             Replicate(255 - (Trunc((pos - (length - 1)) / step * 255 + 0.5) & 255)));
    }
    pos += step;
  }
}

void RowPairAxis(Positions& at, int count, int length, double start, double step) {
  const int h = length >> 1;
  double pos = start + 0.5 * step - 0.5;
  for (int i = 0; i + 1 < count; i += 2) {
    const std::int64_t idx = Trunc(pos + 1e-9);
    std::int64_t row = h - 1;
    std::uint32_t word = 0;
    if (pos < -step) {
      at.First(i + 2);
      row = 0;
    } else if (pos > (h - 1) + step) {
      at.Last(i);
      word = 0xFFFFFFFF;
    } else if (idx < 0) {
      at.First(i + 2);
      row = 0;
      word = Replicate(Trunc((pos + step) / step * 255 + 0.5) & 255);
    } else if (idx < h - 1) {
      row = idx;
      word = WeightOf(pos - static_cast<double>(idx));
    } else {
      at.Last(i);
      word = Replicate(Trunc((pos - (h - 1)) / step * 255 + 0.5) & 255);
    }
    at.Set(i, 2 * row, word);
    at.Set(i + 1, 2 * row + 1, word);
    pos += step;
  }
  if (count > 1 && count % 2 == 1) {
    const auto n = static_cast<std::size_t>(count);
    at.axis.places[n - 1] = at.axis.places[n - 2];
    at.axis.words[n - 1] = at.axis.words[n - 2];
  }
}

std::uint32_t ShareBehind(double pos, int length, double step) {
  return static_cast<std::uint32_t>(
      std::min<std::int64_t>(255, Trunc(255 - ((length - pos) * 255 / step + 0.5))));
}

void AreaAxis(Positions& at, int count, int length, double start, double step) {
  double pos = start;
  const double c = 0.5 * step - 1.5;
  for (int i = 0; i < count; ++i) {
    const std::int64_t idx = Trunc(pos + 1e-9);
    if (idx < 0) {
      const double q = pos + step;
      const auto share = static_cast<std::uint32_t>(255 - Trunc(q * 255 / step + 0.5));
      at.First(i + 1);
      at.Set(i, 0, q >= 1e-12 ? (share << 16) | 1u : 0xFF0000u);
    } else if (idx < length - 2) {
      const double value = (c + pos - static_cast<double>(idx)) * 255 / (step * 6);
      at.Set(i, idx, static_cast<std::uint32_t>(Trunc(value)));
    } else if (idx <= length - 1) {
      auto word = static_cast<std::uint32_t>(length - idx);
      if (pos + step >= length) word |= ShareBehind(pos, length, step) << 16;
      at.Last(i);
      at.Set(i, idx, word);
    } else {
      at.Last(i);
      at.Set(i, length - 1, 0xFF0000);
    }
    pos += step;
  }
}

void BoxAxis(Positions& at, int count, int length, double start, double step, bool fade) {
  double pos = start;
  for (int i = 0; i < count; ++i) {
    const double q = pos + step;
    const std::int64_t a = Trunc(pos + 1e-9);
    const std::int64_t b = Trunc(q + 1e-9);
    std::int64_t index = a;
    std::int64_t boxes = b - a;
    std::uint32_t share = 0;
    if (b < 1) {
      at.First(i + 1);
      index = boxes = 0;
      share = 255;
    } else if (a > length - 1) {
      at.Last(i);
      index = length - 1;
      boxes = 0;
      share = 255;
    } else if (a < 0) {
      at.First(i + 1);
      index = 0;
      boxes = b;
      share = static_cast<std::uint32_t>(255 - Trunc(q * 255 / step + 0.5));
    } else if (b > length - 1) {
      at.Last(i);
      boxes = length - a;
      share = ShareBehind(pos, length, step);
    }
    at.Set(i, index, static_cast<std::uint32_t>(boxes) | (fade ? share << 16 : 0));
    pos = q;
  }
}

}  // namespace

RgbRefAxis RefAxis(int targetLength, int sourceLength, std::int64_t stride, double start,
                   double step, ScaleMode mode) {
  const auto n = static_cast<std::size_t>(targetLength);
  RgbRefAxis axis{std::vector<std::uint32_t>(n), std::vector<std::int64_t>(n), 0, targetLength};
  Positions at{axis, stride};
  switch (mode) {
    case 0:
      NearestAxis(at, targetLength, sourceLength, start, step);
      break;
    case 1:
      BilinearAxis(at, targetLength, sourceLength, start, step);
      break;
    case 2:
      FadeAxis(at, targetLength, sourceLength, start, step);
      break;
    case 3:
    case 4:
      BoxAxis(at, targetLength, sourceLength, start, step, mode == 4);
      break;
    case 5:
      RowPairAxis(at, targetLength, sourceLength, start, step);
      break;
    default:
      AreaAxis(at, targetLength, sourceLength, start, step);
      break;
  }
  return axis;
}

}  // namespace zor::test
