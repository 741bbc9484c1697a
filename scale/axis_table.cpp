// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/axis_table.h"

namespace zor {
namespace {

constexpr double kGuard = 1e-9;  // against sums that end just below a whole number

std::int32_t Trunc(double value) {
  return static_cast<std::int32_t>(value);
}

/// A weight from a fraction: rounded to 255ths, cut to a byte, in all four bytes.
std::uint32_t Weight(double fraction) {
  return (static_cast<std::uint32_t>(Trunc(fraction * 255 + 0.5)) & 255) * 0x01010101u;
}

/// One axis while it is built.
class AxisBuilder {
 public:
  AxisBuilder(std::int32_t destLength, std::int32_t sourceLength, std::uint32_t* words,
              std::int32_t* offsets, std::int32_t stride, double start, double step)
      : dest_(destLength),
        length_(sourceLength),
        words_(words),
        offsets_(offsets),
        stride_(stride),
        start_(start),
        step_(step),
        edges_{0, destLength} {}

  /// The edges of the positions that have been built.
  AxisEdges Edges() const { return edges_; }

  void Nearest() {
    double pos = start_ + 0.5 * step_;
    for (std::int32_t i = 0; i < dest_; ++i, pos += step_) {
      const std::int32_t idx = Trunc(pos + kGuard);
      if (idx < 0) {
        Before(i, 0);
      } else if (idx < length_ - 1) {
        Put(i, idx, 0);
      } else {
        Behind(i, 0);
      }
    }
  }

  void Bilinear() {
    // Across 3-byte pixels the next one is read four bytes wide, so the last one gives way early.
    const std::int32_t limit = stride_ == 3 ? length_ - 2 : length_ - 1;
    double pos = start_ + 0.5 * step_ - 0.5;
    for (std::int32_t i = 0; i < dest_; ++i, pos += step_) {
      if (pos < -step_) {
        Before(i, kEdgeWeight);
      } else if (pos > (length_ - 1) + step_) {
        Behind(i, kEdgeWeight);
      } else if (const std::int32_t idx = Trunc(pos + kGuard); idx < 0) {
        Before(i, kEdgeWeight);
      } else if (idx < limit) {
        Put(i, idx, Inner(pos - idx));
      } else {
        Behind(i, kEdgeWeight);
      }
    }
  }

  void BilinearFade() {
    double pos = start_ + 0.5 * step_ - 0.5;
    for (std::int32_t i = 0; i < dest_; ++i, pos += step_) {
      if (pos < -step_) {
        Before(i, 0);
      } else if (pos > (length_ - 1) + step_) {
        Behind(i, 0);
      } else if (const std::int32_t idx = Trunc(pos + kGuard); pos < 0) {
        Before(i, Weight((pos + step_) / step_));
      } else if (idx < length_ - 1) {
        Put(i, idx, Inner(pos - idx));
      } else {
        const auto beyond =
            static_cast<std::uint32_t>(Trunc((pos - (length_ - 1)) / step_ * 255 + 0.5)) & 255;
        Behind(i, (255 - beyond) * 0x01010101u);
      }
    }
  }

  /// Even destination rows start on even source rows and odd ones on odd ones; an odd last row is
  /// that of the row before it.
  void RowPairs() {
    const std::int32_t half = length_ >> 1;
    double pos = start_ + 0.5 * step_ - 0.5;
    for (std::int32_t i = 0; i + 1 < dest_; i += 2, pos += step_) {
      std::int32_t row = half - 1;
      std::uint32_t word = kEdgeWeight;
      if (pos < -step_) {
        Raise(i + 2);
        row = 0, word = 0;
      } else if (pos > (half - 1) + step_) {
        Lower(i);
      } else if (const std::int32_t idx = Trunc(pos + kGuard); idx < 0) {
        Raise(i + 2);
        row = 0, word = Weight((pos + step_) / step_);
      } else if (idx < half - 1) {
        row = idx, word = Inner(pos - idx);
      } else {
        Lower(i);
        word = Weight((pos - (half - 1)) / step_);
      }
      offsets_[i] = row * stride_ * 2;
      offsets_[i + 1] = row * stride_ * 2 + stride_;
      words_[i] = words_[i + 1] = word;
    }
    if (dest_ >= 2 && dest_ % 2 != 0) {
      offsets_[dest_ - 1] = offsets_[dest_ - 2];
      words_[dest_ - 1] = words_[dest_ - 2];
    }
  }

