// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/gray.h"

#include <cstddef>
#include <cstring>

#include "convert/feature_word.h"
#include "platform/memory.h"
#include "scale/across_rows.h"
#include "scale/gray_rows.h"
#include "scale/gray_tables.h"

namespace zor {
namespace {

/// A kernel and the plan that its form made.
template <class Kernel>
struct Planned {
  const Kernel* kernel = nullptr;
  std::uint64_t bytes = 0;
  std::uint8_t* plan = nullptr;

  /// Chooses the widest form at hand that takes these columns.
  void Choose(Kernel GrayRowForm::*which, const GrayColumns& columns) noexcept {
    int form = WidestForm(kGrayRowForms);
    do {
      kernel = &(kGrayRowForms[form]->*which);
      bytes = kernel->planBytes(columns);
    } while (bytes == 0 && --form >= 0);
  }

  /// Makes the plan at @p memory. @return the memory behind it.
  std::uint8_t* Make(const GrayColumns& columns, std::uint8_t* memory) noexcept {
    plan = memory;
    kernel->plan(columns, plan);
    return memory + WholeLines(bytes);
  }
};

/// One call: its pictures, tables and kernels. Rows of the top and bottom band are picked whole;
/// those between have a picked run on the left, an interpolated one, and a picked one on the right.
class GrayScaler {
 public:
  GrayScaler(const ScaleTarget& target, const ScaleSource& source, const ScaleAxes& axes,
             ScaleMode mode) noexcept
      : target_(target), source_(source), axes_(axes), mode_(mode), width_(target.width) {}

  void Run() noexcept {
    GrayTables tables(width_, target_.height);
    WorkArray<std::int32_t> offsets(static_cast<std::uint64_t>(width_));
    if (!tables || !offsets) return;
    tables_ = &tables;
    offsets_ = offsets.data();
    ReadTables();

    // The weights across serve the whole middle run once the odd ones are in their places.
    const GrayColumns whole{offsets_, tables.ColumnWeights(), width_, source_.width};
    const GrayColumns middle{offsets_ + across_.first, tables.ColumnWeights() + across_.first,
                             middle_, source_.width};
    const bool interpolates = mode_ != SCALE_NEAREST && !SameWidth() && middle_ > 0;
    pick_.Choose(&GrayRowForm::pick, whole);
    if (interpolates) lerp_.Choose(&GrayRowForm::lerp, middle);
    const std::uint64_t rowBytes = WholeLines(static_cast<std::uint64_t>(width_));
    WorkArray<std::uint8_t> scratch(WholeLines(pick_.bytes) + WholeLines(lerp_.bytes) +
                                    2 * rowBytes);
    if (!scratch) return;
    std::uint8_t* memory = pick_.Make(whole, scratch.data());
    if (interpolates) {
      PatchOddWeights();
      memory = lerp_.Make(middle, memory);
    }
    down_ = kGrayRowForms[WidestForm(kGrayRowForms)]->down;

    if (mode_ == SCALE_NEAREST) {
      for (std::int32_t y = 0; y < target_.height; ++y) NearestRow(y);
      return;
    }
    AcrossRows rows([this](std::uint8_t* out,
                           const std::uint8_t* row) { lerp_.kernel->across(out, row, lerp_.plan); },
                    memory, rowBytes);
    for (std::int32_t y = 0; y < target_.height; ++y) Row(y, &rows);
  }

 private:
  /// Without a shift or a change of width nothing is interpolated across, whatever the step.
  bool SameWidth() const noexcept { return axes_.startX == 0.0 && width_ == source_.width; }

  void ReadTables() noexcept {
    across_ = BuildGrayColumnTable(width_, source_.width, tables_->ColumnWeights(),
                                   tables_->ColumnOffsets(), axes_.startX, axes_.stepX, mode_);
    bands_ =
        BuildGrayRowTable(target_.height, source_.height, tables_->RowWeights(),
                          tables_->RowOffsets(), source_.stride, axes_.startY, axes_.stepY, mode_);
    const std::int64_t outside = std::int64_t{across_.first} + (width_ - across_.last);
    middle_ = outside < width_ ? across_.last - across_.first : 0;
    for (std::int32_t i = 0; i < width_; ++i) offsets_[i] = tables_->ColumnOffset(i);
  }

