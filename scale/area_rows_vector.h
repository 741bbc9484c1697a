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

/// One value's entries: `count` of the list from `first` on, read at a channel's place.
struct AreaTaps {
  std::int32_t first;
  std::int32_t count;
  std::int32_t channel;
};

/// Finds the entries of values that are asked for in rising order, from 0 on without a gap. A value
/// behind the row, which fills up the last group, has the last column's entries, and they weigh 0.
class AreaTapFinder {
 public:
  ZOR_ALWAYS_INLINE explicit AreaTapFinder(const AreaList& list) noexcept : list_(list) {}

  ZOR_ALWAYS_INLINE AreaTaps Of(std::int32_t value) noexcept {
    if (value >= list_.values) return {taps_.first, taps_.count, kNone};
    if (value == next_) {
      taps_.first += taps_.count;
      taps_.count = 0;
      while (taps_.first + taps_.count < list_.count &&
             list_.entries[taps_.first + taps_.count].value == value) {
        ++taps_.count;
      }
      next_ += list_.channels;
    }
    taps_.channel = value - (next_ - list_.channels);
    return taps_;
  }

  /// Byte offset of a tap; one that the value doesn't have stands on its last one.
  ZOR_ALWAYS_INLINE std::int32_t Offset(const AreaTaps& taps, std::int32_t tap) const noexcept {
    const std::int32_t entry = taps.first + (tap < taps.count ? tap : taps.count - 1);
    return list_.entries[entry].source + (taps.channel == kNone ? 0 : taps.channel);
  }

  ZOR_ALWAYS_INLINE float Weight(const AreaTaps& taps, std::int32_t tap) const noexcept {
    const bool has = tap < taps.count && taps.channel != kNone;
    return has ? list_.entries[taps.first + tap].weight : 0.0f;
  }

 private:
  static constexpr std::int32_t kNone = -1;

  const AreaList& list_;
  std::int32_t next_ = 0;
  AreaTaps taps_{0, 0, 0};
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

/// Head of a plan. The starts of all windows follow, group by group, and then, at `records`, the
/// groups' records. Starts stand apart so that a plan stays within the innermost cache.
struct alignas(64) AreaPlanHead {
  std::int64_t groups;
  std::int64_t taps;
  std::int64_t values;
  std::int64_t recordBytes;
  std::int64_t windows;    ///< of a group
  std::int64_t records;    ///< bytes from the head to the first record
  std::int64_t registers;  ///< of a window, for forms that have a choice
};

/// The kernel of a form. V has the number of lanes and its vector of floats with the usual
/// operations; StoreLowBytes(out, count, sums) truncates. A V::Group, made from a group's record,
/// adds up all taps of a row in their order: Sum(row).
///
/// A group goes down through all rows before the next one starts, so that its taps and what it has
/// gathered stay in registers.
template <class V>
ZOR_ALWAYS_INLINE void AreaVectorRows(const AreaTargetRow* targets, std::int32_t count, float* b,
                                      const std::uint8_t* plan) noexcept {
  const auto& head = *reinterpret_cast<const AreaPlanHead*>(plan);
  const auto* starts = reinterpret_cast<const std::int32_t*>(plan + sizeof(head));
  const std::uint8_t* record = plan + head.records;
  const auto half = V::Set(0.5f);
  const std::int64_t values = head.values;
  const std::int64_t step = head.recordBytes;
  const std::int64_t windows = head.windows;
  const std::int64_t taps = head.taps;
  for (std::int64_t v = 0; v < values; v += V::kLanes) {
    const typename V::Group group(record, starts, taps);
    const std::int64_t left = values - v;
    auto gathered = V::Load(b + v);
    for (const AreaTargetRow* target = targets; target != targets + count; ++target) {
      const std::uint8_t* const* row = target->rows;
      for (std::int32_t more = target->count; more > 1; --more) {
        gathered = V::Add(gathered, group.Sum(*row++));
      }
      const auto a = group.Sum(*row);
      const auto sum = V::Add(V::Add(V::Mul(a, V::Set(target->rest)), gathered), half);
      gathered = V::Mul(a, V::Set(target->share));
      V::StoreLowBytes(target->out + v, left < V::kLanes ? left : V::kLanes, sum);
    }
    V::Store(b + v, gathered);
    record += step;
    starts += windows;
  }
}

/// Taps of the forms that shuffle bytes: four taps stand in the four bytes of a value's 32 bits.
inline constexpr std::int32_t kAreaShuffleTaps = 4;

/// A group's record in those forms, for each four taps: the shuffle, and the weights of as many
/// taps as there are. Each four taps have windows of their own.
template <std::int32_t kLanes, std::int32_t kWindows>
struct AreaShuffle {
  static constexpr std::int32_t kWindowLanes = kLanes / kWindows;
  static constexpr std::int64_t kIndexBytes = kAreaShuffleTaps * kLanes;
  static constexpr std::int64_t kTapBytes = 4 * kLanes;

