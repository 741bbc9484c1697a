// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/area.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "platform/memory.h"
#include "scale/area_rows.h"

namespace zor {
namespace {

/// How much source a destination pixel covers. Each division is made in double and kept as float.
struct AreaRatio {
  float x;
  float y;
  float norm;  ///< what one whole source pixel counts
};

AreaRatio RatioOf(const ScaleTarget& target, const ScaleSource& source) noexcept {
  const auto x = static_cast<float>(static_cast<double>(source.width) / target.width);
  const auto y = static_cast<float>(static_cast<double>(source.height) / target.height);
  const auto area = static_cast<double>(y) * static_cast<double>(x);
  return {x, y, static_cast<float>(1.0 / area)};
}

/// Most entries that a row can have: each source pixel whole once, and two cut ones a column.
std::uint64_t MostEntries(const ScaleTarget& target, const ScaleSource& source) noexcept {
  return static_cast<std::uint64_t>(source.width) + 3 * static_cast<std::uint64_t>(target.width);
}

/// Lists what each source pixel of a row gives to which destination pixel.
AreaList ListRow(const ScaleTarget& target, const ScaleSource& source, const AreaRatio& ratio,
                 AreaEntry* entries) noexcept {
  const std::int32_t channels = source.bytesPerPixel;
  AreaList list{entries, 0, channels, target.width * channels, source.width * channels, 0};
  const std::uint64_t most = MostEntries(target, source);
  const auto add = [&](std::int32_t pixel, std::int32_t value, float weight) {
    if (static_cast<std::uint64_t>(list.count) == most) return;
    entries[list.count++] = {pixel * channels, value, weight};
    list.reach = std::max(list.reach, (pixel + 1) * channels);
  };
  for (std::int32_t column = 0; column < target.width; ++column) {
    const std::int32_t value = column * channels;
    const float x1 = static_cast<float>(column) * ratio.x;
    const float x2 = x1 + ratio.x;
    const float ceiling = std::ceil(x1);
    const float floor = std::floor(x2);
    const auto firstWhole = static_cast<std::int32_t>(ceiling);
    const auto endWhole = static_cast<std::int32_t>(floor);
    if (x1 < ceiling) add(firstWhole - 1, value, (ceiling - x1) * ratio.norm);
    for (std::int32_t k = firstWhole; k < endWhole; ++k) add(k, value, ratio.norm);
    const float rest = x2 - floor;
    if (static_cast<double>(rest) > kAreaTail) add(endWhole, value, ratio.norm * rest);
  }
  return list;
}

/// Makes the plan of the widest form that takes the list. @return the form.
const AreaRowForm& MakePlan(const AreaList& list, int widest, std::uint8_t* plan) noexcept {
  for (int form = widest; form > 0; --form) {
    if (kAreaRowForms[form]->planBytes(list) != 0 && kAreaRowForms[form]->plan(list, plan)) {
      return *kAreaRowForms[form];
    }
  }
  kAreaRowsPlain.plan(list, plan);
  return kAreaRowsPlain;
}

/// Where the source rows of a picture stand. A rounded position across can lie behind the last
/// pixel; of the rows for which that is outside of the picture @p lastRow gets a longer copy.
class SourceRows {
 public:
  SourceRows(const ScaleSource& source, const AreaList& list, std::uint8_t* lastRow) noexcept
      : source_(source), list_(list), lastRow_(lastRow) {}

  const std::uint8_t* Get(std::int32_t y) const noexcept {
    const std::uint8_t* row = source_.pixels + static_cast<std::ptrdiff_t>(y) * source_.stride;
    const std::int64_t left =
        std::int64_t{source_.height - 1 - y} * source_.stride + list_.rowBytes;
    if (list_.reach <= left) return row;
    std::memcpy(lastRow_, row, static_cast<std::size_t>(left));
    std::memset(lastRow_ + left, 0, static_cast<std::size_t>(list_.reach - left));
    return lastRow_;
  }

 private:
  const ScaleSource& source_;
  const AreaList& list_;
  std::uint8_t* lastRow_;
};

/// Most rows of a band. A band's source rows are read side by side, and where rows stand in steps
/// of 4 KB the innermost cache holds eight.
constexpr std::int32_t kBandTargets = 8;
constexpr std::int32_t kBandSources = 8;

/// Gathers source rows up to each boundary for the destination row that ends there, and makes the
/// destination rows band by band. The last source row ends whatever row has been reached.
/// @param rows room for a pointer per source row.
void Accumulate(const ScaleTarget& target, std::int32_t sourceHeight, float rowsPerTarget,
                const SourceRows& source, const AreaRowForm& form, const std::uint8_t* plan,
                float* gathered, const std::uint8_t** rows) noexcept {
  std::uint8_t* out = target.pixels;
  AreaTargetRow band[kBandTargets];
  // Rows that lie over each other are made one after another.
  const std::int64_t rowBytes = std::int64_t{target.width} * target.bytesPerPixel;
  const std::int32_t most = std::abs(std::int64_t{target.stride}) >= rowBytes ? kBandTargets : 1;
  std::int32_t inBand = 0;
  std::int32_t bandStart = 0;
  std::int32_t y = 0;
  for (std::int32_t boundary = 1; boundary <= target.height && y < sourceHeight; ++boundary) {
    const float edge = static_cast<float>(boundary) * rowsPerTarget;
    const std::int32_t first = y;
    float top;
    do {
      rows[y] = source.Get(y);
      top = static_cast<float>(++y);
    } while (top < edge && y < sourceHeight);
    const float past = top - edge;
    const float share = static_cast<double>(past) >= kAreaTail ? past : 0.0f;
    band[inBand++] = {out, rows + first, y - first, share, 1.0f - share};
    if (inBand == most || y - bandStart >= kBandSources) {
      form.rows(band, inBand, gathered, plan);
      inBand = 0;
      bandStart = y;
    }
    out += target.stride;
  }
  if (inBand > 0) form.rows(band, inBand, gathered, plan);
}

}  // namespace

bool AreaScale(const ScaleTarget& target, const ScaleSource& source, std::int64_t held) noexcept {
  if (source.width == target.width && source.height == target.height) {
    const std::int64_t bytes = std::min(std::int64_t{source.height} * source.stride, held);
    if (bytes > 0) std::memcpy(target.pixels, source.pixels, static_cast<std::size_t>(bytes));
    return true;
  }
  const AreaRatio ratio = RatioOf(target, source);
  WorkArray<AreaEntry> entries(MostEntries(target, source));
  if (!entries) return false;
  const AreaList list = ListRow(target, source, ratio, entries.data());

  const int widest = WidestForm(kAreaRowForms);
  std::uint64_t planBytes = 0;
  for (int form = 0; form <= widest; ++form) {
    planBytes = std::max(planBytes, kAreaRowForms[form]->planBytes(list));
  }
  WorkArray<std::uint8_t> plan(planBytes);
  const auto sums = static_cast<std::uint64_t>(list.values) + kAreaGroup;
  WorkArray<float> gathered(sums);
  WorkArray<std::uint8_t> lastRow(static_cast<std::uint64_t>(list.reach));
  WorkArray<const std::uint8_t*> rows(static_cast<std::uint64_t>(source.height));
  if (!plan || !gathered || !lastRow || !rows) return false;
  std::memset(gathered.data(), 0, sums * sizeof(float));
  const AreaRowForm& form = MakePlan(list, widest, plan.data());
  Accumulate(target, source.height, ratio.y, SourceRows(source, list, lastRow.data()), form,
             plan.data(), gathered.data(), rows.data());
  return true;
}

}  // namespace zor
