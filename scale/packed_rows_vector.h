// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// What the vector forms of the packed scaler share: arithmetic in doubles, and the walk over a
/// plan of byte shuffles. Always-inline code only.

#include "scale/area_rows_vector.h"

namespace zor {
namespace {

/// The values of one group in doubles: two vectors, `D::Vector`, for each vector of floats.
template <class D>
struct DoublePair {
  typename D::Vector low;
  typename D::Vector high;

  friend ZOR_ALWAYS_INLINE DoublePair operator-(DoublePair a, DoublePair b) noexcept {
    return {a.low - b.low, a.high - b.high};
  }
  friend ZOR_ALWAYS_INLINE DoublePair operator*(DoublePair a, DoublePair b) noexcept {
    return {a.low * b.low, a.high * b.high};
  }
};

/// Calls values(v, across) for every group of a row's values, from v on; across(row) gives a row's
/// values in doubles. S shuffles bytes, has the Difference of integers, and makes a `DoublePair`
/// by FromIntegers, FromFloats, Set and LoadPair. ThroughFloat rounds one to floats and back,
/// StorePair stores one, and Truncated makes integers of it.
template <class S, class Values>
ZOR_ALWAYS_INLINE void ForEachPackedGroup(const std::uint8_t* plan, Values values) noexcept {
  const auto& head = *reinterpret_cast<const AreaPlanHead*>(plan);
  const auto* starts = reinterpret_cast<const std::int32_t*>(plan + sizeof(head));
  const std::uint8_t* record = plan + head.records;
  const std::int64_t count = head.values;
  const std::int64_t step = head.recordBytes;
  for (std::int64_t v = 0; v < count; v += S::kLanes) {
    const auto index = S::LoadIndex(record);
    const auto leftIndex = S::IndexOf(index, 0);
    const auto rightIndex = S::IndexOf(index, 1);
    const auto right =
        S::FromFloats(S::Load(reinterpret_cast<const float*>(record + S::Shuffles::kIndexBytes)));
    values(v, [=](const std::uint8_t* row) {
      const auto window = S::LoadWindow(row, starts);
      const auto l = S::PickBytes(window, leftIndex);
      const auto r = S::PickBytes(window, rightIndex);
      return S::FromIntegers(l) - S::FromIntegers(S::Difference(l, r)) * right;
    });
    record += step;
    starts += S::kWindows;
  }
}

/// One group of values between two rows, stored as far as there are values.
template <class S, class Pair>
ZOR_ALWAYS_INLINE void StoreBetween(std::uint8_t* out, std::int64_t left, Pair upper, Pair lower,
                                    Pair share) noexcept {
  const Pair top = S::ThroughFloat(upper);
  S::StoreLowBytes(out, left < S::kLanes ? left : S::kLanes,
                   S::Truncated(top - (top - lower) * share));
}

template <class S>
ZOR_ALWAYS_INLINE void PackedVectorRow(std::uint8_t* out, const std::uint8_t* upper,
                                       const std::uint8_t* lower, double share,
                                       const std::uint8_t* plan) noexcept {
  const std::int64_t count = reinterpret_cast<const AreaPlanHead*>(plan)->values;
  const auto down = S::Set(share);
  ForEachPackedGroup<S>(plan, [=](std::int64_t v, auto across) {
    StoreBetween<S>(out + v, count - v, across(upper), across(lower), down);
  });
}

template <class S>
ZOR_ALWAYS_INLINE void PackedVectorAcross(double* out, const std::uint8_t* row,
                                          const std::uint8_t* plan) noexcept {
  ForEachPackedGroup<S>(plan,
                        [=](std::int64_t v, auto across) { S::StorePair(out + v, across(row)); });
}

template <class S>
ZOR_ALWAYS_INLINE void PackedVectorDown(std::uint8_t* out, const double* upper, const double* lower,
                                        double share, const std::uint8_t* plan) noexcept {
  const std::int64_t count = reinterpret_cast<const AreaPlanHead*>(plan)->values;
  const auto down = S::Set(share);
  for (std::int64_t v = 0; v < count; v += S::kLanes) {
    StoreBetween<S>(out + v, count - v, S::LoadPair(upper + v), S::LoadPair(lower + v), down);
  }
}

}  // namespace
}  // namespace zor