  static ZOR_ALWAYS_INLINE std::int64_t QuadsOf(std::int64_t taps) noexcept {
    return (taps + kAreaShuffleTaps - 1) / kAreaShuffleTaps;
  }

  static ZOR_ALWAYS_INLINE std::int64_t RecordBytes(std::int64_t taps) noexcept {
    return QuadsOf(taps) * kIndexBytes + taps * kTapBytes;
  }

  static ZOR_ALWAYS_INLINE AreaPlanHead Head(const AreaList& list,
                                             std::int64_t registers) noexcept {
    const std::int64_t taps = MostAreaTaps(list);
    const std::int64_t groups = (std::int64_t{list.values} + kLanes - 1) / kLanes;
    const std::int64_t windows = QuadsOf(taps) * kWindows;
    const std::int64_t startBytes = (4 * groups * windows + 63) / 64 * 64;
    const auto headBytes = static_cast<std::int64_t>(sizeof(AreaPlanHead));
    return {groups,   taps, list.values, RecordBytes(taps), windows, headBytes + startBytes,
            registers};
  }

  /// Makes the plan.
  /// @param windowBytes bytes that one shuffle reaches.
  /// @return false if a window doesn't reach, or the source has no room for one.
  static ZOR_ALWAYS_INLINE bool Fill(const AreaList& list, const AreaPlanHead& head,
                                     std::int32_t windowBytes, std::uint8_t* plan) noexcept {
    if (list.rowBytes < windowBytes) return false;
    std::memcpy(plan, &head, sizeof(head));
    auto* start = reinterpret_cast<std::int32_t*>(plan + sizeof(head));
    std::uint8_t* record = plan + head.records;
    AreaTapFinder finder(list);
    const auto allTaps = static_cast<std::int32_t>(head.taps);
    for (std::int64_t g = 0; g < head.groups; ++g) {
      AreaTaps taps[kLanes];
      for (std::int32_t i = 0; i < kLanes; ++i) {
        taps[i] = finder.Of(static_cast<std::int32_t>(g * kLanes + i));
      }
      for (std::int32_t tap = 0; tap < allTaps; tap += kAreaShuffleTaps) {
        const std::int32_t left = allTaps - tap;
        const std::int32_t count = left < kAreaShuffleTaps ? left : kAreaShuffleTaps;
        for (std::int32_t window = 0; window < kWindows; ++window) {
          if (!FillWindow(finder, taps + window * kWindowLanes, window, tap, count,
                          list.rowBytes - windowBytes, windowBytes, start++, record)) {
            return false;
          }
        }
        record += RecordBytes(count);
      }
    }
    return true;
  }

 private:
  static ZOR_ALWAYS_INLINE bool FillWindow(const AreaTapFinder& finder, const AreaTaps* taps,
                                           std::int32_t window, std::int32_t tap,
                                           std::int32_t count, std::int32_t latestBase,
                                           std::int32_t windowBytes, std::int32_t* start,
                                           std::uint8_t* record) noexcept {
    std::int32_t offsets[kWindowLanes][kAreaShuffleTaps];
    std::int32_t base = latestBase;
    for (std::int32_t i = 0; i < kWindowLanes; ++i) {
      for (std::int32_t t = 0; t < kAreaShuffleTaps; ++t) {
        offsets[i][t] = finder.Offset(taps[i], tap + (t < count ? t : count - 1));
        if (offsets[i][t] < base) base = offsets[i][t];
      }
    }
    for (std::int32_t i = 0; i < kWindowLanes; ++i) {
      const std::int32_t lane = window * kWindowLanes + i;
      for (std::int32_t t = 0; t < kAreaShuffleTaps; ++t) {
        const std::int32_t place = offsets[i][t] - base;
        if (place >= windowBytes) return false;
        record[kAreaShuffleTaps * lane + t] = static_cast<std::uint8_t>(place);
        if (t >= count) continue;
        const float weight = finder.Weight(taps[i], tap + t);
        std::memcpy(record + kIndexBytes + t * kTapBytes + 4 * lane, &weight, 4);
      }
    }
    *start = base;
    return true;
  }
};

/// Bytes of a plan, without a look at how far its windows would have to reach.
ZOR_ALWAYS_INLINE std::uint64_t AreaPlanBytes(const AreaPlanHead& head,
                                              const AreaList& list) noexcept {
  if (head.taps == 0 || list.reach > list.rowBytes) return 0;
  return static_cast<std::uint64_t>(head.records + head.groups * head.recordBytes);
}

/// A group of a form that shuffles bytes. S has the vectors, a Weight, WeightOf(floats), and
/// Product(window, index, weight), which brings the bytes of one tap and weighs them.
/// @tparam kTaps taps of a value, which then stay in registers from row to row; 0 for any number.
template <class S, std::int32_t kTaps>
struct AreaShuffleGroup {
  using Floats = typename S::Floats;
  using Shuffle = typename S::Shuffles;

