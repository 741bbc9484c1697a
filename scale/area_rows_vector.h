// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// What the vector forms of the area scaler share: the plan, made from the contribution list turned
/// by values, and the walk over it. Always-inline code and unnamed types only, so that each form
/// compiles its own.
///
/// A form works on kLanes values at a time. Every value adds as many taps as the row's longest list
/// has; those it doesn't have weigh 0, and as no sum is negative, adding 0 changes none.

#include <cstdint>
#include <cstring>

#include "platform/compiler.h"
#include "scale/area_rows.h"

namespace zor {
namespace {

/// One value's entries: `count` of the list from `first` on.
struct AreaTaps {
  std::int32_t first;
  std::int32_t count;
};

/// Finds the entries of values that are asked for in rising order. A value behind the row, which
/// fills up the last group, has those of the last column and weights of 0.
class AreaTapFinder {
 public:
  ZOR_ALWAYS_INLINE explicit AreaTapFinder(const AreaList& list) noexcept : list_(list) {}

  ZOR_ALWAYS_INLINE AreaTaps Of(std::int32_t value) noexcept {
    const std::int32_t last = list_.values - list_.channels;
    const std::int32_t column = value < list_.values ? value - value % list_.channels : last;
    if (column != column_) {
      taps_.first += taps_.count;
      while (list_.entries[taps_.first].value != column) ++taps_.first;
      taps_.count = 0;
      while (taps_.first + taps_.count < list_.count &&
             list_.entries[taps_.first + taps_.count].value == column) {
        ++taps_.count;
      }
      column_ = column;
    }
    return taps_;
  }

  /// Byte offset of a tap; one that the value doesn't have stands on its last one.
  ZOR_ALWAYS_INLINE std::int32_t Offset(AreaTaps taps, std::int32_t value,
                                        std::int32_t tap) const noexcept {
    const std::int32_t entry = taps.first + (tap < taps.count ? tap : taps.count - 1);
    return list_.entries[entry].source + (value < list_.values ? value % list_.channels : 0);
  }

  ZOR_ALWAYS_INLINE float Weight(AreaTaps taps, std::int32_t value,
                                 std::int32_t tap) const noexcept {
    const bool has = tap < taps.count && value < list_.values;
    return has ? list_.entries[taps.first + tap].weight : 0.0f;
  }

 private:
  const AreaList& list_;
  std::int32_t column_ = -1;
  AreaTaps taps_{0, 0};
};

/// @return the taps of the row's longest list, or 0 if a column has none.
ZOR_ALWAYS_INLINE std::int32_t MostAreaTaps(const AreaList& list) noexcept {
  std::int32_t most = 0;
  std::int32_t entry = 0;
  for (std::int32_t column = 0; column < list.values; column += list.channels) {
    const std::int32_t first = entry;
    while (entry < list.count && list.entries[entry].value == column) ++entry;
    if (entry == first) return 0;
    if (entry - first > most) most = entry - first;
  }
  return most;
}

/// Head of a plan; the groups' records follow, `recordBytes` each.
struct alignas(64) AreaPlanHead {
  std::int64_t groups;
  std::int64_t taps;
  std::int64_t values;
  std::int64_t recordBytes;
  std::int64_t registers;  ///< of a window, for forms that have a choice
};

/// The kernel of a form. V has the number of lanes, its vector of floats with the usual operations,
/// Sum(row, record, head), which adds up all taps of a group in their order, and
/// StoreLowBytes(out, count, sums), which truncates.
template <class V>
ZOR_ALWAYS_INLINE void AreaVectorRow(std::uint8_t* out, float* b, const std::uint8_t* const* rows,
                                     std::int32_t count, float share,
                                     const std::uint8_t* plan) noexcept {
  const auto& head = *reinterpret_cast<const AreaPlanHead*>(plan);
  const std::uint8_t* record = plan + sizeof(head);
  const auto next = V::Set(share);
  const auto rest = V::Set(1.0f - share);
  const auto half = V::Set(0.5f);
  for (std::int64_t v = 0; v < head.groups * V::kLanes; v += V::kLanes) {
    auto gathered = V::Load(b + v);
    for (std::int32_t y = 0; y < count - 1; ++y) {
      gathered = V::Add(gathered, V::Sum(rows[y], record, head));
    }
    const auto a = V::Sum(rows[count - 1], record, head);
    const auto sum = V::Add(V::Add(V::Mul(a, rest), gathered), half);
    V::Store(b + v, V::Mul(a, next));
    const std::int64_t left = head.values - v;
    V::StoreLowBytes(out + v, left < V::kLanes ? left : V::kLanes, sum);
    record += head.recordBytes;
  }
}

/// Taps of the forms that shuffle bytes: four taps stand in the four bytes of a value's 32 bits.
inline constexpr std::int32_t kAreaShuffleTaps = 4;

/// A group's record in those forms, for each four taps: where the windows start, the shuffle, and
/// the weights of as many taps as there are.
template <std::int32_t kLanes, std::int32_t kWindows>
struct AreaShuffle {
  static constexpr std::int32_t kWindowLanes = kLanes / kWindows;
  static constexpr std::int64_t kIndexBytes = kAreaShuffleTaps * kLanes;
  static constexpr std::int64_t kBaseBytes = kIndexBytes;  // keeps what follows aligned
  static constexpr std::int64_t kTapBytes = 4 * kLanes;