  /// The words that exact area weighting leaves to pictures of two pixel sizes. Interpolation reads
  /// their bytes as they stand.
  void Area() {
    double pos = start_;
    const double c = 0.5 * step_ - 1.5;
    for (std::int32_t i = 0; i < dest_; ++i, pos += step_) {
      const std::int32_t idx = Trunc(pos + kGuard);
      const double q = pos + step_;
      if (idx < 0) {
        const auto share = static_cast<std::uint32_t>(255 - Trunc(q * 255 / step_ + 0.5));
        Before(i, q >= 1e-12 ? share << 16 | 1 : 0xFF0000);
      } else if (idx < length_ - 2) {
        Put(i, idx, static_cast<std::uint32_t>(Trunc((c + pos - idx) * 255 / (step_ * 6))));
      } else if (idx <= length_ - 1) {
        auto word = static_cast<std::uint32_t>(length_ - idx);
        if (q >= length_) word |= Beyond(pos) << 16;
        Lower(i);
        Put(i, idx, word);
      } else {
        Behind(i, 0xFF0000);
      }
    }
  }

  void Box(bool fade) {
    const std::uint32_t outside = fade ? 0xFF0000u : 0u;
    double pos = start_;
    for (std::int32_t i = 0; i < dest_; ++i) {
      const double q = pos + step_;
      const std::int32_t a = Trunc(pos + kGuard);
      const std::int32_t b = Trunc(q + kGuard);
      if (b < 1) {
        Before(i, outside);
      } else if (a > length_ - 1) {
        Behind(i, outside);
      } else if (a < 0) {
        const auto share = static_cast<std::uint32_t>(255 - Trunc(q * 255 / step_ + 0.5));
        Before(i, static_cast<std::uint32_t>(b) | (fade ? share << 16 : 0));
      } else if (b <= length_ - 1) {
        Put(i, a, static_cast<std::uint32_t>(b - a));
      } else {
        Lower(i);
        Put(i, a, static_cast<std::uint32_t>(length_ - a) | (fade ? Beyond(pos) << 16 : 0));
      }
      pos = q;
    }
  }

 private:
  /// The background's share of a position that reaches beyond the source's end.
  std::uint32_t Beyond(double pos) const {
    const auto share =
        static_cast<std::uint32_t>(Trunc(255 - ((length_ - pos) * 255 / step_ + 0.5)));
    return share > 255 ? 255 : share;
  }
  /// The weight of a position between two samples.
  static std::uint32_t Inner(double fraction) { return fraction > 0 ? Weight(fraction) : 0; }

  /// Position @p i reads the source from @p index on.
  void Put(std::int32_t i, std::int32_t index, std::uint32_t word) {
    offsets_[i] = index * stride_;
    words_[i] = word;
  }
  /// Position @p i lies in front of the source, or behind it: it reads the edge.
  void Before(std::int32_t i, std::uint32_t word) {
    Raise(i + 1);
    Put(i, 0, word);
  }
  void Behind(std::int32_t i, std::uint32_t word) {
    Lower(i);
    Put(i, length_ - 1, word);
  }
  void Raise(std::int32_t first) {
    if (first > edges_.first) edges_.first = first;
  }
  void Lower(std::int32_t last) {
    if (last < edges_.last) edges_.last = last;
  }

  const std::int32_t dest_;
  const std::int32_t length_;
  std::uint32_t* const words_;
  std::int32_t* const offsets_;
  const std::int32_t stride_;
  const double start_;
  const double step_;
  AxisEdges edges_;
};

}  // namespace

AxisEdges BuildAxisTable(std::int32_t destLength, std::int32_t sourceLength, std::uint32_t* words,
                         std::int32_t* offsets, std::int32_t stride, double start, double step,
                         ScaleMode mode) noexcept {
  AxisBuilder axis(destLength, sourceLength, words, offsets, stride, start, step);
  switch (mode) {
    case SCALE_NEAREST:
      axis.Nearest();
      break;
    case SCALE_BILINEAR:
      axis.Bilinear();
      break;
    case SCALE_BILINEAR_FADE:
      axis.BilinearFade();
      break;
    case SCALE_BOX:
      axis.Box(false);
      break;
    case SCALE_BOX_FADE:
      axis.Box(true);
      break;
    case SCALE_ROW_PAIRS:
      axis.RowPairs();
      break;
    case SCALE_AREA:
      axis.Area();
      break;
    default:
      break;
  }
  return axis.Edges();
}

}  // namespace zor