  ZOR_ALWAYS_INLINE AreaShuffleGroup(const std::uint8_t* record, const std::int32_t* starts,
                                     std::int64_t) noexcept
      : starts_(starts) {
    const auto index = S::LoadIndex(record);
    const std::uint8_t* weights = record + Shuffle::kIndexBytes;
#pragma GCC unroll 4
    for (std::int32_t t = 0; t < kTaps; ++t) {
      index_[t] = S::IndexOf(index, t);
      weights_[t] =
          S::WeightOf(S::Load(reinterpret_cast<const float*>(weights + t * Shuffle::kTapBytes)));
    }
  }

  ZOR_ALWAYS_INLINE Floats Sum(const std::uint8_t* row) const noexcept {
    const auto window = S::LoadWindow(row, starts_);
    // 0 added to the first product would leave it as it is.
    Floats sum = S::Product(window, index_[0], weights_[0]);
#pragma GCC unroll 4
    for (std::int32_t t = 1; t < kTaps; ++t) {
      sum = S::Add(sum, S::Product(window, index_[t], weights_[t]));
    }
    return sum;
  }

 private:
  const std::int32_t* starts_;
  typename S::Bytes index_[kTaps];
  typename S::Weight weights_[kTaps];
};

template <class S>
struct AreaShuffleGroup<S, 0> {
  using Floats = typename S::Floats;
  using Shuffle = typename S::Shuffles;

  ZOR_ALWAYS_INLINE AreaShuffleGroup(const std::uint8_t* record, const std::int32_t* starts,
                                     std::int64_t taps) noexcept
      : record_(record), starts_(starts), taps_(taps) {}

  ZOR_ALWAYS_INLINE Floats Sum(const std::uint8_t* row) const noexcept {
    Floats sum = S::Set(0.0f);
    const std::uint8_t* record = record_;
    const std::int32_t* starts = starts_;
    for (std::int64_t left = taps_; left > 0; left -= kAreaShuffleTaps) {
      const auto window = S::LoadWindow(row, starts);
      const auto index = S::LoadIndex(record);
      const std::uint8_t* weights = record + Shuffle::kIndexBytes;
#pragma GCC unroll 4
      for (std::int32_t t = 0; t < kAreaShuffleTaps; ++t) {
        if (t >= left) break;
        const auto weight = S::WeightOf(S::Load(reinterpret_cast<const float*>(weights)));
        sum = S::Add(sum, S::Product(window, S::IndexOf(index, t), weight));
        weights += Shuffle::kTapBytes;
      }
      record += Shuffle::RecordBytes(kAreaShuffleTaps);
      starts += S::kWindows;
    }
    return sum;
  }

 private:
  const std::uint8_t* record_;
  const std::int32_t* starts_;
  std::int64_t taps_;
};

/// S with its groups, for one number of taps.
template <class S, std::int32_t kTaps>
struct AreaShuffleVector : S {
  using Group = AreaShuffleGroup<S, kTaps>;
};

/// The kernel of a form that shuffles bytes: the usual numbers of taps have loops of their own.
template <class S>
ZOR_ALWAYS_INLINE void AreaShuffleRows(const AreaTargetRow* targets, std::int32_t count, float* b,
                                       const std::uint8_t* plan) noexcept {
  switch (reinterpret_cast<const AreaPlanHead*>(plan)->taps) {
    case 2:
      return AreaVectorRows<AreaShuffleVector<S, 2>>(targets, count, b, plan);
    case 3:
      return AreaVectorRows<AreaShuffleVector<S, 3>>(targets, count, b, plan);
    case 4:
      return AreaVectorRows<AreaShuffleVector<S, 4>>(targets, count, b, plan);
    default:
      return AreaVectorRows<AreaShuffleVector<S, 0>>(targets, count, b, plan);
  }
}

}  // namespace
}  // namespace zor
