// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <cstring>

#include "convert/feature_word.h"
#include "platform/memory.h"
#include "scale/across_rows.h"
#include "scale/gray_rows.h"
#include "scale/rgb_picture.h"
#include "scale/rgb_rows.h"
#include "scale/target_rows.h"

namespace zor {
namespace {

/// The shapes of a picture's nine regions: bands from top to bottom, runs from left to right.
struct Regions {
  Shape shapes[3][3];
};

constexpr Regions kFade3To3 = {{{Shape::kCorner, Shape::kEdgeH, Shape::kCorner},
                                {Shape::kMiddleLeft, Shape::kFull, Shape::kEdgeVRight},
                                {Shape::kCorner, Shape::kEdgeH, Shape::kCorner}}};
constexpr Regions kBilinear3To3 = {
    {{Shape::kCopyDoubled, Shape::kHorizontalOnly, Shape::kCopyDoubled},
     {Shape::kVerticalOnly, Shape::kFull, Shape::kVerticalOnly},
     {Shape::kCopyDoubled, Shape::kHorizontalOnly, Shape::kCopyDoubled}}};
constexpr Regions kFadeMixed = {{{Shape::kCornerTopLeft, Shape::kTopMiddle, Shape::kCopy},
                                 {Shape::kMiddleLeft, Shape::kFull, Shape::kMiddleRight},
                                 {Shape::kCornerBottomLeft, Shape::kBottomMiddle, Shape::kCopy}}};
constexpr Regions kBilinearMixed = {{{Shape::kCopy, Shape::kHorizontalOnly, Shape::kCopy},
                                     {Shape::kVerticalOnly, Shape::kFull, Shape::kVerticalOnly},
                                     {Shape::kCopy, Shape::kHorizontalOnly, Shape::kCopy}}};
constexpr Regions k4To4 = kFade3To3;

const Regions& RegionsOf(std::int32_t from, std::int32_t to, ScaleMode mode) {
  if (from == 4 && to == 4) return k4To4;
  const bool fade = mode == SCALE_BILINEAR_FADE;
  if (from == to) return fade ? kFade3To3 : kBilinear3To3;
  return fade ? kFadeMixed : kBilinearMixed;
}

/// A column kernel with its plan for one run.
template <class Kernel>
struct PlannedColumns {
  const Kernel* kernel = nullptr;
  RgbColumns columns{};
  std::int64_t bytes = 0;
  std::uint8_t* plan = nullptr;

  /// Chooses the widest form that takes the columns; the plain one takes any.
  void Choose(Kernel RgbRowForm::*which, const RgbColumns& run) {
    columns = run;
    int form = WidestForm(kRgbRowForms);
    do {
      kernel = &(kRgbRowForms[form]->*which);
      bytes = kernel->planBytes(columns);
    } while (bytes < 0 && --form >= 0);
  }
  std::uint8_t* Make(std::uint8_t* memory) {
    plan = memory;
    kernel->plan(columns, plan);
    return memory + WholeLines(bytes);
  }
};

/// One call of the interpolating modes.
template <int kFrom, int kTo>
class Interpolator {
 public:
  explicit Interpolator(const RgbPicture& picture)
      : p_(picture), regions_(RegionsOf(kFrom, kTo, picture.mode)), rows_(picture.target) {
    std::memcpy(background_.v, &picture.background, 4);
  }

