// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// What the vector forms of the packed scaler share: the walk over a plan of byte shuffles.
/// Always-inline code only.

#include "scale/area_rows_vector.h"

namespace zor {
namespace {

/// The row of a form. S shuffles bytes and has pairs of vectors of doubles: FromIntegers,
/// FromFloats, Sub, Mul, Set, ThroughFloat, and Truncated, which makes integers of them.
template <class S>
ZOR_ALWAYS_INLINE void PackedVectorRow(std::uint8_t* out, const std::uint8_t* upper,
                                       const std::uint8_t* lower, double share,
                                       const std::uint8_t* plan) noexcept {
  const auto& head = *reinterpret_cast<const AreaPlanHead*>(plan);
  const auto* starts = reinterpret_cast<const std::int32_t*>(plan + sizeof(head));
  const std::uint8_t* record = plan + head.records;
  const std::int64_t values = head.values;
  const std::int64_t step = head.recordBytes;
  const auto down = S::Set(share);
  for (std::int64_t v = 0; v < values; v += S::kLanes) {
    const auto index = S::LoadIndex(record);
    const auto leftIndex = S::IndexOf(index, 0);
    const auto rightIndex = S::IndexOf(index, 1);
    const auto right =
        S::FromFloats(S::Load(reinterpret_cast<const float*>(record + S::Shuffles::kIndexBytes)));
    const auto across = [=](const std::uint8_t* row) {
      const auto window = S::LoadWindow(row, starts);
      const auto l = S::PickBytes(window, leftIndex);
      const auto r = S::PickBytes(window, rightIndex);
      return S::Sub(S::FromIntegers(l), S::Mul(S::FromIntegers(S::Difference(l, r)), right));
    };
    const auto top = S::ThroughFloat(across(upper));
    const auto value = S::Sub(top, S::Mul(S::Sub(top, across(lower)), down));
    const std::int64_t left = values - v;
    S::StoreLowBytes(out + v, left < S::kLanes ? left : S::kLanes, S::Truncated(value));
    record += step;
    starts += S::kWindows;
  }
}

}  // namespace
}  // namespace zor
