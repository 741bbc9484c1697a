// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <cstring>

#include "scale/gray_rows.h"
#include "scale/lerp.h"

namespace zor {
namespace {

/// The plan of the plain form: the columns themselves, offsets first, then weights.
struct PlanHead {
  std::int64_t count;
};

std::uint64_t PlanBytes(const GrayColumns& columns) noexcept {
  return sizeof(PlanHead) + 5 * static_cast<std::uint64_t>(columns.count);
}

const std::int32_t* Offsets(const std::uint8_t* plan) noexcept {
  return reinterpret_cast<const std::int32_t*>(plan + sizeof(PlanHead));
}

std::int64_t Count(const std::uint8_t* plan) noexcept {
  return reinterpret_cast<const PlanHead*>(plan)->count;
}

void PlanPick(const GrayColumns& columns, std::uint8_t* plan) noexcept {
  const auto count = static_cast<std::size_t>(columns.count);
  const PlanHead head{columns.count};
  std::memcpy(plan, &head, sizeof(head));
  std::memcpy(plan + sizeof(head), columns.offsets, 4 * count);
}

void PlanLerp(const GrayColumns& columns, std::uint8_t* plan) noexcept {
  const auto count = static_cast<std::size_t>(columns.count);
  PlanPick(columns, plan);
  std::memcpy(plan + sizeof(PlanHead) + 4 * count, columns.weights, count);
}

void Pick(std::uint8_t* out, const std::uint8_t* row, const std::uint8_t* plan) noexcept {
  const std::int64_t count = Count(plan);
  const std::int32_t* offsets = Offsets(plan);
  for (std::int64_t i = 0; i < count; ++i) out[i] = row[offsets[i]];
}

void Across(std::uint8_t* out, const std::uint8_t* row, const std::uint8_t* plan) noexcept {
  const std::int64_t count = Count(plan);
  const std::int32_t* offsets = Offsets(plan);
  const auto* weights = reinterpret_cast<const std::uint8_t*>(offsets + count);
  for (std::int64_t i = 0; i < count; ++i) {
    const std::uint8_t* p = row + offsets[i];
    out[i] = static_cast<std::uint8_t>(Lerp(p[0], p[1], weights[i]));
  }
}

void Both(std::uint8_t* out, const std::uint8_t* row, const std::uint8_t* nextRow,
          const std::uint8_t* plan, std::int32_t weight) noexcept {
  const std::int64_t count = Count(plan);
  const std::int32_t* offsets = Offsets(plan);
  const auto* weights = reinterpret_cast<const std::uint8_t*>(offsets + count);
  for (std::int64_t i = 0; i < count; ++i) {
    const std::uint8_t* p = row + offsets[i];
    const std::uint8_t* s = nextRow + offsets[i];
    out[i] = static_cast<std::uint8_t>(
        Lerp(Lerp(p[0], p[1], weights[i]), Lerp(s[0], s[1], weights[i]), weight));
  }
}

void Down(std::uint8_t* out, const std::uint8_t* a, const std::uint8_t* b, std::int32_t weight,
          std::int32_t count) noexcept {
  for (std::int32_t i = 0; i < count; ++i) {
    out[i] = static_cast<std::uint8_t>(Lerp(a[i], b[i], weight));
  }
}

}  // namespace

const GrayRowForm kGrayRowsPlain = {
    "plain", {PlanBytes, PlanPick, Pick}, {PlanBytes, PlanLerp, Across, Both}, Down};

}  // namespace zor