  void Run() {
    const bool nearest = p_.mode == SCALE_NEAREST;
    const RgbRun run = nearest ? p_.Whole() : p_.Middle();
    const RgbColumns columns{
        p_.across.offsets + run.start,        p_.across.words + run.start, run.count, kFrom, kTo,
        std::int64_t{p_.source.width} * kFrom};
    // Weights that differ from byte to byte are worked pixel by pixel.
    fast_ = run.count > 0 && p_.mode != SCALE_AREA;
    if (fast_)
      nearest ? pick_.Choose(&RgbRowForm::pick, columns) : lerp_.Choose(&RgbRowForm::lerp, columns);
    const auto rowBytes =
        static_cast<std::uint64_t>(WholeLines(std::int64_t{kTo} * run.count) + kLineBytes);
    const auto planBytes =
        static_cast<std::uint64_t>(WholeLines(pick_.bytes) + WholeLines(lerp_.bytes));
    WorkArray<std::uint8_t> memory(planBytes + 2 * rowBytes + rows_.Bytes());
    if (!memory) return;
    rows_.Place(memory.data() + planBytes + 2 * rowBytes);
    down_ = kGrayRowForms[WidestForm(kGrayRowForms)]->down;
    pack_ = kRgbRowForms[WidestForm(kRgbRowForms)]->pack;
    if (nearest) {
      pick_.Make(memory.data());
      for (std::int32_t y = 0; y < p_.target.height; ++y) NearestRow(y);
      return;
    }
    if (fast_) lerp_.Make(memory.data());
    Rows rows({&lerp_}, memory.data() + planBytes, rowBytes);
    for (std::int32_t y = 0; y < p_.target.height; ++y) {
      out_ = rows_.Begin(y);
      LerpRow(y, &rows);
      rows_.Done(y);
    }
  }

 private:
  /// Interpolates a source row across.
  struct Across {
    const PlannedColumns<RgbLerpKernel>* lerp;
    void operator()(std::uint8_t* out, const std::uint8_t* row) const {
      lerp->kernel->across(out, row, lerp->columns, lerp->plan);
    }
  };
  using Rows = AcrossRows<Across>;

  void LerpRow(std::int32_t y, Rows* rows) {
    const int band = y < p_.down.edges.first ? 0 : y < p_.down.edges.last ? 1 : 2;
    if (kFrom == 4 && kTo == 4 && band == 1 && ShortRow(y, rows)) return;
    Slow(y, Edge(band, 0, y), p_.Left());
    Middle(y, band, rows);
    Slow(y, Edge(band, 2, y), p_.Right());
  }

  bool SameWidth() const { return p_.source.width == p_.target.width; }

  /// The shape of an edge run. Some corners are copies in the first and the last row.
  Shape Edge(int band, int run, std::int32_t y) const {
    const bool fade3To3 = kFrom == 3 && kTo == 3 && p_.mode == SCALE_BILINEAR_FADE;
    if (fade3To3 && run == 2) {
      if (band == 0 && y == 0) return Shape::kCopyDoubled;
      if (band == 2 && y == p_.target.height - 1) return Shape::kCopyDoubled;
    }
    return regions_.shapes[band][run];
  }

  Lanes ValueAt(Shape shape, std::int32_t y, std::int32_t x) const {
    return ShapeValue<kFrom>(
        shape, {p_.SourceRow(y) + p_.across.offsets[x], p_.source.stride, p_.readable, background_,
                p_.across.words[x], p_.down.words[y]});
  }

  /// A run pixel by pixel.
  void Slow(std::int32_t y, Shape shape, RgbRun run) const {
    if (run.count <= 0) return;
    std::uint8_t* out = out_ + std::int64_t{run.start} * kTo;
    Lanes value{};
    for (std::int32_t i = 0; i < run.count; ++i, out += kTo) {
      value = ValueAt(shape, y, run.start + i);
      std::memcpy(out, value.v, 3);
      if (kTo == 4) out[3] = kFrom == 4 ? value.v[3] : 0;
    }
    if (kTo == 3 && Spills(shape)) p_.Put(p_.TargetRow(y) + (out - out_), value.v[3]);
  }

  /// The middle run of a row.
  void Middle(std::int32_t y, int band, Rows* rows) {
    const RgbRun run = p_.Middle();
    const Shape shape = regions_.shapes[band][1];
    if (fast_ && shape == Shape::kFull) {
      LerpRun(run, p_.SourceRow(y), p_.down.words[y] & 255, rows);
    } else if (fast_ && shape == Shape::kHorizontalOnly) {
      LerpRun(run, p_.SourceRow(y), 0, rows);
    } else {
      Slow(y, shape, run);
    }
  }

