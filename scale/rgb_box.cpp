// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <algorithm>
#include <cmath>
#include <cstring>

#include "platform/memory.h"
#include "scale/box_rows.h"
#include "scale/rgb_picture.h"
#include "scale/rgb_rows.h"

namespace zor {
namespace {

/// The largest reduction that the 16-bit sums of the row kernels hold.
constexpr std::int32_t kLargestUnrolled = 15;

std::int32_t TruncatedMax(double a, double b) {
  const double largest = std::trunc(a > b ? a : b);
  return largest > kLargestUnrolled ? kLargestUnrolled + 1 : static_cast<std::int32_t>(largest);
}

BoxPair PairOf(const RgbPicture& picture) {
  const int from = picture.source.bytesPerPixel == 4 ? 2 : 0;
  return static_cast<BoxPair>(from + (picture.target.bytesPerPixel == 4 ? 1 : 0));
}

constexpr BoxReductions kReductions[] = {
    BoxReductionsFor(BoxPair::k3To3), BoxReductionsFor(BoxPair::k3To4),
    BoxReductionsFor(BoxPair::k4To3), BoxReductionsFor(BoxPair::k4To4)};

struct Sums {
  std::uint32_t v[3];
};

/// One call of the box modes.
class BoxScaler {
 public:
  explicit BoxScaler(const RgbPicture& picture)
      : p_(picture),
        pair_(PairOf(picture)),
        maxStep_(TruncatedMax(picture.axes.stepX, picture.axes.stepY)),
        unrolled_(maxStep_ <= kLargestUnrolled) {}

  void Run() {
    const std::int64_t columnLanes =
        std::int64_t{p_.source.width} * p_.source.bytesPerPixel + 4 + kBoxSlack;
    const std::int64_t boxLanes = 4 * std::int64_t{p_.target.width} + kBoxSlack;
    WorkArray<std::uint16_t> scratch(
        static_cast<std::uint64_t>(unrolled_ ? columnLanes + boxLanes : columnLanes));
    WorkArray<std::uint8_t> bytes(unrolled_ ? 4 * static_cast<std::uint64_t>(p_.target.width) : 1);
    if (!scratch || !bytes) return;
    scratch_ = {scratch.data(), scratch.data() + columnLanes};
    bytes_ = bytes.data();
    const int level = static_cast<int>(InnerVectorLevel());
    const BoxRowForm& form = *kBoxRowForms[level];
    row_ = form.row;
    columns_ = form.columns;
    pack_ = kRgbRowForms[level]->pack;
    const RgbRun run = p_.mode == SCALE_BOX ? p_.Whole() : p_.Middle();
    boxes_ = DescribeBoxes(p_.across.words + run.start, p_.across.offsets + run.start, run.count,
                           p_.source.bytesPerPixel);
    if (!unrolled_) HoldColumns(run, columnLanes - kBoxSlack);
    const std::uint64_t planBytes = unrolled_ ? form.planBytes(boxes_) : 0;
    WorkArray<std::uint8_t> plan(planBytes);
    if (!plan) return;
    if (planBytes > 0) {
      form.plan(boxes_, plan.data());
      boxes_.plan = plan.data();
    }
    if (p_.mode == SCALE_BOX) {
      for (std::int32_t y = 0; y < p_.target.height; ++y) Averages(y, p_.Whole());
    } else {
      RunFade();
    }
  }

 private:
  void RunFade() {
    const bool cutShort = pair_ == BoxPair::k4To3 && unrolled_;
    for (std::int32_t y = 0; y < p_.target.height; ++y) {
      if (y < p_.down.edges.first) {
        Fade(y, p_.Whole());
      } else if (y < p_.down.edges.last) {
        Fade(y, p_.Left());
        Averages(y, p_.Middle());
        Fade(y, p_.Right());
      } else if (!cutShort) {
        Fade(y, p_.Whole());
      }
    }
  }

