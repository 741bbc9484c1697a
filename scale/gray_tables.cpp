// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/gray_tables.h"

#include <algorithm>
#include <cstring>

namespace zor {
namespace {

constexpr double kGuard = 1e-9;

std::int32_t LoadWord(const std::uint8_t* words, std::int64_t index) noexcept {
  std::int32_t word;
  std::memcpy(&word, words + 4 * index, 4);
  return word;
}

void StoreWord(std::uint8_t* words, std::int64_t index, std::uint32_t word) noexcept {
  std::memcpy(words + 4 * index, &word, 4);
}

/// What a position on an axis comes to. `index` counts source samples.
struct Sample {
  std::int32_t index;
  std::int32_t weight;
};

/// Walks along an axis and tells where it leaves the source.
class AxisWalk {
 public:
  AxisWalk(std::int32_t targetLength, std::int32_t sourceLength, double position, double step)
      : edges_{0, targetLength}, end_(sourceLength - 1), position_(position), step_(step) {}

  /// The nearest sample at position @p i; moves on.
  Sample Nearest(std::int32_t i) noexcept {
    Sample sample{0, 0};
    if (position_ < 0) {
      edges_.first = std::max(edges_.first, i + 1);
    } else if (position_ > end_) {
      edges_.last = std::min(edges_.last, i);
      sample.index = end_;
    } else {
      sample.index = static_cast<std::int32_t>(position_ + kGuard);
    }
    position_ += step_;
    return sample;
  }

  /// The sample at or in front of position @p i and the share of the next one; moves on.
  Sample Between(std::int32_t i) noexcept {
    Sample sample{0, 0};
    if (position_ < 0) {
      edges_.first = std::max(edges_.first, i + 1);
    } else if (position_ >= end_) {
      edges_.last = std::min(edges_.last, i);
      sample.index = end_;
    } else {
      sample.index = static_cast<std::int32_t>(position_);
      const double fraction = position_ - sample.index;
      if (fraction > 0) sample.weight = static_cast<std::int32_t>(fraction * 255 + 0.5);
    }
    position_ += step_;
    return sample;
  }

  GrayEdges Edges() const noexcept { return edges_; }

 private:
  GrayEdges edges_;
  std::int32_t end_;
  double position_;
  double step_;
};

}  // namespace

GrayEdges BuildGrayColumnTable(std::int32_t targetLength, std::int32_t sourceLength,
                               std::uint8_t* weights, std::uint8_t* offsets, double start,
                               double step, ScaleMode mode) noexcept {
  AxisWalk walk(targetLength, sourceLength, start + 0.5 * step - 0.5, step);
  for (std::int32_t i = 0; i < targetLength; ++i) {
    const Sample sample = mode == SCALE_NEAREST ? walk.Nearest(i) : walk.Between(i);
    weights[i] = static_cast<std::uint8_t>(sample.weight);
    StoreWord(offsets, i, static_cast<std::uint32_t>(sample.index));
  }
  return walk.Edges();
}

GrayEdges BuildGrayRowTable(std::int32_t targetLength, std::int32_t sourceLength,
                            std::uint8_t* weights, std::uint8_t* offsets, std::int32_t sourceStride,
                            double start, double step, ScaleMode mode) noexcept {
  const auto store = [&](std::int32_t row, std::int32_t sourceRow, std::int32_t weight) {
    StoreWord(weights, row, static_cast<std::uint32_t>(weight) * 0x01010101u);
    StoreWord(offsets, row, static_cast<std::uint32_t>(std::int64_t{sourceRow} * sourceStride));
  };
  if (mode == SCALE_ROW_PAIRS) {
    AxisWalk walk(targetLength, sourceLength >> 1, start + 0.5 * step - 0.5, step);
    for (std::int32_t pair = 0; pair < targetLength >> 1; ++pair) {
      const Sample sample = walk.Between(pair);
      store(2 * pair, 2 * sample.index, sample.weight);
      store(2 * pair + 1, 2 * sample.index + 1, sample.weight);
    }
    if (targetLength > 1 && targetLength % 2 != 0) {
      StoreWord(weights, targetLength - 1,
                static_cast<std::uint32_t>(LoadWord(weights, targetLength - 2)));
      StoreWord(offsets, targetLength - 1,
                static_cast<std::uint32_t>(LoadWord(offsets, targetLength - 2)));
    }
    return walk.Edges();
  }
  const bool nearest = mode == SCALE_NEAREST;
  AxisWalk walk(targetLength, sourceLength, nearest ? start + 0.5 * step - 0.5 : start, step);
  for (std::int32_t i = 0; i < targetLength; ++i) {
    const Sample sample = nearest ? walk.Nearest(i) : walk.Between(i);
    store(i, sample.index, sample.weight);
  }
  return walk.Edges();
}

GrayTables::GrayTables(std::int32_t width, std::int32_t height) noexcept
    : block_(5 * static_cast<std::uint64_t>(width) + 8 * static_cast<std::uint64_t>(height) + 2),
      width_(width),
      height_(height) {}

std::int32_t GrayTables::ColumnOffset(std::int32_t column) noexcept {
  return LoadWord(ColumnOffsets(), column);
}
std::int32_t GrayTables::RowWeight(std::int32_t row) noexcept {
  return LoadWord(RowWeights(), row) & 0xFF;
}
std::int32_t GrayTables::RowOffset(std::int32_t row) noexcept {
  return LoadWord(RowOffsets(), row);
}

}  // namespace zor
