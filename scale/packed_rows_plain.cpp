// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <cstring>

#include "platform/compiler.h"
#include "scale/packed_rows.h"

namespace zor {
namespace {

/// The plan of the plain form: the list itself.
std::uint64_t PlanBytes(const AreaList& list) noexcept {
  return sizeof(AreaList) + sizeof(AreaEntry) * static_cast<std::uint64_t>(list.count);
}

bool Plan(const AreaList& list, std::uint8_t* plan) noexcept {
  std::memcpy(plan, &list, sizeof(list));
  std::memcpy(plan + sizeof(list), list.entries,
              sizeof(AreaEntry) * static_cast<std::size_t>(list.count));
  return true;
}

ZOR_ALWAYS_INLINE double Across(std::int32_t left, std::int32_t right, double share) noexcept {
  return left - (left - right) * share;
}

void Row(std::uint8_t* out, const std::uint8_t* upper, const std::uint8_t* lower, double share,
         const std::uint8_t* plan) noexcept {
  const auto& list = *reinterpret_cast<const AreaList*>(plan);
  const auto* entries = reinterpret_cast<const AreaEntry*>(plan + sizeof(AreaList));
  for (std::int32_t i = 0; i < list.count; i += 2) {
    const double across = entries[i].weight;
    for (std::int32_t byte = 0; byte < 2; ++byte) {
      const std::int32_t left = entries[i].source + byte;
      const std::int32_t right = entries[i + 1].source + byte;
      const double top = static_cast<float>(Across(upper[left], upper[right], across));
      const double bottom = Across(lower[left], lower[right], across);
      const double value = top - (top - bottom) * share;
      out[i + byte] = static_cast<std::uint8_t>(static_cast<std::int32_t>(value));
    }
  }
}

}  // namespace

const PackedRowForm kPackedRowsPlain = {"plain", PlanBytes, Plan, Row};

}  // namespace zor
