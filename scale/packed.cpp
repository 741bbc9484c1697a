// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/packed.h"

#include <algorithm>
#include <cstddef>

#include "convert/feature_word.h"
#include "platform/memory.h"
#include "scale/across_rows.h"
#include "scale/packed_rows.h"

namespace zor {
namespace {

/// Positions held to the picture: what lies in front reads the first sample, what lies behind the
/// last one.
std::int32_t Hold(std::int32_t position, std::int32_t length) noexcept {
  return std::clamp(position, 0, length - 1);
}

/// Lists the two neighbours of every column.
AreaList ListColumns(std::int32_t sourceWidth, std::int32_t targetWidth,
                     AreaEntry* entries) noexcept {
  const float step = static_cast<float>(sourceWidth) / static_cast<float>(targetWidth);
  for (std::int32_t x = 0; x < targetWidth; ++x) {
    const float position = static_cast<float>(x) * step;
    const auto whole = static_cast<std::int32_t>(position);
    const float share = position - static_cast<float>(whole);
    entries[2 * x] = {2 * Hold(whole, sourceWidth), 2 * x, share};
    entries[2 * x + 1] = {2 * Hold(whole + 1, sourceWidth), 2 * x, share};
  }
  return {entries, 2 * targetWidth, 2, 2 * targetWidth, 2 * sourceWidth, 2 * sourceWidth};
}

/// Makes the plan of the widest form that takes the columns. @return the form.
const PackedRowForm& MakePlan(const AreaList& list, int widest, std::uint8_t* plan) noexcept {
  for (int form = widest; form > 0; --form) {
    if (kPackedRowForms[form]->planBytes(list) != 0 && kPackedRowForms[form]->plan(list, plan)) {
      return *kPackedRowForms[form];
    }
  }
  kPackedRowsPlain.plan(list, plan);
  return kPackedRowsPlain;
}

}  // namespace

void ScaleYuy2(const PackedTarget& target, const PackedSource& source) noexcept {
  if (target.width <= 0 || target.height <= 0 || source.width <= 0 || source.height <= 0) return;
  WorkArray<AreaEntry> entries(2 * static_cast<std::uint64_t>(target.width));
  if (!entries) return;
  const AreaList list = ListColumns(source.width, target.width, entries.data());
  const int widest = WidestForm(kPackedRowForms);
  std::uint64_t planBytes = 0;
  for (int form = 0; form <= widest; ++form) {
    planBytes = std::max(planBytes, kPackedRowForms[form]->planBytes(list));
  }
  WorkArray<std::uint8_t> plan(planBytes);
  if (!plan) return;
  const PackedRowForm& form = MakePlan(list, widest, plan.data());

  // Up the picture, rows share source rows, and each is interpolated across once.
  const float step = static_cast<float>(source.height) / static_cast<float>(target.height);
  const bool shares = step < 1.0f;
  const std::uint64_t groups = static_cast<std::uint64_t>(list.values) / kAreaGroup + 1;
  const std::uint64_t rowValues = shares ? groups * kAreaGroup : 0;
  WorkArray<double> memory(2 * rowValues);
  if (!memory) return;
  AcrossRows rows([&](double* out, const std::uint8_t* row) { form.across(out, row, plan.data()); },
                  memory.data(), rowValues);
  for (std::int32_t y = 0; y < target.height; ++y) {
    const float position = static_cast<float>(y) * step;
    const auto whole = static_cast<std::int32_t>(position);
    const float share = position - static_cast<float>(whole);
    const auto row = [&](std::int32_t number) {
      return source.pixels +
             static_cast<std::ptrdiff_t>(Hold(number, source.height)) * source.stride;
    };
    std::uint8_t* out = target.pixels + static_cast<std::ptrdiff_t>(y) * target.stride;
    if (shares) {
      const double* upper = rows.Get(row(whole));
      form.down(out, upper, rows.Get(row(whole + 1)), share, plan.data());
    } else {
      form.row(out, row(whole), row(whole + 1), share, plan.data());
    }
  }
}

}  // namespace zor
