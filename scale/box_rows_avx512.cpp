// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <immintrin.h>

#include "scale/box_rows_vector.h"

namespace zor {
namespace {

// Boxes of one to four pixels that come in turn are picked from the sums of columns: 64 lanes hold
// the pixels of four boxes, wherever each of them starts.

constexpr std::uint32_t kMostPicked = 4;
constexpr std::int32_t kGroupBoxes = 4;

/// Four boxes.
struct alignas(64) BoxGroup {
  std::uint8_t lanes[2][32];  // of the boxes' first pixels, then second ones | third, then fourth
  std::uint32_t has[2];       // which of these lanes there are
  std::int32_t start;         // the window's first lane, from the run's first one
};

bool IsPicked(const BoxRun& run) noexcept {
  return !AveragesAlike(run) && run.inTurn >= 2 * kGroupBoxes && run.least < kMostPicked;
}

std::uint64_t PlanBytes(const BoxRun& run) noexcept {
  if (!IsPicked(run)) return 0;
  return sizeof(BoxGroup) * static_cast<std::uint64_t>(run.inTurn / kGroupBoxes);
}

void Plan(const BoxRun& run, std::uint8_t* plan) noexcept {
  auto* group = reinterpret_cast<BoxGroup*>(plan);
  for (std::int32_t i = 0; i + kGroupBoxes <= run.inTurn; i += kGroupBoxes, ++group) {
    group->start = static_cast<std::int32_t>(run.offsets[i] - run.first);
    group->has[0] = group->has[1] = 0;
    for (std::int32_t lane = 0; lane < 64; ++lane) {
      const std::int32_t box = i + lane / 4 % kGroupBoxes;
      const auto pixel = static_cast<std::uint32_t>(lane / 16);
      const bool has = pixel < run.counts[box];
      const std::int32_t at = run.offsets[box] - run.offsets[i] +
                              static_cast<std::int32_t>(pixel) * run.pixelBytes + lane % 4;
      group->lanes[lane / 32][lane % 32] = static_cast<std::uint8_t>(has ? at : 0);
      if (has) group->has[lane / 32] |= 1u << lane % 32;
    }
  }
}

/// The sequences of two sizes, lane by lane. A sequence that is at its end goes on with shifts that
/// leave nothing, and steps that leave nothing of the largest sums aren't made.
struct TwoReductions {
  __m512i shifts[2][6];
  __m512i finalShifts[2];
  int steps = 0;

  ZOR_ALWAYS_INLINE TwoReductions(const BoxRow& row, std::uint32_t least) {
    for (int which = 0; which < 2; ++which) {
      const std::uint32_t columns = least + static_cast<std::uint32_t>(which);
      const BoxReduction& reduction = row.reductions[columns];
      std::uint32_t largest = 255 * columns * static_cast<std::uint32_t>(row.rows);
      for (int k = 0; k < 6; ++k) {
        const int shift = reduction.shifts[k];
        largest >>= shift;
        if (shift != 0 && largest != 0 && steps <= k) steps = k + 1;
        shifts[which][k] = _mm512_set1_epi16(static_cast<short>(shift != 0 ? shift : 16));
      }
      finalShifts[which] = _mm512_set1_epi16(reduction.finalShift);
    }
  }
};

struct Avx512 {
  using V = __m512i;
  static constexpr std::int32_t kLanes = 32;

