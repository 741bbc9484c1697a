// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The nearest-neighbour warp written out pixel by pixel, for tests.

#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "ipl/iplalloc.h"

namespace zor::test {

/// A picture with its header, for the length of a test.
struct Picture {
  Picture(int w, int h, int channels_, int step_ = 0)
      : width(w),
        height(h),
        channels(channels_),
        step(step_ != 0 ? step_ : (w * channels_ + 3) / 4 * 4),
        bytes(static_cast<std::size_t>(step) * static_cast<std::size_t>(h)),
        image(CreateImageHeader(w, h, 8 * channels_)) {
    image->widthStep = step;
    image->imageData = bytes.data();
  }
  ~Picture() {
    image->imageData = nullptr;
    iplReleaseHeader(image);
  }
  Picture(const Picture&) = delete;
  Picture& operator=(const Picture&) = delete;

  std::uint8_t* At(int x, int y) {
    return bytes.data() + static_cast<std::ptrdiff_t>(y) * step + x * channels;
  }

  int width, height, channels, step;
  std::vector<std::uint8_t> bytes;
  IplImage* image;
};

struct Affine {
  double a0, a1, a2, a3, a4, a5;
};

/// The images of the source's corners under x' = c0 x + c1 y + c2, y' = c3 x + c4 y + c5.
inline void Corners(const double* c, int width, int height, double* quad) {
  const double w = width - 1, h = height - 1;
  const double xs[] = {0, w, w, 0}, ys[] = {0, 0, h, h};
  for (int i = 0; i < 4; ++i) {
    quad[2 * i] = c[0] * xs[i] + c[1] * ys[i] + c[2];
    quad[2 * i + 1] = c[3] * xs[i] + c[4] * ys[i] + c[5];
  }
}

inline Affine Inverse(const double* q, int width, int height) {
  const double w = width - 1, h = height - 1;
  const double inv = 1 / ((q[5] - q[3]) * (q[2] - q[0]) - (q[3] - q[1]) * (q[4] - q[2]));
  Affine m;
  m.a0 = (q[5] - q[3]) * w * inv;
  m.a1 = -(q[4] - q[2]) * w * inv;
  m.a2 = 0 - m.a0 * q[0] - m.a1 * q[1];
  m.a3 = -(q[3] - q[1]) * h * inv;
  m.a4 = (q[2] - q[0]) * h * inv;
  m.a5 = 0 - m.a3 * q[0] - m.a4 * q[1];
  return m;
}

/// One row's columns inside of a quadrilateral by the edges' crossings with the row, held to
/// columns 0 to width - 1. A convex shape meets a row in one run. @return whether it meets it.
inline bool RowSpan(const double* q, int y, int width, int* start, int* end) {
  constexpr double kHair = 1.03e-14;
  double low = INFINITY, high = -INFINITY;
  for (int i = 0; i < 4; ++i) {
    const double ax = q[2 * i], ay = q[2 * i + 1];
    const double bx = q[2 * ((i + 1) % 4)], by = q[2 * ((i + 1) % 4) + 1];
    if ((y < ay && y < by) || (y > ay && y > by)) continue;
    if (ay == by) {
      low = std::fmin(low, std::fmin(ax, bx));
      high = std::fmax(high, std::fmax(ax, bx));
      continue;
    }
    const double x = ax + (bx - ax) / (by - ay) * (y - ay);
    low = std::fmin(low, x);
    high = std::fmax(high, x);
  }
  if (low > high) return false;
  low = std::fmax(low, 0);
  high = std::fmin(high, width - 1);
  *start = static_cast<int>(std::ceil(low)) - (1 - (std::ceil(low) - low) < kHair ? 1 : 0);
  *end = static_cast<int>(std::floor(high)) + (1 - (high - std::floor(high)) < kHair ? 1 : 0);
  return true;
}

/// First and last row of a quadrilateral's part inside of a picture. @return whether there is one.
inline bool ClippedRows(const double* quad, int width, int height, int* first, int* last) {
  using Point = std::pair<double, double>;
  std::vector<Point> shape;
  for (int i = 0; i < 4; ++i) shape.emplace_back(quad[2 * i], quad[2 * i + 1]);
  auto cut = [&](bool vertical, double limit, bool above) {
    auto at = [&](const Point& p) { return vertical ? p.second : p.first; };
    auto other = [&](const Point& p) { return vertical ? p.first : p.second; };
    auto in = [&](const Point& p) { return above ? at(p) >= limit : at(p) <= limit; };
    std::vector<Point> kept;
    for (std::size_t i = 0; i < shape.size(); ++i) {
      const Point p = shape[i], q = shape[(i + 1) % shape.size()];
      if (in(p)) kept.push_back(p);
      if (in(p) == in(q)) continue;
      const double c = (other(q) - other(p)) / (at(q) - at(p)) * (limit - at(p)) + other(p);
      kept.push_back(vertical ? Point{c, limit} : Point{limit, c});
    }
    shape = kept;
  };
  cut(true, 0, true);
  cut(true, height - 1, false);
  cut(false, 0, true);
  cut(false, width - 1, false);
  if (shape.empty()) return false;
  double low = INFINITY, high = -INFINITY;
  for (const Point& p : shape) {
    low = std::fmin(low, p.second);
    high = std::fmax(high, p.second);
  }
  *first = static_cast<int>(std::ceil(low));
  *last = static_cast<int>(std::floor(high));
  return *first <= *last;
}

/// The source pixel of a destination pixel: 16.16 words, wrapping, a half added, shifted down.
inline void SourceOf(const Affine& m, int firstRow, int x, int y, int* sx, int* sy) {
  auto word = [](double v) {
    return static_cast<std::uint32_t>(static_cast<std::int64_t>(std::nearbyint(v * 65536)));
  };
  const auto column = static_cast<std::uint32_t>(x), row = static_cast<std::uint32_t>(y - firstRow);
  const std::uint32_t fx =
      word(firstRow * m.a1 + m.a2) + 32768 + word(m.a1) * row + word(m.a0) * column;
  const std::uint32_t fy =
      word(firstRow * m.a4 + m.a5) + 32768 + word(m.a4) * row + word(m.a3) * column;
  *sx = static_cast<std::int32_t>(fx) >> 16;
  *sy = static_cast<std::int32_t>(fy) >> 16;
}

/// Walks the destination pixels that a warp paints. Spans come from the quadrilateral's edges.
/// @param from, to have a width and a height.
/// @param visit takes the way back to the source, the first row that is painted, and the pixel's
///        column and row.
template <class From, class To, class Visit>
void ForEachPainted(const From& from, const To& to, const double* coeffs, const Visit& visit) {
  double quad[8];
  Corners(coeffs, from.width, from.height, quad);
  const Affine m = Inverse(quad, from.width, from.height);
  int firstRow = 0, lastRow = -1;
  if (!ClippedRows(quad, to.width, to.height, &firstRow, &lastRow)) return;
  for (int y = firstRow; y <= lastRow; ++y) {
    int start = 0, end = -1;
    if (!RowSpan(quad, y, to.width, &start, &end)) continue;
    for (int x = start; x <= end; ++x) visit(m, firstRow, x, y);
  }
}

/// The nearest-neighbour warp by its definition.
inline void ReferenceWarp(const Picture& from, Picture& to, const double* coeffs) {
  ForEachPainted(from, to, coeffs, [&](const Affine& m, int firstRow, int x, int y) {
    int sx = 0, sy = 0;
    SourceOf(m, firstRow, x, y, &sx, &sy);
    const long long offset = static_cast<long long>(sx) * from.channels +
                             static_cast<long long>(sy) * static_cast<std::int16_t>(from.step);
    for (int c = 0; c < from.channels; ++c) {
      if (offset >= 0 && offset + from.channels <= static_cast<long long>(from.bytes.size())) {
        to.At(x, y)[c] = from.bytes[static_cast<std::size_t>(offset + c)];
      }
    }
  });
}

}  // namespace zor::test
