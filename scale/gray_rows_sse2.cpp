// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <emmintrin.h>

#include <cstring>

#include "platform/compiler.h"
#include "scale/gray_rows.h"
#include "scale/lerp.h"

namespace zor {
namespace {

/// Eight columns. A column's two pixels stand side by side in the row, so one 16-bit load brings
/// both; the weights stand ready in 16-bit lanes.
struct Group {
  std::int32_t offsets[8];
  std::uint16_t weights[8];
};

struct PlanHead {
  std::int64_t count;
  std::int64_t groups;
};

std::int64_t GroupsOf(std::int32_t count) noexcept {
  return (std::int64_t{count} + 7) / 8;
}

std::uint64_t LerpPlanBytes(const GrayColumns& columns) noexcept {
  return sizeof(PlanHead) + sizeof(Group) * static_cast<std::uint64_t>(GroupsOf(columns.count));
}

void PlanLerp(const GrayColumns& columns, std::uint8_t* plan) noexcept {
  const PlanHead head{columns.count, GroupsOf(columns.count)};
  std::memcpy(plan, &head, sizeof(head));
  auto* groups = reinterpret_cast<Group*>(plan + sizeof(head));
  for (std::int64_t i = 0; i < 8 * head.groups; ++i) {
    const std::int64_t column = i < head.count ? i : head.count - 1;
    groups[i / 8].offsets[i % 8] = columns.offsets[column];
    groups[i / 8].weights[i % 8] = columns.weights[column];
  }
}

/// lerp in 16-bit lanes: (a << 8) + (b - a) * w stays below 65536, so nothing is lost in between.
ZOR_ALWAYS_INLINE __m128i LerpLanes(__m128i a, __m128i b, __m128i w) noexcept {
  const __m128i product = _mm_mullo_epi16(_mm_sub_epi16(b, a), w);
  return _mm_srli_epi16(_mm_add_epi16(_mm_slli_epi16(a, 8), product), 8);
}

ZOR_ALWAYS_INLINE std::int16_t Pair(const std::uint8_t* row, std::int32_t offset) noexcept {
  std::int16_t pair;
  std::memcpy(&pair, row + offset, 2);
  return pair;
}

/// Eight columns of a row, interpolated across, in 16-bit lanes.
ZOR_ALWAYS_INLINE __m128i AcrossLanes(const std::uint8_t* row, const Group& group) noexcept {
  const std::int32_t* o = group.offsets;
  const __m128i pairs =
      _mm_set_epi16(Pair(row, o[7]), Pair(row, o[6]), Pair(row, o[5]), Pair(row, o[4]),
                    Pair(row, o[3]), Pair(row, o[2]), Pair(row, o[1]), Pair(row, o[0]));
  const __m128i p = _mm_and_si128(pairs, _mm_set1_epi16(0xFF));
  const __m128i q = _mm_srli_epi16(pairs, 8);
  return LerpLanes(p, q, _mm_loadu_si128(reinterpret_cast<const __m128i*>(group.weights)));
}

/// Runs eightColumns(group) over the plan and stores what it gives, the last group only as far as
/// the run goes.
template <class EightColumns>
ZOR_ALWAYS_INLINE void ForEachGroup(std::uint8_t* out, const std::uint8_t* plan,
                                    EightColumns eightColumns) noexcept {
  PlanHead head;
  std::memcpy(&head, plan, sizeof(head));
  const auto* groups = reinterpret_cast<const Group*>(plan + sizeof(head));
  const std::int64_t whole = head.count / 8;
  for (std::int64_t g = 0; g < whole; ++g) {
    const __m128i lanes = eightColumns(groups[g]);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out + 8 * g), _mm_packus_epi16(lanes, lanes));
  }
  if (whole < head.groups) {
    const __m128i lanes = eightColumns(groups[whole]);
    std::uint8_t bytes[16];
    _mm_storeu_si128(reinterpret_cast<__m128i*>(bytes), _mm_packus_epi16(lanes, lanes));
    std::memcpy(out + 8 * whole, bytes, static_cast<std::size_t>(head.count - 8 * whole));
  }
}

void Across(std::uint8_t* out, const std::uint8_t* row, const std::uint8_t* plan) noexcept {
  ForEachGroup(out, plan, [=](const Group& group) { return AcrossLanes(row, group); });
}

void Both(std::uint8_t* out, const std::uint8_t* row, const std::uint8_t* nextRow,
          const std::uint8_t* plan, std::int32_t weight) noexcept {
  const __m128i w = _mm_set1_epi16(static_cast<std::int16_t>(weight));
  ForEachGroup(out, plan, [=](const Group& group) {
    return LerpLanes(AcrossLanes(row, group), AcrossLanes(nextRow, group), w);
  });
}

void Down(std::uint8_t* out, const std::uint8_t* a, const std::uint8_t* b, std::int32_t weight,
          std::int32_t count) noexcept {
  const __m128i w = _mm_set1_epi16(static_cast<std::int16_t>(weight));
  const __m128i zero = _mm_setzero_si128();
  std::int32_t i = 0;
  for (; i + 16 <= count; i += 16) {
    const __m128i x = _mm_loadu_si128(reinterpret_cast<const __m128i*>(a + i));
    const __m128i y = _mm_loadu_si128(reinterpret_cast<const __m128i*>(b + i));
    const __m128i low = LerpLanes(_mm_unpacklo_epi8(x, zero), _mm_unpacklo_epi8(y, zero), w);
    const __m128i high = LerpLanes(_mm_unpackhi_epi8(x, zero), _mm_unpackhi_epi8(y, zero), w);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), _mm_packus_epi16(low, high));
  }
  for (; i < count; ++i) out[i] = static_cast<std::uint8_t>(Lerp(a[i], b[i], weight));
}

/// Picking needs bytes from anywhere, for which SSE2 has no instruction; the plain form takes over.
std::uint64_t NoPickPlan(const GrayColumns&) noexcept {
  return 0;
}

}  // namespace

const GrayRowForm kGrayRowsSse2 = {
    "sse2", {NoPickPlan, nullptr, nullptr}, {LerpPlanBytes, PlanLerp, Across, Both}, Down};

}  // namespace zor
