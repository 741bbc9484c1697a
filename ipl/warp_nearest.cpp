// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <cmath>
#include <initializer_list>
#include <cstring>

#include "ipl/warp_rows.h"
#include "platform/compiler.h"

namespace zor {
namespace {

constexpr double kOne = 65536.0;

/// Rounded to nearest, ties to even; a value beyond 32 bits keeps its low 32.
std::int32_t Fixed(double value) {
  const double rounded = std::rint(value);
  if (!(std::fabs(rounded) < 9.2e18)) return 0;
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<std::int64_t>(rounded)));
}

std::int32_t Wrap(std::int64_t value) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

/// The fixed-point form of a warp.
struct Steps {
  std::int32_t sx, sy;  // per column
  std::int32_t rx, ry;  // per row
  std::int32_t bx, by;  // base of the first row, with the half that rounds

  explicit Steps(const WarpRows& w)
      : sx(Fixed(w.a[0] * kOne)),
        sy(Fixed(w.a[3] * kOne)),
        rx(Fixed(w.a[1] * kOne)),
        ry(Fixed(w.a[4] * kOne)),
        bx(Wrap(std::int64_t{Fixed((w.firstRow * w.a[1] + w.a[2]) * kOne)} + 32768)),
        by(Wrap(std::int64_t{Fixed((w.firstRow * w.a[4] + w.a[5]) * kOne)} + 32768)) {}

  void Advance() {
    bx = Wrap(std::int64_t{bx} + rx);
    by = Wrap(std::int64_t{by} + ry);
  }
  /// @return whether columns and rows step by whole pixels.
  bool Whole() const { return ((sx | sy | rx | ry) & 0xFFFF) == 0; }
};

/// Source positions of a row, both ends of the span tested: positions run evenly, so all between
/// lie inside as well.
bool RowInside(const WarpRows& w, const Steps& s, std::int32_t start, std::int32_t end) {
  for (const std::int64_t column : {start, end}) {
    const std::int64_t x = s.bx + s.sx * column;
    const std::int64_t y = s.by + s.sy * column;
    if (x < 0 || y < 0 || x >> 16 > w.lastColumn || y >> 16 > w.lastSourceRow) return false;
  }
  return true;
}

template <int kBytes>
ZOR_ALWAYS_INLINE void CopyPixel(std::uint8_t* to, const std::uint8_t* from) {
  std::memcpy(to, from, kBytes);
}

/// One span whose positions all lie in the source.
template <int kPixel, int kCopied>
void InsideSpan(const WarpRows& w, const Steps& s, std::uint8_t* to, std::int32_t start,
                std::int32_t count) {
  // Both coordinates stay below 2^31 inside of a span, so unsigned sums don't wrap apart.
  auto x = static_cast<std::uint32_t>(Wrap(s.bx + std::int64_t{s.sx} * start));
  auto y = static_cast<std::uint32_t>(Wrap(s.by + std::int64_t{s.sy} * start));
  const auto sx = static_cast<std::uint32_t>(s.sx);
  const auto sy = static_cast<std::uint32_t>(s.sy);
  const std::int64_t step = w.sourceStep;
  const std::uint8_t* source = w.source;
  for (std::int32_t i = 0; i < count; ++i) {
    CopyPixel<kCopied>(to, source + static_cast<std::int64_t>(y >> 16) * step +
                               static_cast<std::int64_t>(x >> 16) * kPixel);
    to += kPixel;
    x += sx;
    y += sy;
  }
}

/// Any span, by the letter: 32-bit positions that wrap, 16-bit coordinates and row step. An address
/// outside of the source leaves its pixel.
void CheckedSpan(const WarpRows& w, const Steps& s, std::uint8_t* to, std::int32_t start,
                 std::int32_t count) {
  const std::int64_t bytes = std::int64_t{w.lastSourceRow} * w.sourceStep +
                             (std::int64_t{w.lastColumn} + 1) * w.sourceChannels;
  const auto step = static_cast<std::int16_t>(static_cast<std::uint16_t>(w.sourceStep));
  for (std::int32_t i = 0; i < count; ++i, to += w.targetChannels) {
    const std::int64_t column = std::int64_t{start} + i;
    const std::int32_t xi = Wrap(s.bx + s.sx * column) >> 16;
    const std::int32_t yi = Wrap(s.by + s.sy * column) >> 16;
    const std::int64_t offset = std::int64_t{xi} * w.sourceChannels + std::int64_t{yi} * step;
    if (offset < 0 || offset + w.channels > bytes) continue;
    for (std::int32_t c = w.channels - 1; c >= 0; --c) to[c] = w.source[offset + c];
  }
}

using SpanKernel = void (*)(const WarpRows&, const Steps&, std::uint8_t*, std::int32_t,
                            std::int32_t);

/// @return the kernel for spans inside of the source, or null where only the general one serves.
SpanKernel InsideKernel(const WarpRows& w) {
  if (w.sourceChannels != w.targetChannels || w.sourceStep > 32767) return nullptr;
  if (w.lastColumn > 32767 || w.lastSourceRow > 32767) return nullptr;
  if (w.sourceChannels == 1 && w.channels == 1) return InsideSpan<1, 1>;
  if (w.sourceChannels == 3 && w.channels == 3) return InsideSpan<3, 3>;
  if (w.sourceChannels == 4 && w.channels == 4) return InsideSpan<4, 4>;
  if (w.sourceChannels == 4 && w.channels == 3) return InsideSpan<4, 3>;
  return nullptr;
}

/// At right angles every row of the picture has one span and whole steps: the warp is a move of the
/// lattice. @return whether it was done.
bool MoveWhole(const WarpRows& w, Steps s) {
  const std::int32_t start = w.spanStarts[0];
  const std::int32_t end = w.spanEnds[0];
  if (!s.Whole() || w.channels != w.sourceChannels || end < start) return false;
  if (w.channels != 1 && w.channels != 3 && w.channels != 4) return false;
  const Steps first = s;
  for (std::int32_t row = 0; row <= w.lastRow - w.firstRow; ++row) {
    if (w.spanStarts[row] != start || w.spanEnds[row] != end || !RowInside(w, s, start, end)) {
      return false;
    }
    s.Advance();
  }
  const std::int64_t step = w.sourceStep;
  const std::int64_t pixel = w.channels;
  MoveLattice({w.source, (first.by >> 16) * step + (first.bx >> 16) * pixel,
               (first.sy >> 16) * step + (first.sx >> 16) * pixel,
               (first.ry >> 16) * step + (first.rx >> 16) * pixel, w.target, w.targetStep,
               w.channels},
              start, 0, end, w.lastRow - w.firstRow);
  return true;
}

}  // namespace

void WarpNearest8(const WarpRows& w) noexcept {
  Steps s(w);
  const SpanKernel inside = InsideKernel(w);
  if (inside != nullptr && MoveWhole(w, s)) return;
  std::uint8_t* row = w.target;
  for (std::int32_t y = w.firstRow; y <= w.lastRow; ++y, row += w.targetStep, s.Advance()) {
    const std::int32_t start = w.spanStarts[y - w.firstRow];
    const std::int32_t end = w.spanEnds[y - w.firstRow];
    if (end < start) continue;
    const bool fast = inside != nullptr && RowInside(w, s, start, end);
    (fast ? inside : CheckedSpan)(w, s, row + std::int64_t{start} * w.targetChannels, start,
                                  end - start + 1);
  }
}

}  // namespace zor
