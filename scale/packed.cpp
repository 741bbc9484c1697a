// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/packed.h"

#include <algorithm>
#include <cstddef>

#include "platform/compiler.h"
#include "platform/memory.h"

namespace zor {
namespace {

/// Positions held to the picture: what lies in front reads the first sample, what lies behind the
/// last one.
std::int32_t Hold(std::int32_t position, std::int32_t length) noexcept {
  return std::clamp(position, 0, length - 1);
}

/// The columns of a picture: where the two neighbours start and the share of the second.
struct PackedColumns {
  std::int32_t* left;
  std::int32_t* right;
  float* share;
  std::int32_t count;
};

void TabulateColumns(const PackedColumns& columns, std::int32_t sourceWidth) noexcept {
  const float step = static_cast<float>(sourceWidth) / static_cast<float>(columns.count);
  for (std::int32_t x = 0; x < columns.count; ++x) {
    const float position = static_cast<float>(x) * step;
    const auto whole = static_cast<std::int32_t>(position);
    columns.left[x] = 2 * Hold(whole, sourceWidth);
    columns.right[x] = 2 * Hold(whole + 1, sourceWidth);
    columns.share[x] = position - static_cast<float>(whole);
  }
}

/// Interpolates a source row across, unrounded.
void Across(const std::uint8_t* row, const PackedColumns& columns,
            double* ZOR_RESTRICT out) noexcept {
  for (std::int32_t x = 0; x < columns.count; ++x) {
    const double share = columns.share[x];
    for (std::int32_t byte = 0; byte < 2; ++byte) {
      const std::int32_t a = row[columns.left[x] + byte];
      const std::int32_t b = row[columns.right[x] + byte];
      out[2 * x + byte] = a - (a - b) * share;
    }
  }
}

/// Interpolates down. Only the upper row's value goes through a float.
void Down(const double* ZOR_RESTRICT upper, const double* ZOR_RESTRICT lower, double share,
          std::int32_t count, std::uint8_t* ZOR_RESTRICT out) noexcept {
  for (std::int32_t i = 0; i < count; ++i) {
    const double top = static_cast<float>(upper[i]);
    out[i] = static_cast<std::uint8_t>(static_cast<std::int32_t>(top - (top - lower[i]) * share));
  }
}

/// The last two source rows that were interpolated across.
class AcrossRows {
 public:
  AcrossRows(const PackedSource& source, const PackedColumns& columns, double* memory)
      : source_(source),
        columns_(columns),
        rows_{memory, memory + 2 * static_cast<std::ptrdiff_t>(columns.count)} {}

  const double* Get(std::int32_t y) noexcept {
    if (numbers_[latest_] == y) return rows_[latest_];
    latest_ ^= 1;
    if (numbers_[latest_] != y) {
      Across(source_.pixels + static_cast<std::ptrdiff_t>(y) * source_.stride, columns_,
             rows_[latest_]);
      numbers_[latest_] = y;
    }
    return rows_[latest_];
  }

 private:
  const PackedSource& source_;
  const PackedColumns& columns_;
  double* rows_[2];
  std::int32_t numbers_[2] = {-1, -1};
  int latest_ = 0;
};

}  // namespace

void ScaleYuy2(const PackedTarget& target, const PackedSource& source) noexcept {
  if (target.width <= 0 || target.height <= 0 || source.width <= 0 || source.height <= 0) return;
  const auto width = static_cast<std::uint64_t>(target.width);
  WorkArray<std::int32_t> places(2 * width);
  WorkArray<float> shares(width);
  WorkArray<double> memory(4 * width);
  if (!places || !shares || !memory) return;
  const PackedColumns columns{places.data(), places.data() + target.width, shares.data(),
                              target.width};
  TabulateColumns(columns, source.width);
  AcrossRows rows(source, columns, memory.data());
  const float step = static_cast<float>(source.height) / static_cast<float>(target.height);
  for (std::int32_t y = 0; y < target.height; ++y) {
    const float position = static_cast<float>(y) * step;
    const auto whole = static_cast<std::int32_t>(position);
    const float share = position - static_cast<float>(whole);
    const double* upper = rows.Get(Hold(whole, source.height));
    const double* lower = rows.Get(Hold(whole + 1, source.height));
    Down(upper, lower, share, 2 * target.width,
         target.pixels + static_cast<std::ptrdiff_t>(y) * target.stride);
  }
}

}  // namespace zor
