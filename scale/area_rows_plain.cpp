// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <cstring>

#include "platform/compiler.h"
#include "scale/area_rows.h"

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

/// Calls store(v, A[v]) for every value of the row.
template <class Store>
ZOR_ALWAYS_INLINE void ForEachValue(const std::uint8_t* row, const std::uint8_t* plan,
                                    Store store) noexcept {
  const auto& list = *reinterpret_cast<const AreaList*>(plan);
  const auto* entry = reinterpret_cast<const AreaEntry*>(plan + sizeof(AreaList));
  const AreaEntry* const end = entry + list.count;
  for (std::int32_t value = 0; value < list.values; value += list.channels) {
    float sums[4] = {0, 0, 0, 0};
    for (; entry != end && entry->value == value; ++entry) {
      for (std::int32_t c = 0; c < list.channels; ++c) {
        sums[c] += static_cast<float>(row[entry->source + c]) * entry->weight;
      }
    }
    for (std::int32_t c = 0; c < list.channels; ++c) store(value + c, sums[c]);
  }
}

void Row(const AreaTargetRow& target, float* b, const std::uint8_t* plan) noexcept {
  const std::int32_t last = target.count - 1;
  for (std::int32_t y = 0; y < last; ++y) {
    ForEachValue(target.rows[y], plan, [=](std::int32_t v, float a) { b[v] += a; });
  }
  ForEachValue(target.rows[last], plan, [=, &target](std::int32_t v, float a) {
    const float sum = a * target.rest + b[v] + 0.5f;
    target.out[v] = static_cast<std::uint8_t>(static_cast<std::int32_t>(sum));
    b[v] = a * target.share;
  });
}

void Rows(const AreaTargetRow* targets, std::int32_t count, float* b,
          const std::uint8_t* plan) noexcept {
  for (std::int32_t i = 0; i < count; ++i) Row(targets[i], b, plan);
}

}  // namespace

const AreaRowForm kAreaRowsPlain = {"plain", PlanBytes, Plan, Rows};

}  // namespace zor
