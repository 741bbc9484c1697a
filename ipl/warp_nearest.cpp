// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <cmath>
#include <initializer_list>

#include "ipl/warp_rows.h"
#include "ipl/warp_spans.h"
#include "ipl/warp_steps.h"

namespace zor {
namespace {

constexpr std::int32_t kHalf = 32768;  // makes rounding of truncation

/// @return whether all source positions of some columns lie in the source. Positions run evenly,
/// so those between two that do, do as well.
bool RowInside(const WarpRows& w, const WarpSteps& s, std::int32_t start, std::int32_t end) {
  for (const std::int64_t column : {start, end}) {
    const std::int64_t x = s.bx + s.sx * column;
    const std::int64_t y = s.by + s.sy * column;
    if (x < 0 || y < 0 || x >> 16 > w.lastColumn || y >> 16 > w.lastSourceRow) return false;
  }
  return true;
}

/// Any span, pixel by pixel: positions wrap at 32 bits, coordinates and row step have 16. A pixel
/// whose address lies outside of the source stays as it is.
void CheckedSpan(const WarpRows& w, const WarpSteps& s, std::uint8_t* to, std::int32_t start,
                 std::int32_t count) {
  const std::int64_t bytes = std::int64_t{w.lastSourceRow} * w.sourceStep +
                             (std::int64_t{w.lastColumn} + 1) * w.sourceChannels;
  const auto step = static_cast<std::int16_t>(static_cast<std::uint16_t>(w.sourceStep));
  for (std::int32_t i = 0; i < count; ++i, to += w.targetChannels) {
    const std::int64_t column = std::int64_t{start} + i;
    const std::int32_t xi = s.XAt(column) >> 16;
    const std::int32_t yi = s.YAt(column) >> 16;
    const std::int64_t offset = std::int64_t{xi} * w.sourceChannels + std::int64_t{yi} * step;
    if (offset < 0 || offset + w.sourceChannels > bytes) continue;
    for (std::int32_t c = w.channels - 1; c >= 0; --c) to[c] = w.source[offset + c];
  }
}

/// @return whether the target lies in the source's memory: then the order of pixels shows.
bool Overlaps(const WarpRows& w) {
  const auto from = reinterpret_cast<std::uintptr_t>(w.source);
  const auto to = reinterpret_cast<std::uintptr_t>(w.target);
  const auto read = static_cast<std::uintptr_t>((std::int64_t{w.lastSourceRow} + 1) * w.sourceStep);
  const auto written =
      static_cast<std::uintptr_t>((std::int64_t{w.lastRow} - w.firstRow + 1) * w.targetStep);
  return from < to + written && to < from + read;
}

/// @return whether the kernels of `WarpSpanForm` serve these pictures; `CheckedSpan` serves all.
bool HasKernels(const WarpRows& w) {
  const bool alike = w.sourceChannels == w.targetChannels && w.sourceChannels == w.channels;
  const bool known = w.channels == 1 || w.channels == 3 || w.channels == 4;
  return alike && known && w.sourceStep <= 32767 && w.lastColumn <= 32767 &&
         w.lastSourceRow <= 32767 && !Overlaps(w);
}

const WarpSpanForm& ChosenForm() {
  const bool vectors = (CpuFeatureWord & kFeatureSse2) != 0;
  return *kWarpSpanForms[vectors ? WidestForm(kWarpSpanForms) : 0];
}

/// Fills columns of a row, all of them in the source.
void InsideSpan(const WarpRows& w, const WarpSteps& s, const WarpSpanForm& form, std::uint8_t* to,
                std::int32_t start, std::int32_t end) {
  // Both coordinates stay below 2^31 inside of a span, so unsigned sums don't wrap apart.
  const WarpSpan span{w.source,
                      to,
                      w.sourceStep,
                      static_cast<std::uint32_t>(s.XAt(start)),
                      static_cast<std::uint32_t>(s.YAt(start)),
                      static_cast<std::uint32_t>(s.sx),
                      static_cast<std::uint32_t>(s.sy),
                      end - start + 1};
  if (w.channels == 1) {
    form.gray(span);
  } else if (w.channels == 4) {
    form.rgb32(span);
  } else {
    const auto last = static_cast<std::uint32_t>(w.lastSourceRow);
    const bool above = span.y >> 16 < last && static_cast<std::uint32_t>(s.YAt(end)) >> 16 < last;
    (above ? form.rgb24Above : form.rgb24)(span);
  }
}

/// At right angles every row of the picture has one span and whole steps: the warp is a move of the
/// lattice. @return whether it was done.
bool MoveWhole(const WarpRows& w, WarpSteps s) {
  const std::int32_t start = w.spanStarts[0];
  const std::int32_t end = w.spanEnds[0];
  if (!s.Whole() || end < start) return false;
  const WarpSteps first = s;
  for (std::int32_t row = 0; row <= w.lastRow - w.firstRow; ++row) {
    if (w.spanStarts[row] != start || w.spanEnds[row] != end || !RowInside(w, s, start, end)) {
      return false;
    }
    s.Advance(1);
  }
  const std::int64_t step = w.sourceStep;
  const std::int64_t pixel = w.channels;
  MoveLattice(
      {w.source, (first.by >> 16) * step + (first.bx >> 16) * pixel,
       (first.sy >> 16) * step + (first.sx >> 16) * pixel,
       (first.ry >> 16) * step + (first.rx >> 16) * pixel, w.target, w.targetStep, w.channels},
      start, 0, end, w.lastRow - w.firstRow);
  return true;
}

/// Tiles pay where a row of the target runs down more rows than columns of a source that is larger
/// than the caches; elsewhere whole rows are faster.
constexpr std::int64_t kTiledBytes = std::int64_t{16} << 20;
constexpr std::int32_t kTileRows = 64;
constexpr std::int32_t kTileColumns = 128;

bool WantsTiles(const WarpRows& w) {
  const bool steep = std::fabs(w.a[3]) > std::fabs(w.a[0]);
  return steep && std::int64_t{w.sourceStep} * (w.lastSourceRow + 1) > kTiledBytes;
}

/// Fills what of some rows' spans lies in columns @p left to @p right.
void FillTile(const WarpRows& w, WarpSteps s, const WarpSpanForm* form, std::int32_t row,
              std::int32_t rows, std::int32_t left, std::int32_t right) {
  s.Advance(row);
  for (std::int32_t i = row; i < row + rows; ++i, s.Advance(1)) {
    const std::int32_t start = w.spanStarts[i] > left ? w.spanStarts[i] : left;
    const std::int32_t end = w.spanEnds[i] < right ? w.spanEnds[i] : right;
    if (end < start) continue;
    std::uint8_t* to =
        w.target + std::int64_t{i} * w.targetStep + std::int64_t{start} * w.targetChannels;
    if (form != nullptr && RowInside(w, s, start, end)) {
      InsideSpan(w, s, *form, to, start, end);
    } else {
      CheckedSpan(w, s, to, start, end - start + 1);
    }
  }
}

}  // namespace

void WarpNearest8(const WarpRows& w) noexcept {
  const WarpSteps s(w, kHalf);
  const bool kernels = HasKernels(w);
  if (kernels && MoveWhole(w, s)) return;
  const WarpSpanForm* form = kernels ? &ChosenForm() : nullptr;
  const std::int32_t rows = w.lastRow - w.firstRow + 1;
  if (!kernels || !WantsTiles(w)) {
    FillTile(w, s, form, 0, rows, INT32_MIN, INT32_MAX);
    return;
  }
  std::int32_t left = INT32_MAX;
  std::int32_t right = INT32_MIN;
  for (std::int32_t i = 0; i < rows; ++i) {
    if (w.spanEnds[i] < w.spanStarts[i]) continue;
    if (w.spanStarts[i] < left) left = w.spanStarts[i];
    if (w.spanEnds[i] > right) right = w.spanEnds[i];
  }
  for (std::int32_t row = 0; row < rows; row += kTileRows) {
    const std::int32_t count = rows - row < kTileRows ? rows - row : kTileRows;
    for (std::int64_t x = left; x <= right; x += kTileColumns) {
      FillTile(w, s, form, row, count, static_cast<std::int32_t>(x),
               static_cast<std::int32_t>(x + kTileColumns - 1));
    }
  }
}

}  // namespace zor