  /// The last (length mod 4) pixels of the middle run take their weights from the wrong place. All
  /// are looked up before one is stored: a wrong place may be another one's right place.
  void PatchOddWeights() noexcept {
    std::uint8_t odd[3];
    const std::int32_t start = middle_ - middle_ % 4;
    for (std::int32_t i = start; i < middle_; ++i) {
      odd[i - start] = static_cast<std::uint8_t>(tables_->OddWeight(across_.first, i));
    }
    std::memcpy(tables_->ColumnWeights() + across_.first + start, odd,
                static_cast<std::size_t>(middle_ - start));
  }

  const std::uint8_t* SourceRow(std::int32_t y) noexcept {
    return source_.pixels + tables_->RowOffset(y);
  }
  std::uint8_t* TargetRow(std::int32_t y) const noexcept {
    return target_.pixels + static_cast<std::ptrdiff_t>(y) * target_.stride;
  }

  /// Draws a row of an interpolating mode, by its band.
  template <class Across>
  void Row(std::int32_t y, AcrossRows<Across>* rows) noexcept {
    if (y < bands_.first) {
      SameWidth() ? CopyRow(y) : PickRow(y);
    } else if (y >= bands_.last) {
      PickRow(y);
    } else if (SameWidth()) {
      BlendedRow(y);
    } else {
      InterpolatedRow(y, rows);
    }
  }

  void CopyRow(std::int32_t y) noexcept {
    std::memcpy(TargetRow(y), SourceRow(y), static_cast<std::size_t>(width_));
  }

  void PickRow(std::int32_t y) noexcept {
    pick_.kernel->row(TargetRow(y), SourceRow(y), pick_.plan);
  }

  void NearestRow(std::int32_t y) noexcept {
    if (width_ == source_.width) {
      CopyRow(y);
    } else if (y > 0 && tables_->RowOffset(y) == tables_->RowOffset(y - 1)) {
      // Rows lie over each other where the target's stride is smaller than a row.
      std::memmove(TargetRow(y), TargetRow(y - 1), static_cast<std::size_t>(width_));
    } else {
      PickRow(y);
    }
  }

  /// The runs on the left and right of a row of the middle band.
  void PickSides(std::uint8_t* out, const std::uint8_t* row) noexcept {
    for (std::int32_t i = 0; i < across_.first; ++i) out[i] = row[offsets_[i]];
    for (std::int32_t i = across_.last; i < width_; ++i) out[i] = row[offsets_[i]];
  }

  void BlendedRow(std::int32_t y) noexcept {
    const std::int32_t weight = tables_->RowWeight(y);
    if (weight == 0) return CopyRow(y);
    std::uint8_t* out = TargetRow(y);
    const std::uint8_t* row = SourceRow(y);
    PickSides(out, row);
    // The pixels of the run stand side by side in both rows, whatever the table says.
    const std::int32_t first = across_.first;
    if (middle_ > 0) down_(out + first, row + first, row + source_.stride + first, weight, middle_);
  }

  template <class Across>
  void InterpolatedRow(std::int32_t y, AcrossRows<Across>* rows) noexcept {
    std::uint8_t* out = TargetRow(y);
    const std::uint8_t* row = SourceRow(y);
    PickSides(out, row);
    if (middle_ == 0) return;
    out += across_.first;
    const std::int32_t weight = tables_->RowWeight(y);
    // Up the picture, rows share source rows, and each is interpolated across once. Down the
    // picture they hardly do, and a row that is never stored is cheaper than one found again.
    if (axes_.stepY < 1.0) {
      const std::uint8_t* a = rows->Get(row);
      if (weight == 0) {
        std::memcpy(out, a, static_cast<std::size_t>(middle_));
      } else {
        down_(out, a, rows->Get(row + source_.stride), weight, middle_);
      }
    } else if (weight == 0) {
      lerp_.kernel->across(out, row, lerp_.plan);
    } else {
      lerp_.kernel->both(out, row, row + source_.stride, lerp_.plan, weight);
    }
  }

  const ScaleTarget& target_;
  const ScaleSource& source_;
  const ScaleAxes& axes_;
  const ScaleMode mode_;
  const std::int32_t width_;
  GrayTables* tables_ = nullptr;
  std::int32_t* offsets_ = nullptr;
  GrayEdges across_{};
  GrayEdges bands_{};
  std::int32_t middle_ = 0;
  Planned<GrayPickKernel> pick_;
  Planned<GrayLerpKernel> lerp_;
  GrayDownKernel down_ = nullptr;
};

}  // namespace

void ScaleGray8(const ScaleTarget& target, const ScaleSource& source, const ScaleAxes& axes,
                ScaleMode mode) noexcept {
  GrayScaler(target, source, axes, mode).Run();
}

}  // namespace zor