  void Averages(std::int32_t y, RgbRun run) {
    const auto rows = static_cast<std::int32_t>(p_.down.words[y] & 0xFFFF);
    if (run.count <= 0) return;
    unrolled_ ? Unrolled(y, run, rows) : Generic(y, run, rows);
  }

  /// Sixteen-bit sums and reductions by shifts. Rows of no pixels stay unwritten.
  void Unrolled(std::int32_t y, RgbRun run, std::int32_t rows) {
    if (rows < 1 || rows > 16) return;
    const BoxReduction* reductions = kReductions[static_cast<int>(pair_)].of[rows];
    const bool packs = p_.target.bytesPerPixel == 3;
    std::uint8_t* out = p_.TargetRow(y) + std::int64_t{run.start} * p_.target.bytesPerPixel;
    std::uint8_t* averages = packs ? bytes_ : out;
    row_(averages, {p_.SourceRow(y), p_.source.stride, rows, p_.readable, reductions}, boxes_,
         scratch_);
    const auto count = static_cast<std::size_t>(run.count);
    if (packs) {
      pack_(out, averages, run.count);
      p_.Put(out + 3 * count, averages[4 * count - 1]);
    } else if (p_.source.bytesPerPixel == 3) {
      for (std::size_t i = 0; i < count; ++i) averages[4 * i + 3] = 0;
    }
  }

  /// Sums of the three colour bytes of a box, in 32 bits.
  Sums SumBox(std::int32_t y, std::int32_t column, std::uint32_t across, std::int32_t rows,
              std::int32_t step) const {
    Sums sums{};
    const std::uint8_t* row = p_.SourceRow(y) + p_.across.offsets[column];
    for (std::int32_t v = 0; v < rows; ++v, row += p_.source.stride) {
      const std::uint8_t* at = row;
      for (std::uint32_t x = 0; x < across; ++x, at += step) {
        for (int c = 0; c < 3; ++c) {
          if (at + c < p_.readable.end) sums.v[c] += at[c];
        }
      }
    }
    return sums;
  }

  /// Finds the bytes of a row that large boxes read, which are summed down as columns if there is
  /// room for them.
  void HoldColumns(const RgbRun& run, std::int64_t room) {
    boxes_.first = room;
    boxes_.end = 0;
    for (std::int32_t i = run.start; i < run.start + run.count; ++i) {
      const std::int64_t at = p_.across.offsets[i];
      const std::int64_t across = p_.across.words[i];
      if (across == 0) continue;
      boxes_.first = std::min(boxes_.first, at);
      boxes_.end = std::max(boxes_.end, at + (across - 1) * p_.source.bytesPerPixel + 3);
    }
    holdsColumns_ = boxes_.end > boxes_.first && boxes_.end - boxes_.first <= room;
  }

  /// Sums of a box from those of its columns.
  Sums SumColumns(std::int32_t column, std::uint32_t across) const {
    Sums sums{};
    const std::uint16_t* at = scratch_.columns + (p_.across.offsets[column] - boxes_.first);
    for (std::uint32_t x = 0; x < across; ++x, at += p_.source.bytesPerPixel) {
      for (int c = 0; c < 3; ++c) sums.v[c] += at[c];
    }
    return sums;
  }

  /// Exact averages of the three colour bytes; a box of no pixels stays unwritten.
  void Generic(std::int32_t y, RgbRun run, std::int32_t rows) {
    const std::int32_t step = p_.target.bytesPerPixel;
    std::uint8_t* out = p_.TargetRow(y) + std::int64_t{run.start} * step;
    const bool byColumns = holdsColumns_ && rows >= 1 && rows <= kMostSummedRows;
    if (byColumns) {
      columns_(scratch_.columns, {p_.SourceRow(y), p_.source.stride, rows, p_.readable, nullptr},
               boxes_);
    }
    for (std::int32_t i = 0; i < run.count; ++i, out += step) {
      const std::uint32_t across = p_.across.words[run.start + i];
      const std::uint32_t pixels = across * static_cast<std::uint32_t>(rows);
      if (across == 0 || static_cast<std::int32_t>(pixels) <= 0) continue;
      const Sums sums = byColumns ? SumColumns(run.start + i, across)
                                  : SumBox(y, run.start + i, across, rows, p_.source.bytesPerPixel);
      for (int c = 0; c < 3; ++c) out[c] = static_cast<std::uint8_t>(sums.v[c] / pixels);
    }
  }