  static ZOR_ALWAYS_INLINE V Widen(const std::uint8_t* p) {
    return _mm512_cvtepu8_epi16(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)));
  }
  static ZOR_ALWAYS_INLINE V Load(const std::uint16_t* p) { return _mm512_loadu_si512(p); }
  static ZOR_ALWAYS_INLINE void Store(std::uint16_t* p, V v) { _mm512_storeu_si512(p, v); }
  static ZOR_ALWAYS_INLINE V Add(V a, V b) { return _mm512_add_epi16(a, b); }
  static ZOR_ALWAYS_INLINE V Shift(V v, int count) {
    return _mm512_srl_epi16(v, _mm_cvtsi32_si128(count));
  }
  static ZOR_ALWAYS_INLINE void StoreBytes(std::uint8_t* p, V v) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), _mm512_cvtusepi16_epi8(v));
  }
  static ZOR_ALWAYS_INLINE void StoreBytes(std::uint8_t* p, V a, V b) {
    const V packed = _mm512_packus_epi16(a, b);  // a0 b0 | a1 b1 | a2 b2 | a3 b3
    _mm512_storeu_si512(
        p, _mm512_permutexvar_epi64(_mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), packed));
  }
  static ZOR_ALWAYS_INLINE V AddPixels(V a, V b) {
    // a01 b01 | a23 b23 | a45 b45 | a67 b67 -> the a in front of the b
    const V sums = _mm512_add_epi16(_mm512_unpacklo_epi64(a, b), _mm512_unpackhi_epi64(a, b));
    return _mm512_permutexvar_epi64(_mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), sums);
  }
  static ZOR_ALWAYS_INLINE __mmask8 Sized(const std::uint32_t* counts, std::uint32_t size) {
    return _mm256_cmpeq_epi32_mask(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(counts)),
                                   _mm256_set1_epi32(static_cast<int>(size)));
  }
  static ZOR_ALWAYS_INLINE V Select(__mmask8 which, V a, V b) {
    return _mm512_mask_mov_epi64(a, which, b);
  }
  static ZOR_ALWAYS_INLINE std::int32_t InTurn(std::uint8_t* out, const BoxRow& row,
                                               const BoxRun& run, const std::uint16_t* sums) {
    if (run.plan == nullptr) return 0;
    const TwoReductions both(row, run.least);
    switch (both.steps) {
      case 0:
        return InTurnOf<0>(out, both, run, sums);
      case 1:
      case 2:
      case 3:
        return InTurnOf<3>(out, both, run, sums);
      case 4:
      case 5:
        return InTurnOf<5>(out, both, run, sums);
      default:
        return InTurnOf<6>(out, both, run, sums);
    }
  }
  template <int kBytes>
  static ZOR_ALWAYS_INLINE V Pairs(const std::uint8_t* p) {
    // Of each pair of pixels the bytes side by side, then added.
    const V bytes = _mm512_loadu_si512(p);
    if (kBytes == 4) {
      const V order = _mm512_broadcast_i32x4(
          _mm_setr_epi8(0, 4, 1, 5, 2, 6, 3, 7, 8, 12, 9, 13, 10, 14, 11, 15));
      return _mm512_maddubs_epi16(_mm512_shuffle_epi8(bytes, order), _mm512_set1_epi8(1));
    }
    // Each quarter takes four pixels, 12 bytes on from the one before.
    const V quarters = _mm512_permutexvar_epi32(
        _mm512_setr_epi32(0, 1, 2, 3, 3, 4, 5, 6, 6, 7, 8, 9, 9, 10, 11, 12), bytes);
    const V order =
        _mm512_broadcast_i32x4(_mm_setr_epi8(0, 3, 1, 4, 2, 5, 3, 6, 6, 9, 7, 10, 8, 11, 9, 12));
    return _mm512_maddubs_epi16(_mm512_shuffle_epi8(quarters, order), _mm512_set1_epi8(1));
  }

 private:
  /// Sums of four boxes' odd pixels, then of their even ones.
  static ZOR_ALWAYS_INLINE V SumGroup(const std::uint16_t* sums, const BoxGroup& group) {
    const V low = Load(sums + group.start);
    const V high = Load(sums + group.start + kLanes);
    return Add(_mm512_maskz_permutex2var_epi16(group.has[0], low, Widen(group.lanes[0]), high),
               _mm512_maskz_permutex2var_epi16(group.has[1], low, Widen(group.lanes[1]), high));
  }

  /// Boxes of at most four pixels across and 16 down are never halved first.
  template <int kSteps>
  static ZOR_ALWAYS_INLINE std::int32_t InTurnOf(std::uint8_t* out, const TwoReductions& both,
                                                 const BoxRun& run, const std::uint16_t* sums) {
    const auto* group = reinterpret_cast<const BoxGroup*>(run.plan);
    std::int32_t i = 0;
    for (; i + 2 * kGroupBoxes <= run.inTurn; i += 2 * kGroupBoxes, group += 2) {
      const V a = SumGroup(sums, group[0]);
      const V b = SumGroup(sums, group[1]);
      V term = Add(_mm512_shuffle_i64x2(a, b, 0x44), _mm512_shuffle_i64x2(a, b, 0xEE));
      V total = term;
      const __mmask8 more = Sized(run.counts + i, run.least + 1);
#pragma GCC unroll 6
      for (int k = 0; k < kSteps; ++k) {
        term = _mm512_srlv_epi16(term, Select(more, both.shifts[0][k], both.shifts[1][k]));
        total = Add(total, term);
      }
      StoreBytes(out + 4 * i,
                 _mm512_srlv_epi16(total, Select(more, both.finalShifts[0], both.finalShifts[1])));
    }
    return i;
  }
};

void Row(std::uint8_t* out, const BoxRow& row, const BoxRun& run,
         const BoxScratch& scratch) noexcept {
  AverageRow<Avx512>(out, row, run, scratch);
}

void Columns(std::uint16_t* sums, const BoxRow& row, const BoxRun& run) noexcept {
  SumColumns<Avx512>(sums, row, run);
}

}  // namespace

const BoxRowForm kBoxRowsAvx512 = {PlanBytes, Plan, Row, Columns};

}  // namespace zor
