// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// A picture whose four quarters have colours of their own, so that every turn and every exchange
/// of channels or planes shows; and plans run on one picture.

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>

#include "executor.h"

namespace zorhost::test {

struct QuarterColour {
  const char* name;
  int r, g, b;
  int y, u, v;  ///< BT.601 in video range, rounded
};
constexpr QuarterColour kRed = {"red", 255, 0, 0, 81, 90, 240};
constexpr QuarterColour kGreen = {"green", 0, 255, 0, 145, 54, 34};
constexpr QuarterColour kBlue = {"blue", 0, 0, 255, 41, 240, 110};
constexpr QuarterColour kWhite = {"white", 255, 255, 255, 235, 128, 128};

/// Left upper, right upper, left lower, right lower.
using Quarters = std::array<QuarterColour, 4>;
constexpr Quarters kQuarters = {kRed, kGreen, kBlue, kWhite};

inline int QuarterAt(int x, int width, int y, int height) {
  return (2 * x >= width) + 2 * (2 * y >= height);
}

inline Picture PaintQuarters(Layout layout, int width, int height) {
  Picture picture(layout, width, height);
  for (int p = 0; p < picture.planeCount(); ++p) {
    const Plane& plane = picture.plane(p);
    const bool vFirst = layout == Layout::kYuv420;
    for (int y = 0; y < plane.rows; ++y) {
      for (int i = 0; i < plane.rowBytes; ++i) {
        const QuarterColour& c =
            kQuarters[static_cast<std::size_t>(QuarterAt(i, plane.rowBytes, y, plane.rows))];
        const int step = Traits(layout).bitsPerPixel / 8;
        const int packedRgb[4] = {c.b, c.g, c.r, 0};
        const int packedYuv[4] = {c.y, c.u, c.y, c.v};
        const int planes[3] = {c.y, vFirst ? c.v : c.u, vFirst ? c.u : c.v};
        const int value = Traits(layout).rgb        ? packedRgb[i % step]
                          : layout == Layout::kYuy2 ? packedYuv[i % 4]
                                                    : planes[p];
        picture.row(p, y)[i] = static_cast<std::uint8_t>(value);
      }
    }
  }
  return picture;
}

/// Looks at the middle of every quarter.
inline void ExpectQuarters(const Picture& picture, const Quarters& expected,
                           const std::string& what) {
  // Every crossing between RGB and YUV floors, which takes up to 3 off; there are four at most.
  constexpr int kTolerance = 12;
  const Layout layout = picture.layout();
  for (int quarter = 0; quarter < 4; ++quarter) {
    const QuarterColour& c = expected[static_cast<std::size_t>(quarter)];
    const int x = (picture.width() / 4 + quarter % 2 * (picture.width() / 2)) & ~1;
    const int y = (picture.height() / 4 + quarter / 2 * (picture.height() / 2)) & ~1;
    const auto close = [&](int is, int wanted, const char* channel) {
      EXPECT_LE(std::abs(is - wanted), kTolerance)
          << what << ": " << channel << " of quarter " << quarter << ", " << c.name
          << " wanted, is " << is;
    };
    const std::uint8_t* row = picture.row(0, y);
    if (Traits(layout).rgb) {
      const std::uint8_t* pixel = row + x * (Traits(layout).bitsPerPixel / 8);
      close(pixel[0], c.b, "blue");
      close(pixel[1], c.g, "green");
      close(pixel[2], c.r, "red");
    } else if (layout == Layout::kYuy2) {
      close(row[2 * x], c.y, "Y");
      close(row[2 * x + 1], c.u, "U");
      close(row[2 * x + 3], c.v, "V");
    } else {
      close(row[x], c.y, "Y");
      if (layout == Layout::kGray8) continue;
      const bool vFirst = layout == Layout::kYuv420;
      close(picture.row(vFirst ? 2 : 1, y / 2)[x / 2], c.u, "U");
      close(picture.row(vFirst ? 1 : 2, y / 2)[x / 2], c.v, "V");
    }
  }
}

inline StreamInfo InfoOf(const Picture& picture) {
  StreamInfo info;
  info.path = "picture";
  info.layout = picture.layout();
  info.width = picture.width();
  info.height = picture.height();
  info.hasAlpha = picture.hasAlpha;
  return info;
}

inline Plan PlanOf(const Picture& picture, Layout target) {
  std::vector<std::string> notes;
  return Plan(InfoOf(picture), target, notes);
}

inline Picture RunPlan(Plan plan, const Picture& picture, Way way = Way::kDeferred,
                       bool bottomUp = false) {
  plan.ReadAs(bottomUp, 0);
  const Library library;
  Picture out;
  Executor(library, plan).Run(picture, way, out);
  return out;
}

}  // namespace zorhost::test
