// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <emmintrin.h>

#include <cstring>

#include "scale/area_rows_vector.h"

namespace zor {
namespace {

/// Four values. Their bytes are loaded one by one: SSE2 can't shuffle bytes.
struct Four {
  static constexpr std::int32_t kLanes = 4;
  using Floats = __m128;

  struct Tap {
    std::int32_t offset[kLanes];
    float weight[kLanes];
  };

  static ZOR_ALWAYS_INLINE Floats Set(float value) noexcept { return _mm_set1_ps(value); }
  static ZOR_ALWAYS_INLINE Floats Load(const float* from) noexcept { return _mm_load_ps(from); }
  static ZOR_ALWAYS_INLINE void Store(float* to, Floats v) noexcept { _mm_store_ps(to, v); }
  static ZOR_ALWAYS_INLINE Floats Add(Floats a, Floats b) noexcept { return _mm_add_ps(a, b); }
  static ZOR_ALWAYS_INLINE Floats Mul(Floats a, Floats b) noexcept { return _mm_mul_ps(a, b); }

  struct Group {
    ZOR_ALWAYS_INLINE Group(const std::uint8_t* record, const std::int32_t*,
                            std::int64_t taps) noexcept
        : first(reinterpret_cast<const Tap*>(record)), end(first + taps) {}

    ZOR_ALWAYS_INLINE Floats Sum(const std::uint8_t* row) const noexcept {
      Floats sum = Set(0.0f);
      for (const Tap* tap = first; tap != end; ++tap) {
        const std::int32_t* o = tap->offset;
        const __m128i bytes = _mm_set_epi32(row[o[3]], row[o[2]], row[o[1]], row[o[0]]);
        sum = Add(sum, Mul(_mm_cvtepi32_ps(bytes), Load(tap->weight)));
      }
      return sum;
    }

    const Tap* first;
    const Tap* end;
  };

  static ZOR_ALWAYS_INLINE void StoreLowBytes(std::uint8_t* out, std::int64_t count,
                                              Floats sums) noexcept {
    __m128i bytes = _mm_and_si128(_mm_cvttps_epi32(sums), _mm_set1_epi32(0xFF));
    bytes = _mm_packs_epi32(bytes, bytes);
    const int word = _mm_cvtsi128_si32(_mm_packus_epi16(bytes, bytes));
    if (count == kLanes) {
      std::memcpy(out, &word, kLanes);
    } else {
      std::memcpy(out, &word, static_cast<std::size_t>(count));
    }
  }
};

AreaPlanHead HeadOf(const AreaList& list) noexcept {
  const std::int64_t taps = MostAreaTaps(list);
  return {(std::int64_t{list.values} + Four::kLanes - 1) / Four::kLanes,
          taps,
          list.values,
          taps * static_cast<std::int64_t>(sizeof(Four::Tap)),
          0,
          sizeof(AreaPlanHead),
          0};
}

std::uint64_t PlanBytes(const AreaList& list) noexcept {
  return AreaPlanBytes(HeadOf(list), list);
}

bool Plan(const AreaList& list, std::uint8_t* plan) noexcept {
  const AreaPlanHead head = HeadOf(list);
  std::memcpy(plan, &head, sizeof(head));
  auto* taps = reinterpret_cast<Four::Tap*>(plan + sizeof(head));
  AreaTapFinder finder(list);
  for (std::int64_t v = 0; v < Four::kLanes * head.groups; ++v) {
    const AreaTaps own = finder.Of(static_cast<std::int32_t>(v));
    for (std::int32_t t = 0; t < head.taps; ++t) {
      Four::Tap& tap = taps[v / Four::kLanes * head.taps + t];
      tap.offset[v % Four::kLanes] = finder.Offset(own, t);
      tap.weight[v % Four::kLanes] = finder.Weight(own, t);
    }
  }
  return true;
}

void Rows(const AreaTargetRow* targets, std::int32_t count, float* b,
          const std::uint8_t* plan) noexcept {
  AreaVectorRows<Four>(targets, count, b, plan);
}

}  // namespace

const AreaRowForm kAreaRowsSse2 = {"sse2", PlanBytes, Plan, Rows};

}  // namespace zor