  static ZOR_ALWAYS_INLINE std::int64_t RecordBytes(std::int64_t taps) noexcept {
    const std::int64_t quads = (taps + kAreaShuffleTaps - 1) / kAreaShuffleTaps;
    return quads * (kBaseBytes + kIndexBytes) + taps * kTapBytes;
  }

  static ZOR_ALWAYS_INLINE AreaPlanHead Head(const AreaList& list,
                                             std::int64_t registers) noexcept {
    const std::int64_t taps = MostAreaTaps(list);
    return {(std::int64_t{list.values} + kLanes - 1) / kLanes, taps, list.values, RecordBytes(taps),
            registers};
  }

  /// Fills the records, or only looks whether they can be filled if there are none.
  /// @param windowBytes bytes that one shuffle reaches.
  /// @return false if a window doesn't reach, or the source has no room for one.
  static ZOR_ALWAYS_INLINE bool Fill(const AreaList& list, const AreaPlanHead& head,
                                     std::int32_t windowBytes, std::uint8_t* records) noexcept {
    if (head.taps == 0 || list.rowBytes < windowBytes || list.reach > list.rowBytes) return false;
    AreaTapFinder finder(list);
    for (std::int64_t g = 0; g < head.groups; ++g) {
      AreaTaps taps[kLanes];
      for (std::int32_t i = 0; i < kLanes; ++i) {
        taps[i] = finder.Of(static_cast<std::int32_t>(g * kLanes + i));
      }
      std::uint8_t* record = records == nullptr ? nullptr : records + g * head.recordBytes;
      for (std::int32_t tap = 0; tap < head.taps; tap += kAreaShuffleTaps) {
        const auto left = static_cast<std::int32_t>(head.taps - tap);
        const std::int32_t count = left < kAreaShuffleTaps ? left : kAreaShuffleTaps;
        for (std::int32_t window = 0; window < kWindows; ++window) {
          if (!FillWindow(list, finder, taps, g * kLanes, window, tap, count, windowBytes,
                          record)) {
            return false;
          }
        }
        if (record != nullptr) record += kBaseBytes + kIndexBytes + count * kTapBytes;
      }
    }
    return true;
  }

 private:
  static ZOR_ALWAYS_INLINE bool FillWindow(const AreaList& list, const AreaTapFinder& finder,
                                           const AreaTaps* taps, std::int64_t firstValue,
                                           std::int32_t window, std::int32_t tap,
                                           std::int32_t count, std::int32_t windowBytes,
                                           std::uint8_t* record) noexcept {
    std::int32_t offsets[kWindowLanes][kAreaShuffleTaps];
    std::int32_t base = list.rowBytes - windowBytes;
    for (std::int32_t i = 0; i < kWindowLanes; ++i) {
      const std::int32_t lane = window * kWindowLanes + i;
      const auto value = static_cast<std::int32_t>(firstValue + lane);
      for (std::int32_t t = 0; t < kAreaShuffleTaps; ++t) {
        offsets[i][t] = finder.Offset(taps[lane], value, tap + (t < count ? t : count - 1));
        if (offsets[i][t] < base) base = offsets[i][t];
      }
    }
    for (std::int32_t i = 0; i < kWindowLanes; ++i) {
      const std::int32_t lane = window * kWindowLanes + i;
      for (std::int32_t t = 0; t < kAreaShuffleTaps; ++t) {
        if (offsets[i][t] - base >= windowBytes) return false;
        if (record == nullptr) continue;
        record[kBaseBytes + kAreaShuffleTaps * lane + t] =
            static_cast<std::uint8_t>(offsets[i][t] - base);
        if (t >= count) continue;
        const float weight =
            finder.Weight(taps[lane], static_cast<std::int32_t>(firstValue + lane), tap + t);
        std::memcpy(record + kBaseBytes + kIndexBytes + t * kTapBytes + 4 * lane, &weight, 4);
      }
    }
    if (record != nullptr) std::memcpy(record + 4 * window, &base, 4);
    return true;
  }
};

/// Where a group's window starts.
ZOR_ALWAYS_INLINE std::int32_t AreaWindowBase(const std::uint8_t* record,
                                              std::int32_t window) noexcept {
  std::int32_t base;
  std::memcpy(&base, record + 4 * window, 4);
  return base;
}

/// Adds the taps of one group in the forms that shuffle bytes. V::Shuffle(row, record, head) brings
/// the bytes of four taps, V::AddTap<t>(sum, bytes, weights) adds one of them.
template <class V>
ZOR_ALWAYS_INLINE typename V::Floats AreaShuffleSum(const std::uint8_t* row,
                                                    const std::uint8_t* record,
                                                    const AreaPlanHead& head) noexcept {
  using Shuffle = typename V::Shuffles;
  auto sum = V::Set(0.0f);
  for (std::int64_t taps = head.taps; taps > 0; taps -= kAreaShuffleTaps) {
    const auto bytes = V::Shuffle(row, record, head);
    const std::uint8_t* weights = record + Shuffle::kBaseBytes + Shuffle::kIndexBytes;
    sum = V::template AddTap<0>(sum, bytes, weights);
    if (taps > 1) sum = V::template AddTap<1>(sum, bytes, weights + Shuffle::kTapBytes);
    if (taps > 2) sum = V::template AddTap<2>(sum, bytes, weights + 2 * Shuffle::kTapBytes);
    if (taps > 3) sum = V::template AddTap<3>(sum, bytes, weights + 3 * Shuffle::kTapBytes);
    record = weights + 4 * Shuffle::kTapBytes;
  }
  return sum;
}

}  // namespace
}  // namespace zor
