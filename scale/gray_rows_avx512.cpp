// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <immintrin.h>

#include <cstring>

#include "platform/compiler.h"
#include "scale/gray_rows.h"
#include "scale/lerp.h"

namespace zor {
namespace {

// One permute brings 32 columns' pairs, or 64 columns' picks, from a window of 64 or 128 source
// bytes. Pixels are carried as p - 128: multiply-and-add of the weights (256 - w, w) with the pairs
// gives lerp * 256 - 32768, whose high byte is the result less 128. A weight of 0, for which 256
// doesn't fit a byte, is turned into a 1 that meets the same pixel twice.

constexpr std::int32_t kBlockColumns = 64;

struct alignas(64) PlanHead {
  std::int64_t count;
  std::int64_t blocks;
  std::int64_t registers;  // of a window: 1, 2 or 4
};

/// 32 columns.
struct alignas(64) LerpHalf {
  std::uint8_t index[64];   // p0 q0 p1 q1 ..
  std::uint8_t weight[64];  // (256 - w, w) likewise
};
struct alignas(64) LerpBlock {
  LerpHalf half[2];
};
struct alignas(64) PickBlock {
  std::uint8_t index[64];
};

ZOR_ALWAYS_INLINE std::int64_t BlocksOf(std::int64_t count) noexcept {
  return (count + kBlockColumns - 1) / kBlockColumns;
}

/// Columns behind the last one repeat it.
ZOR_ALWAYS_INLINE std::int64_t Held(const GrayColumns& columns, std::int64_t column) noexcept {
  return column < columns.count ? column : columns.count - 1;
}

/// A window starts at its first column, or earlier so that it ends with the row.
ZOR_ALWAYS_INLINE std::int32_t BaseAt(const GrayColumns& columns, std::int64_t column,
                                      std::int64_t registers) noexcept {
  const std::int32_t first = columns.offsets[Held(columns, column)];
  const auto latest = static_cast<std::int32_t>(columns.sourceWidth - 64 * registers);
  return first < latest ? first : latest;
}

/// @return how many registers a window needs for every run of @p together columns and @p extra
///         bytes behind it, or 0 if @p most don't do.
ZOR_ALWAYS_INLINE std::int64_t RegistersFor(const GrayColumns& columns, std::int32_t together,
                                            std::int32_t extra, std::int64_t most) noexcept {
  for (std::int64_t registers = 1; registers <= most; registers *= 2) {
    if (columns.sourceWidth < 64 * registers) return 0;
    bool reaches = true;
    for (std::int64_t column = 0; column < columns.count && reaches; column += together) {
      const std::int32_t last = columns.offsets[Held(columns, column + together - 1)] + extra;
      reaches = last - BaseAt(columns, column, registers) < 64 * registers;
    }
    if (reaches) return registers;
  }
  return 0;
}

/// Sizes of a plan: head, blocks, one word per window for where it starts.
template <class Block>
ZOR_ALWAYS_INLINE std::uint64_t PlanBytes(const GrayColumns& columns, std::int64_t registers,
                                          std::int64_t windows) noexcept {
  if (registers == 0) return 0;
  const auto blocks = static_cast<std::uint64_t>(BlocksOf(columns.count));
  return sizeof(PlanHead) + blocks * (sizeof(Block) + 4 * static_cast<std::uint64_t>(windows));
}

/// The parts of a plan.
template <class Block>
struct PlanView {
  explicit ZOR_ALWAYS_INLINE PlanView(const std::uint8_t* plan) noexcept
      : head(reinterpret_cast<const PlanHead*>(plan)),
        blocks(reinterpret_cast<const Block*>(plan + sizeof(PlanHead))),
        bases(reinterpret_cast<const std::int32_t*>(blocks + head->blocks)) {}
  const PlanHead* head;
  const Block* blocks;
  const std::int32_t* bases;
};

constexpr std::int64_t kMostLerpRegisters = 2;
constexpr std::int64_t kMostPickRegisters = 4;

std::uint64_t LerpPlanBytes(const GrayColumns& columns) noexcept {
  return PlanBytes<LerpBlock>(columns, RegistersFor(columns, 32, 1, kMostLerpRegisters), 2);
}

std::uint64_t PickPlanBytes(const GrayColumns& columns) noexcept {
  return PlanBytes<PickBlock>(columns, RegistersFor(columns, 64, 0, kMostPickRegisters), 1);
}

void PlanLerp(const GrayColumns& columns, std::uint8_t* plan) noexcept {
  const PlanHead head{columns.count, BlocksOf(columns.count),
                      RegistersFor(columns, 32, 1, kMostLerpRegisters)};
  std::memcpy(plan, &head, sizeof(head));
  auto* halves = reinterpret_cast<LerpHalf*>(plan + sizeof(head));
  auto* bases = reinterpret_cast<std::int32_t*>(halves + 2 * head.blocks);
  for (std::int64_t h = 0; h < 2 * head.blocks; ++h) {
    bases[h] = BaseAt(columns, 32 * h, head.registers);
    for (std::int64_t i = 0; i < 32; ++i) {
      const std::int64_t column = Held(columns, 32 * h + i);
      const std::int32_t offset = columns.offsets[column] - bases[h];
      const std::int32_t weight = columns.weights[column];
      const std::int32_t share = weight == 0 ? 1 : weight;
      halves[h].index[2 * i] = static_cast<std::uint8_t>(offset);
      halves[h].index[2 * i + 1] = static_cast<std::uint8_t>(weight == 0 ? offset : offset + 1);
      halves[h].weight[2 * i] = static_cast<std::uint8_t>(256 - share);
      halves[h].weight[2 * i + 1] = static_cast<std::uint8_t>(share);
    }
  }
}

void PlanPick(const GrayColumns& columns, std::uint8_t* plan) noexcept {
  const PlanHead head{columns.count, BlocksOf(columns.count),
                      RegistersFor(columns, 64, 0, kMostPickRegisters)};
  std::memcpy(plan, &head, sizeof(head));
  auto* blocks = reinterpret_cast<PickBlock*>(plan + sizeof(head));
  auto* bases = reinterpret_cast<std::int32_t*>(blocks + head.blocks);
  for (std::int64_t b = 0; b < head.blocks; ++b) {
    bases[b] = BaseAt(columns, 64 * b, head.registers);
    for (std::int64_t i = 0; i < 64; ++i) {
      const std::int64_t column = Held(columns, 64 * b + i);
      blocks[b].index[i] = static_cast<std::uint8_t>(columns.offsets[column] - bases[b]);
    }
  }
}

ZOR_ALWAYS_INLINE __m512i Load(const void* bytes) noexcept {
  return _mm512_loadu_si512(bytes);
}

ZOR_ALWAYS_INLINE __m512i Flip(__m512i pixels) noexcept {
  return _mm512_xor_si512(pixels, _mm512_set1_epi8(static_cast<char>(0x80)));
}

/// 64 bytes picked from a window.
template <std::int64_t kRegisters>
ZOR_ALWAYS_INLINE __m512i Permute(const std::uint8_t* window, __m512i index) noexcept {
  if constexpr (kRegisters == 1) {
    return _mm512_permutexvar_epi8(index, Load(window));
  } else if constexpr (kRegisters == 2) {
    return _mm512_permutex2var_epi8(Load(window), index, Load(window + 64));
  } else {
    const __m512i low = _mm512_permutex2var_epi8(Load(window), index, Load(window + 64));
    const __m512i high = _mm512_permutex2var_epi8(Load(window + 128), index, Load(window + 192));
    return _mm512_mask_mov_epi8(low, _mm512_movepi8_mask(index), high);
  }
}

/// 32 columns, interpolated across: the result less 128 in the high byte of each lane.
template <std::int64_t kRegisters>
ZOR_ALWAYS_INLINE __m512i AcrossLanes(const std::uint8_t* window, const LerpHalf& half) noexcept {
  return _mm512_maddubs_epi16(Load(half.weight),
                              Flip(Permute<kRegisters>(window, Load(half.index))));
}

/// The odd bytes of a and b, as bytes of a and of b: what the lanes' high bytes hold.
ZOR_ALWAYS_INLINE __m512i HighByteIndex() noexcept {
  const __m512i lanes = _mm512_set_epi64(0x0F0D0B0907050301, 0x0F0D0B0907050301, 0x0F0D0B0907050301,
                                         0x0F0D0B0907050301, 0x0F0D0B0907050301, 0x0F0D0B0907050301,
                                         0x0F0D0B0907050301, 0x0F0D0B0907050301);
  const __m512i start = _mm512_set_epi64(0x7070707070707070, 0x6060606060606060, 0x5050505050505050,
                                         0x4040404040404040, 0x3030303030303030, 0x2020202020202020,
                                         0x1010101010101010, 0);
  return _mm512_add_epi8(lanes, start);
}

ZOR_ALWAYS_INLINE __m512i PackHighBytes(__m512i low, __m512i high) noexcept {
  return Flip(_mm512_permutex2var_epi8(low, HighByteIndex(), high));
}

/// Lanes of (high byte of a, high byte of b) times (256 - w, w).
ZOR_ALWAYS_INLINE __m512i LerpHighBytes(__m512i a, __m512i b, __m512i weights) noexcept {
  // Bits of b where the mask is set, else of a shifted down.
  const __m512i pairs = _mm512_ternarylogic_epi32(
      _mm512_srli_epi16(a, 8), b, _mm512_set1_epi16(static_cast<short>(0xFF00)), 0xD8);
  return _mm512_maddubs_epi16(weights, pairs);
}

ZOR_ALWAYS_INLINE __m512i WeightPairs(std::int32_t weight) noexcept {
  return _mm512_set1_epi16(static_cast<short>((weight << 8) | (256 - weight)));
}

ZOR_ALWAYS_INLINE __mmask64 MaskOf(std::int64_t count) noexcept {
  return ~__mmask64{0} >> (64 - count);
}

/// Stores columns(b) for every block; of the last one only what belongs to the run.
template <class Columns>
ZOR_ALWAYS_INLINE void ForEachBlock(std::uint8_t* out, std::int64_t count,
                                    Columns columns) noexcept {
  const std::int64_t whole = count / kBlockColumns;
  for (std::int64_t b = 0; b < whole; ++b) {
    _mm512_storeu_si512(out + kBlockColumns * b, columns(b));
  }
  const std::int64_t rest = count - kBlockColumns * whole;
  if (rest > 0) {
    _mm512_mask_storeu_epi8(out + kBlockColumns * whole, MaskOf(rest), columns(whole));
  }
}

template <std::int64_t kRegisters>
ZOR_ALWAYS_INLINE void PickFrom(std::uint8_t* out, const std::uint8_t* row,
                                const PlanView<PickBlock>& plan) noexcept {
  ForEachBlock(out, plan.head->count, [&](std::int64_t b) {
    return Permute<kRegisters>(row + plan.bases[b], Load(plan.blocks[b].index));
  });
}

void Pick(std::uint8_t* out, const std::uint8_t* row, const std::uint8_t* bytes) noexcept {
  const PlanView<PickBlock> plan(bytes);
  switch (plan.head->registers) {
    case 1:
      return PickFrom<1>(out, row, plan);
    case 2:
      return PickFrom<2>(out, row, plan);
    default:
      return PickFrom<4>(out, row, plan);
  }
}

template <std::int64_t kRegisters>
ZOR_ALWAYS_INLINE void AcrossFrom(std::uint8_t* out, const std::uint8_t* row,
                                  const PlanView<LerpBlock>& plan) noexcept {
  ForEachBlock(out, plan.head->count, [&](std::int64_t b) {
    const LerpBlock& block = plan.blocks[b];
    const std::int32_t* base = plan.bases + 2 * b;
    return PackHighBytes(AcrossLanes<kRegisters>(row + base[0], block.half[0]),
                         AcrossLanes<kRegisters>(row + base[1], block.half[1]));
  });
}

void Across(std::uint8_t* out, const std::uint8_t* row, const std::uint8_t* bytes) noexcept {
  const PlanView<LerpBlock> plan(bytes);
  if (plan.head->registers == 1) return AcrossFrom<1>(out, row, plan);
  AcrossFrom<2>(out, row, plan);
}

template <std::int64_t kRegisters>
ZOR_ALWAYS_INLINE void BothFrom(std::uint8_t* out, const std::uint8_t* row,
                                const std::uint8_t* nextRow, const PlanView<LerpBlock>& plan,
                                std::int32_t weight) noexcept {
  const __m512i weights = WeightPairs(weight);
  ForEachBlock(out, plan.head->count, [&](std::int64_t b) {
    const LerpBlock& block = plan.blocks[b];
    const auto half = [&](std::int32_t h) {
      const std::int32_t base = plan.bases[2 * b + h];
      return LerpHighBytes(AcrossLanes<kRegisters>(row + base, block.half[h]),
                           AcrossLanes<kRegisters>(nextRow + base, block.half[h]), weights);
    };
    return PackHighBytes(half(0), half(1));
  });
}

void Both(std::uint8_t* out, const std::uint8_t* row, const std::uint8_t* nextRow,
          const std::uint8_t* bytes, std::int32_t weight) noexcept {
  const PlanView<LerpBlock> plan(bytes);
  if (plan.head->registers == 1) return BothFrom<1>(out, row, nextRow, plan, weight);
  BothFrom<2>(out, row, nextRow, plan, weight);
}

void Down(std::uint8_t* out, const std::uint8_t* a, const std::uint8_t* b, std::int32_t weight,
          std::int32_t count) noexcept {
  const __m512i weights = WeightPairs(weight);
  // Unpacking works within 16 bytes and so does packing, which undoes it.
  const auto blend = [=](__m512i x, __m512i y) {
    x = Flip(x);
    y = Flip(y);
    const __m512i low = _mm512_maddubs_epi16(weights, _mm512_unpacklo_epi8(x, y));
    const __m512i high = _mm512_maddubs_epi16(weights, _mm512_unpackhi_epi8(x, y));
    return Flip(_mm512_packus_epi16(_mm512_srli_epi16(low, 8), _mm512_srli_epi16(high, 8)));
  };
  std::int32_t i = 0;
  for (; i + 64 <= count; i += 64) {
    _mm512_storeu_si512(out + i, blend(Load(a + i), Load(b + i)));
  }
  if (i < count) {
    const __mmask64 mask = MaskOf(count - i);
    _mm512_mask_storeu_epi8(
        out + i, mask,
        blend(_mm512_maskz_loadu_epi8(mask, a + i), _mm512_maskz_loadu_epi8(mask, b + i)));
  }
}

}  // namespace

const GrayRowForm kGrayRowsAvx512 = {
    "avx512", {PickPlanBytes, PlanPick, Pick}, {LerpPlanBytes, PlanLerp, Across, Both}, Down};

}  // namespace zor
