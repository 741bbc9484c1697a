// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <cstring>
#include <initializer_list>

#include "convert/fast_mem_copy.h"
#include "convert/streaming.h"
#include "ipl/move_rows.h"
#include "ipl/warp_rows.h"

namespace zor {
namespace {

/// Pieces of rows on their way past the caches.
constexpr std::int32_t kScratchBytes = 16384;

/// The region to fill, from its own first column and row.
struct Region {
  std::uint8_t* target;
  std::int64_t targetStep;
  const std::uint8_t* source;
  std::int64_t columnStep;
  std::int64_t rowStep;
  std::int32_t columns;
  std::int32_t rows;
  std::int32_t pixel;

  std::int64_t RowBytes() const { return std::int64_t{columns} * pixel; }
  std::uint8_t* Row(std::int32_t y) const { return target + y * targetStep; }
  const std::uint8_t* SourceRow(std::int32_t y) const { return source + y * rowStep; }
};

/// @return whether a byte to write may be one to read: then the order of pixels shows.
bool Overlaps(const Region& r) {
  std::int64_t low = 0;
  std::int64_t high = r.pixel;
  for (const std::int64_t reach : {(r.columns - 1) * r.columnStep, (r.rows - 1) * r.rowStep}) {
    (reach < 0 ? low : high) += reach;
  }
  const auto from = reinterpret_cast<std::uintptr_t>(r.source);
  const auto to = reinterpret_cast<std::uintptr_t>(r.target);
  const auto written = static_cast<std::uintptr_t>((r.rows - 1) * r.targetStep + r.RowBytes());
  return from + static_cast<std::uintptr_t>(low) < to + written &&
         to < from + static_cast<std::uintptr_t>(high);
}

/// Pixel by pixel, row by row.
void MoveInOrder(const Region& r) {
  for (std::int32_t y = 0; y < r.rows; ++y) {
    std::uint8_t* to = r.Row(y);
    const std::uint8_t* from = r.SourceRow(y);
    for (std::int32_t x = 0; x < r.columns; ++x, to += r.pixel, from += r.columnStep) {
      for (std::int32_t i = 0; i < r.pixel; ++i) to[i] = from[i];
    }
  }
}

/// The widest form at hand whose smallest tile is no larger than the region.
const MoveKernels& KernelsFor(const Region& r, bool turned) {
  int form = (CpuFeatureWord & kFeatureSse2) != 0 ? WidestForm(kMoveForms) : 0;
  for (; turned && form > 0; --form) {
    const MoveKernels& kernels = kMoveForms[form]->For(r.pixel);
    if (kernels.columns <= r.columns && kernels.rows <= r.rows) break;
  }
  return kMoveForms[form]->For(r.pixel);
}

bool Streams(const Region& r) {
  return (CpuFeatureWord & kFeatureSse2) != 0 && r.rows * r.RowBytes() > kStreamingBytes;
}

/// Rows whose source runs along a row, forwards or backwards.
void MoveRows(const Region& r) {
  const bool stream = Streams(r);
  if (r.columnStep > 0) {
    const auto bytes = static_cast<std::size_t>(r.RowBytes());
    for (std::int32_t y = 0; y < r.rows; ++y) {
      if (stream) {
        StreamBytes(r.Row(y), r.SourceRow(y), bytes);
      } else {
        std::memcpy(r.Row(y), r.SourceRow(y), bytes);
      }
    }
  } else {
    const MoveKernels& kernels = KernelsFor(r, false);
    alignas(64) std::uint8_t scratch[kScratchBytes];
    const std::int32_t most = stream ? kScratchBytes / r.pixel : r.columns;
    for (std::int32_t y = 0; y < r.rows; ++y) {
      for (std::int32_t x = 0; x < r.columns; x += most) {
        const std::int32_t count = r.columns - x < most ? r.columns - x : most;
        std::uint8_t* to = r.Row(y) + std::int64_t{x} * r.pixel;
        const std::uint8_t* last = r.SourceRow(y) - (std::int64_t{x} + count - 1) * r.pixel;
        kernels.reverse(stream ? scratch : to, last, count);
        if (stream) {
          StreamBytes(to, scratch,
                      static_cast<std::size_t>(count) * static_cast<std::size_t>(r.pixel));
        }
      }
    }
  }
  if (stream) EndStreaming();
}

/// Rows of a band: those whose source pixels share whole lines.
std::int32_t BandRows(std::int32_t pixel) {
  return pixel == 4 ? 16 : 64;
}

/// @return the first of some rows whose source begins a line, or 0 if none does.
std::int32_t FirstRowOnALine(const Region& r, std::int32_t rows) {
  const auto source = reinterpret_cast<std::uintptr_t>(r.source);
  for (std::int32_t y = 0; y < rows; ++y) {
    if (((source + static_cast<std::uintptr_t>(y * r.pixel)) & 63) == 0) return y;
  }
  return 0;
}

/// @return the lower address of as many rows behind the @p rows ones from @p y on, or 0 if other
///         pixels lie between them
std::uintptr_t NextRows(const Region& r, std::int32_t y, std::int32_t rows) {
  const std::int64_t step = r.targetStep;
  if ((step < 0 ? -step : step) >= 2 * r.RowBytes()) return 0;
  return reinterpret_cast<std::uintptr_t>(r.Row(y)) +
         static_cast<std::uintptr_t>(step < 0 ? (2 * rows - 1) * step : rows * step);
}

/// Columns that are rows of the source. Goes down in bands of rows, so that a line of the source is
/// read once and a line of the target is finished while it is near.
void TurnBands(Region r) {
  if (r.rowStep < 0) {  // bottom-up, so that a column reads forwards
    r.source = r.SourceRow(r.rows - 1);
    r.target = r.Row(r.rows - 1);
    r.targetStep = -r.targetStep;
  }
  const MoveKernels& kernels = KernelsFor(r, true);
  const bool stream = r.pixel != 3 && Streams(r);  // 64 rows of 3 bytes leave but short pieces
  alignas(64) std::uint8_t scratch[kScratchBytes];
  const auto least = [](std::int32_t a, std::int32_t b) { return a < b ? a : b; };
  const std::int32_t rows = least(r.rows, BandRows(r.pixel));
  const std::int32_t piece = kScratchBytes / rows / 192 * 192;  // lines of whole pixels
  const std::int32_t columns = stream ? least(r.columns, piece / r.pixel) : r.columns;
  // The first and the last band, and the last piece, lie over their neighbours.
  const std::int32_t lead = rows < r.rows ? FirstRowOnALine(r, rows) : 0;
  for (std::int32_t j = lead > 0 ? lead - rows : 0; j < r.rows; j += rows) {
    const std::int32_t y = j < 0 ? 0 : least(j, r.rows - rows);
    for (std::int32_t i = 0; i < r.columns; i += columns) {
      const std::int32_t x = least(i, r.columns - columns);
      std::uint8_t* to = r.Row(y) + std::int64_t{x} * r.pixel;
      const std::uint8_t* from = r.source + x * r.columnStep + std::int64_t{y} * r.pixel;
      if (!stream) {
        kernels.turn({to, r.targetStep, from, r.columnStep, columns, rows, NextRows(r, y, rows)});
        continue;
      }
      kernels.turn({scratch, piece, from, r.columnStep, columns, rows});
      for (std::int32_t k = 0; k < rows; ++k) {
        StreamBytes(to + k * r.targetStep, scratch + k * piece,
                    static_cast<std::size_t>(columns) * static_cast<std::size_t>(r.pixel));
      }
    }
  }
  if (stream) EndStreaming();
}

}  // namespace

void MoveLattice(const LatticeMove& m, std::int32_t x0, std::int32_t y0, std::int32_t x1,
                 std::int32_t y1) noexcept {
  const Region r{m.target + std::int64_t{y0} * m.targetStep + std::int64_t{x0} * m.pixelBytes,
                 m.targetStep,
                 m.source + (m.origin + y0 * m.rowStep + x0 * m.columnStep),
                 m.columnStep,
                 m.rowStep,
                 x1 - x0 + 1,
                 y1 - y0 + 1,
                 m.pixelBytes};
  const bool known = r.pixel == 1 || r.pixel == 3 || r.pixel == 4;
  const auto isPixel = [&](std::int64_t step) { return step == r.pixel || step == -r.pixel; };
  if (!known || Overlaps(r)) {
    MoveInOrder(r);
  } else if (isPixel(r.columnStep)) {
    MoveRows(r);
  } else if (isPixel(r.rowStep)) {
    TurnBands(r);
  } else {
    MoveInOrder(r);
  }
}

}  // namespace zor
