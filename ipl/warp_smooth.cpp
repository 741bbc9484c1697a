// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <cmath>

#include "ipl/warp_rows.h"
#include "ipl/warp_steps.h"

namespace zor {
namespace {

/// A position in the source, held to it: cell or neighbourhood, and place inside.
struct Held {
  std::int32_t base;
  std::int32_t place;  // 16.16 from the base
};

std::int64_t HoldPosition(std::int64_t position, std::int32_t last) {
  const std::int64_t limit = std::int64_t{last} << 16;
  return position < 0 ? 0 : position > limit ? limit : position;
}

/// A cell of two pixels, of which the last starts one before the end.
Held LinearCell(std::int64_t position, std::int32_t last) {
  const std::int64_t held = HoldPosition(position, last);
  auto base = static_cast<std::int32_t>(held >> 16);
  if (base > last - 1) base = last - 1;
  return {base, static_cast<std::int32_t>(held - (std::int64_t{base} << 16))};
}

/// A neighbourhood of four pixels that lies in the source.
Held CubicCells(std::int64_t position, std::int32_t last) {
  const std::int64_t held = HoldPosition(position, last);
  const auto index = static_cast<std::int32_t>(held >> 16);
  const std::int32_t base = index < 1 ? 0 : index < last - 1 ? index - 1 : last - 3;
  return {base, static_cast<std::int32_t>(held - (std::int64_t{base} << 16))};
}

/// Walks all spans. @param pixel called with destination pixel, x and y position.
template <class Pixel>
void Walk(const WarpRows& w, Pixel pixel) {
  WarpSteps s(w, 0);
  std::uint8_t* row = w.target;
  for (std::int32_t i = 0; i <= w.lastRow - w.firstRow; ++i, row += w.targetStep, s.Advance(1)) {
    for (std::int64_t c = w.spanStarts[i]; c <= w.spanEnds[i]; ++c) {
      pixel(row + c * w.targetChannels, s.XAt(c), s.YAt(c));
    }
  }
}

constexpr std::int32_t kUnit = 16384;  // one in 14 bits
constexpr std::int32_t kHalf = 0x80000;
constexpr std::int32_t kLastIndex = 1536;

/// Weights of third-order Lagrange interpolation through the nodes 0 to 3 at t = i / 512, 14 bits.
struct CubicTable {
  std::int32_t weight[kLastIndex + 1][2];

  CubicTable() {
    for (std::int32_t i = 0; i <= kLastIndex; ++i) {
      const double t = i / 512.0;
      weight[i][0] = static_cast<std::int32_t>(std::rint(-(t - 1) * (t - 2) * (t - 3) / 6 * kUnit));
      weight[i][1] = static_cast<std::int32_t>(std::rint(t * (t - 2) * (t - 3) / 2 * kUnit));
    }
  }
  /// The four weights at an index: the last two are the mirrored first two.
  void At(std::int32_t i, std::int32_t (&out)[4]) const {
    out[0] = weight[i][0];
    out[1] = weight[i][1];
    out[2] = weight[kLastIndex - i][1];
    out[3] = weight[kLastIndex - i][0];
  }
};

const CubicTable cubicTable;

}  // namespace

void WarpLinear8(const WarpRows& w) noexcept {
  Walk(w, [&](std::uint8_t* to, std::int64_t xPosition, std::int64_t yPosition) {
    const Held x = LinearCell(xPosition, w.lastColumn);
    const Held y = LinearCell(yPosition, w.lastSourceRow);
    const std::int32_t fx = x.place >> 2;
    const std::int32_t fy = y.place >> 2;
    const std::uint8_t* p =
        w.source + std::int64_t{y.base} * w.sourceStep + std::int64_t{x.base} * w.sourceChannels;
    const std::uint8_t* q = p + w.sourceStep;
    for (std::int32_t c = 0; c < w.channels; ++c) {
      const std::int32_t h0 = (p[c] * (kUnit - fx) + p[c + w.sourceChannels] * fx) >> 8;
      const std::int32_t h1 = (q[c] * (kUnit - fx) + q[c + w.sourceChannels] * fx) >> 8;
      to[c] = static_cast<std::uint8_t>((h0 * (kUnit - fy) + h1 * fy + kHalf) >> 20);
    }
  });
}

void WarpCubic8(const WarpRows& w) noexcept {
  Walk(w, [&](std::uint8_t* to, std::int64_t xPosition, std::int64_t yPosition) {
    const Held x = CubicCells(xPosition, w.lastColumn);
    const Held y = CubicCells(yPosition, w.lastSourceRow);
    std::int32_t wx[4];
    std::int32_t wy[4];
    cubicTable.At((x.place + 64) >> 7, wx);
    cubicTable.At((y.place + 64) >> 7, wy);
    const std::uint8_t* p =
        w.source + std::int64_t{y.base} * w.sourceStep + std::int64_t{x.base} * w.sourceChannels;
    for (std::int32_t c = 0; c < w.channels; ++c) {
      std::int32_t sum = kHalf;
      for (int j = 0; j < 4; ++j) {
        const std::uint8_t* row = p + std::int64_t{j} * w.sourceStep + c;
        std::int32_t h = 0;
        for (int i = 0; i < 4; ++i) h += row[i * w.sourceChannels] * wx[i];
        sum += (h >> 8) * wy[j];
      }
      const std::int32_t value = sum >> 20;
      to[c] = static_cast<std::uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value);
    }
  });
}

}  // namespace zor
