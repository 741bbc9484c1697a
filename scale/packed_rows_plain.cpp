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

/// Calls value(i, across) for every value of a row; across(row) gives a row's.
template <class Value>
ZOR_ALWAYS_INLINE void ForEachValue(const std::uint8_t* plan, Value value) noexcept {
  const auto& list = *reinterpret_cast<const AreaList*>(plan);
  const auto* entries = reinterpret_cast<const AreaEntry*>(plan + sizeof(AreaList));
  for (std::int32_t i = 0; i < list.count; i += 2) {
    const double share = entries[i].weight;
    for (std::int32_t byte = 0; byte < 2; ++byte) {
      const std::int32_t left = entries[i].source + byte;
      const std::int32_t right = entries[i + 1].source + byte;
      value(i + byte,
            [=](const std::uint8_t* row) { return row[left] - (row[left] - row[right]) * share; });
    }
  }
}

ZOR_ALWAYS_INLINE std::uint8_t Between(double upper, double lower, double share) noexcept {
  const double top = static_cast<float>(upper);
  return static_cast<std::uint8_t>(static_cast<std::int32_t>(top - (top - lower) * share));
}

void Row(std::uint8_t* out, const std::uint8_t* upper, const std::uint8_t* lower, double share,
         const std::uint8_t* plan) noexcept {
  ForEachValue(plan, [=](std::int32_t i, auto across) {
    out[i] = Between(across(upper), across(lower), share);
  });
}

void Across(double* out, const std::uint8_t* row, const std::uint8_t* plan) noexcept {
  ForEachValue(plan, [=](std::int32_t i, auto across) { out[i] = across(row); });
}

void Down(std::uint8_t* out, const double* upper, const double* lower, double share,
          const std::uint8_t* plan) noexcept {
  const std::int32_t values = reinterpret_cast<const AreaList*>(plan)->values;
  for (std::int32_t i = 0; i < values; ++i) out[i] = Between(upper[i], lower[i], share);
}

}  // namespace

const PackedRowForm kPackedRowsPlain = {"plain", PlanBytes, Plan, Row, Across, Down};

}  // namespace zor
