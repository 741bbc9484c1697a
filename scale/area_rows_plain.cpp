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

void Plan(const AreaList& list, std::uint8_t* plan) noexcept {
  std::memcpy(plan, &list, sizeof(list));
  std::memcpy(plan + sizeof(list), list.entries,
              sizeof(AreaEntry) * static_cast<std::size_t>(list.count));
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

ZOR_ALWAYS_INLINE std::uint8_t LowByte(float sum) noexcept {
  return static_cast<std::uint8_t>(static_cast<std::int32_t>(sum));
}

void Gather(float* b, const std::uint8_t* row, const std::uint8_t* plan) noexcept {
  ForEachValue(row, plan, [=](std::int32_t v, float a) { b[v] += a; });
}

void Finish(std::uint8_t* out, float* b, const std::uint8_t* row,
            const std::uint8_t* plan) noexcept {
  ForEachValue(row, plan, [=](std::int32_t v, float a) {
    out[v] = LowByte(a + b[v] + 0.5f);
    b[v] = 0;
  });
}

void Split(std::uint8_t* out, float* b, const std::uint8_t* row, const std::uint8_t* plan,
           float share) noexcept {
  const float rest = 1.0f - share;
  ForEachValue(row, plan, [=](std::int32_t v, float a) {
    out[v] = LowByte(a * rest + b[v] + 0.5f);
    b[v] = a * share;
  });
}

}  // namespace

const AreaRowForm kAreaRowsPlain = {"plain", PlanBytes, Plan, Gather, Finish, Split};

}  // namespace zor