  /// Blends averages with black by coverage. Below a reduction of 16 the routes between pixel sizes
  /// step through source and destination with each other's pixel size.
  void Fade(std::int32_t y, RgbRun run) {
    const bool exchanged = unrolled_;
    const std::int32_t sourceStep = exchanged ? p_.target.bytesPerPixel : p_.source.bytesPerPixel;
    const std::int32_t targetStep = exchanged ? p_.source.bytesPerPixel : p_.target.bytesPerPixel;
    const std::uint32_t rowWord = p_.down.words[y];
    const std::uint32_t rowKeep = 255 - (rowWord >> 16);
    const std::uint32_t rows = rowWord & 0xFFFF;
    std::uint8_t* out = p_.TargetRow(y) + std::int64_t{run.start} * p_.target.bytesPerPixel;
    for (std::int32_t i = 0; i < run.count; ++i, out += targetStep) {
      const std::uint32_t word = p_.across.words[run.start + i];
      const std::uint32_t across = word & 0xFFFF;
      const std::uint32_t keep = ((255 - (word >> 16)) * rowKeep) >> 8;
      const std::uint32_t pixels = across * rows;
      Sums sums{};
      if (pixels != 0) {
        sums = SumBox(y, run.start + i, across, static_cast<std::int32_t>(rows), sourceStep);
      }
      for (int c = 0; c < 3; ++c) {
        const std::uint32_t value = pixels == 0 ? 0 : sums.v[c] * keep / pixels / 255;
        p_.Put(out + c, static_cast<std::uint8_t>(value));
      }
    }
  }

  const RgbPicture& p_;
  const BoxPair pair_;
  const std::int32_t maxStep_;
  const bool unrolled_;
  BoxRun boxes_{};
  BoxScratch scratch_{};
  std::uint8_t* bytes_ = nullptr;
  bool holdsColumns_ = false;
  decltype(BoxRowForm::row) row_ = nullptr;
  decltype(BoxRowForm::columns) columns_ = nullptr;
  void (*pack_)(std::uint8_t*, const std::uint8_t*, std::int32_t) noexcept = nullptr;
};

}  // namespace

BoxRun DescribeBoxes(const std::uint32_t* counts, const std::int32_t* offsets, std::int32_t count,
                     std::int32_t pixelBytes) noexcept {
  const std::uint32_t firstSize = count > 0 ? counts[0] : 0;
  BoxRun run{counts, offsets, count, pixelBytes, 0, 0, firstSize, 0, firstSize, nullptr};
  std::int32_t used = 0;
  for (std::int32_t i = 0; i < count; ++i) {
    const auto across = static_cast<std::int64_t>(counts[i] & 0xFFFF);
    if (across == 0) continue;
    const std::int64_t at = offsets[used];
    if (used == 0) run.first = at;
    run.end = std::max(run.end, at + (across - 1) * pixelBytes + 4);
    ++used;
    // A box that is as wide as all before it starts behind that many of its own width.
    if (at != run.first + i * across * pixelBytes) run.alike = 0;
  }
  if (used != count) run.alike = 0;
  const auto different =
      std::find_if(counts, counts + count, [&](std::uint32_t size) { return size != firstSize; });
  if (different != counts + count && *different + 1 == firstSize) run.least = *different;
  while (run.least > 0 && run.inTurn < count && counts[run.inTurn] - run.least <= 1) ++run.inTurn;
  return run;
}

void BoxScaleRows(const RgbPicture& picture) noexcept {
  BoxScaler(picture).Run();
}

}  // namespace zor