  /// A run interpolated across and, with a weight, down. No fourth byte of a 3-byte pixel spills
  /// here: the right run is drawn afterwards, and covers it.
  void LerpRun(RgbRun run, const std::uint8_t* row, std::uint32_t weight, Rows* rows) {
    if (run.count <= 0) return;
    std::uint8_t* out = out_ + std::int64_t{run.start} * kTo;
    const std::uint8_t* next = row + p_.source.stride;
    const std::int32_t bytes = kTo * run.count;
    const auto w = static_cast<std::int32_t>(weight);
    // Up the picture, rows share source rows, and each is interpolated across once. Down the
    // picture they hardly do, and a row that is never stored is cheaper than one found again.
    if (p_.axes.stepY < 1.0) {
      const std::uint8_t* a = rows->Get(row);
      if (weight == 0) {
        std::memcpy(out, a, static_cast<std::size_t>(bytes));
      } else {
        down_(out, a, rows->Get(next), w, bytes);
      }
    } else if (weight == 0) {
      lerp_.kernel->across(out, row, lerp_.columns, lerp_.plan);
    } else {
      lerp_.kernel->both(out, row, next, lerp_.columns, lerp_.plan, w);
    }
  }

  /// Rows of the middle band of 4-byte pictures whose row weight stands at an end, or whose width
  /// doesn't change. @return whether the row is done.
  bool ShortRow(std::int32_t y, Rows* rows) {
    const std::uint32_t word = p_.down.words[y];
    const bool atEnd = word == 0 || word == kEdgeWeight;
    const bool sideBySide = p_.axes.startX == 0.0 && SameWidth();
    if (!atEnd && !sideBySide) return false;
    const std::uint8_t* row = p_.SourceRow(y) + (word == kEdgeWeight ? p_.source.stride : 0);
    if (atEnd && sideBySide) {
      std::memcpy(out_, row, 4 * static_cast<std::size_t>(p_.target.width));
      return true;
    }
    Slow(y, Edge(1, 0, y), p_.Left());
    if (const RgbRun run = p_.Middle(); run.count > 0) {
      if (atEnd) {
        LerpRun(run, row, 0, rows);
      } else {
        const std::int64_t at = 4 * std::int64_t{run.start};
        down_(out_ + at, row + at, row + p_.source.stride + at,
              static_cast<std::int32_t>(word & 255), 4 * run.count);
      }
    }
    Slow(y, Edge(1, 2, y), p_.Right());
    return true;
  }

  void NearestRow(std::int32_t y) {
    if (y > 0 && p_.down.offsets[y] == p_.down.offsets[y - 1]) {
      rows_.Repeat(y);
      return;
    }
    out_ = rows_.Begin(y);
    const std::uint8_t* row = p_.SourceRow(y);
    if (SameWidth()) {
      Repack(out_, row, static_cast<std::size_t>(p_.target.width));
    } else {
      pick_.kernel->row(out_, row, pick_.columns, pick_.plan);
    }
    rows_.Done(y);
  }

  /// A row of unchanged width: a copy, or the other pixel size with a fourth byte of 0xFF.
  void Repack(std::uint8_t* out, const std::uint8_t* row, std::size_t width) {
    if (kFrom == kTo) {
      std::memcpy(out, row, kTo * width);
    } else if (kTo == 3) {
      pack_(out, row, p_.target.width);
    } else {
      for (std::size_t i = 0; i < width; ++i) {
        std::memcpy(out + 4 * i, row + 3 * i, 3);
        out[4 * i + 3] = 0xFF;
      }
    }
  }

  const RgbPicture& p_;
  const Regions& regions_;
  TargetRows rows_;
  std::uint8_t* out_ = nullptr;  // of the row that is being made
  Lanes background_;
  bool fast_ = false;
  PlannedColumns<RgbPickKernel> pick_;
  PlannedColumns<RgbLerpKernel> lerp_;
  GrayDownKernel down_ = nullptr;
  void (*pack_)(std::uint8_t*, const std::uint8_t*, std::int32_t) noexcept = nullptr;
};

}  // namespace

void InterpolateRgb(const RgbPicture& picture) noexcept {
  if (picture.source.bytesPerPixel == 3) {
    picture.target.bytesPerPixel == 3 ? Interpolator<3, 3>(picture).Run()
                                      : Interpolator<3, 4>(picture).Run();
  } else {
    picture.target.bytesPerPixel == 3 ? Interpolator<4, 3>(picture).Run()
                                      : Interpolator<4, 4>(picture).Run();
  }
}

}  // namespace zor
