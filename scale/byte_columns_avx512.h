// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Rows of bytes that are picked or interpolated through a table of byte columns. For files with
/// AVX-512 only; always-inline code in an unnamed namespace.
///
/// One permute brings 32 columns' pairs, or 64 columns' picks, from a window of 64 or 128 source
/// bytes. Values are carried as p - 128: multiply-and-add of the weights (256 - w, w) with the
/// pairs gives lerp * 256 - 32768, whose high byte is the result less 128. A weight of 0, for which
/// 256 doesn't fit a byte, is turned into a 1 that meets the same byte twice.
///
/// A columns type has
///   Count     columns, one byte of output each
///   RowBytes  bytes of a source row that may be read
///   Distance  bytes from a column's byte to the one that it is interpolated with
///   Offset    where column i stands in a row
///   Lowest    the lowest offset of column i and all behind it
///   Highest   the highest offset of column i and all in front of it
///   Weight    the second byte's share in column i, 0 to 255

#include <immintrin.h>

#include <cstdint>
#include <cstring>

#include "platform/compiler.h"

namespace zor {
namespace {

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
template <class Columns>
ZOR_ALWAYS_INLINE std::int64_t Held(const Columns& columns, std::int64_t column) noexcept {
  return column < columns.Count() ? column : columns.Count() - 1;
}

/// A window starts at its first column, or earlier so that it ends with the row.
template <class Columns>
ZOR_ALWAYS_INLINE std::int32_t BaseAt(const Columns& columns, std::int64_t column,
                                      std::int64_t registers) noexcept {
  const std::int32_t first = columns.Lowest(Held(columns, column));
  const auto latest = static_cast<std::int32_t>(columns.RowBytes() - 64 * registers);
  return first < latest ? first : latest;
}

/// @return how many registers a window needs for every run of @p together columns and @p extra
///         bytes behind it, or 0 if @p most don't do.
template <class Columns>
ZOR_ALWAYS_INLINE std::int64_t RegistersFor(const Columns& columns, std::int32_t together,
                                            std::int32_t extra, std::int64_t most) noexcept {
  for (std::int64_t registers = 1; registers <= most; registers *= 2) {
    if (columns.RowBytes() < 64 * registers) return 0;
    bool reaches = true;
    for (std::int64_t column = 0; column < columns.Count() && reaches; column += together) {
      const std::int32_t last = columns.Highest(Held(columns, column + together - 1)) + extra;
      reaches = last - BaseAt(columns, column, registers) < 64 * registers;
    }
    if (reaches) return registers;
  }
  return 0;
}

/// Sizes of a plan: head, blocks, one word per window for where it starts. 0 without registers.
template <class Block>
ZOR_ALWAYS_INLINE std::uint64_t PlanBytesOf(std::int64_t count, std::int64_t registers,
                                            std::int64_t windows) noexcept {
  if (registers == 0) return 0;
  return sizeof(PlanHead) + static_cast<std::uint64_t>(BlocksOf(count)) *
                                (sizeof(Block) + 4 * static_cast<std::uint64_t>(windows));
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

template <class Columns>
ZOR_ALWAYS_INLINE std::int64_t LerpRegisters(const Columns& columns) noexcept {
  return RegistersFor(columns, 32, columns.Distance(), 2);
}
template <class Columns>
ZOR_ALWAYS_INLINE std::int64_t PickRegisters(const Columns& columns) noexcept {
  return RegistersFor(columns, 64, 0, 4);
}

/// @return bytes of a plan, or 0 if the columns are too far apart.
template <class Columns>
ZOR_ALWAYS_INLINE std::uint64_t BytesOfLerpPlan(const Columns& columns) noexcept {
  return PlanBytesOf<LerpBlock>(columns.Count(), LerpRegisters(columns), 2);
}
template <class Columns>
ZOR_ALWAYS_INLINE std::uint64_t BytesOfPickPlan(const Columns& columns) noexcept {
  return PlanBytesOf<PickBlock>(columns.Count(), PickRegisters(columns), 1);
}

template <class Columns>
ZOR_ALWAYS_INLINE void MakeLerpPlan(const Columns& columns, std::uint8_t* plan) noexcept {
  const PlanHead head{columns.Count(), BlocksOf(columns.Count()), LerpRegisters(columns)};
  std::memcpy(plan, &head, sizeof(head));
  auto* halves = reinterpret_cast<LerpHalf*>(plan + sizeof(head));
  auto* bases = reinterpret_cast<std::int32_t*>(halves + 2 * head.blocks);
  for (std::int64_t h = 0; h < 2 * head.blocks; ++h) {
    bases[h] = BaseAt(columns, 32 * h, head.registers);
    for (std::int64_t i = 0; i < 32; ++i) {
      const std::int64_t column = Held(columns, 32 * h + i);
      const std::int32_t offset = columns.Offset(column) - bases[h];
      const std::int32_t weight = columns.Weight(column);
      const std::int32_t share = weight == 0 ? 1 : weight;
      const std::int32_t other = weight == 0 ? offset : offset + columns.Distance();
      halves[h].index[2 * i] = static_cast<std::uint8_t>(offset);
      halves[h].index[2 * i + 1] = static_cast<std::uint8_t>(other);
      halves[h].weight[2 * i] = static_cast<std::uint8_t>(256 - share);
      halves[h].weight[2 * i + 1] = static_cast<std::uint8_t>(share);
    }
  }
}

template <class Columns>
ZOR_ALWAYS_INLINE void MakePickPlan(const Columns& columns, std::uint8_t* plan) noexcept {
  const PlanHead head{columns.Count(), BlocksOf(columns.Count()), PickRegisters(columns)};
  std::memcpy(plan, &head, sizeof(head));
  auto* blocks = reinterpret_cast<PickBlock*>(plan + sizeof(head));
  auto* bases = reinterpret_cast<std::int32_t*>(blocks + head.blocks);
  for (std::int64_t b = 0; b < head.blocks; ++b) {
    bases[b] = BaseAt(columns, 64 * b, head.registers);
    for (std::int64_t i = 0; i < 64; ++i) {
      const std::int64_t column = Held(columns, 64 * b + i);
      blocks[b].index[i] = static_cast<std::uint8_t>(columns.Offset(column) - bases[b]);
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

constexpr __mmask64 kAllBytes = ~__mmask64{0};

ZOR_ALWAYS_INLINE __mmask64 MaskOf(std::int64_t count) noexcept {
  return kAllBytes >> (64 - count);
}

/// Stores columns(b) for every block; of the last one only what belongs to the run. Bytes of a
/// block that @p kKeep hasn't come out as 0.
template <__mmask64 kKeep, class Columns>
ZOR_ALWAYS_INLINE void ForEachBlock(std::uint8_t* out, std::int64_t count,
                                    Columns columns) noexcept {
  const auto kept = [&](std::int64_t b) {
    return kKeep == kAllBytes ? columns(b) : _mm512_maskz_mov_epi8(kKeep, columns(b));
  };
  const std::int64_t whole = count / kBlockColumns;
  for (std::int64_t b = 0; b < whole; ++b) _mm512_storeu_si512(out + kBlockColumns * b, kept(b));
  const std::int64_t rest = count - kBlockColumns * whole;
  if (rest > 0) _mm512_mask_storeu_epi8(out + kBlockColumns * whole, MaskOf(rest), kept(whole));
}

template <std::int64_t kRegisters, __mmask64 kKeep>
ZOR_ALWAYS_INLINE void PickFrom(std::uint8_t* out, const std::uint8_t* row,
                                const PlanView<PickBlock>& plan) noexcept {
  ForEachBlock<kKeep>(out, plan.head->count, [&](std::int64_t b) {
    return Permute<kRegisters>(row + plan.bases[b], Load(plan.blocks[b].index));
  });
}

/// out[i] = the byte at column i's offset.
template <__mmask64 kKeep = kAllBytes>
ZOR_ALWAYS_INLINE void PickBytes(std::uint8_t* out, const std::uint8_t* row,
                                 const std::uint8_t* bytes) noexcept {
  const PlanView<PickBlock> plan(bytes);
  switch (plan.head->registers) {
    case 1:
      return PickFrom<1, kKeep>(out, row, plan);
    case 2:
      return PickFrom<2, kKeep>(out, row, plan);
    default:
      return PickFrom<4, kKeep>(out, row, plan);
  }
}

template <std::int64_t kRegisters, __mmask64 kKeep>
ZOR_ALWAYS_INLINE void AcrossFrom(std::uint8_t* out, const std::uint8_t* row,
                                  const PlanView<LerpBlock>& plan) noexcept {
  ForEachBlock<kKeep>(out, plan.head->count, [&](std::int64_t b) {
    const LerpBlock& block = plan.blocks[b];
    const std::int32_t* base = plan.bases + 2 * b;
    return PackHighBytes(AcrossLanes<kRegisters>(row + base[0], block.half[0]),
                         AcrossLanes<kRegisters>(row + base[1], block.half[1]));
  });
}

/// out[i] = lerp(p, q, column i's weight).
template <__mmask64 kKeep = kAllBytes>
ZOR_ALWAYS_INLINE void LerpBytesAcross(std::uint8_t* out, const std::uint8_t* row,
                                       const std::uint8_t* bytes) noexcept {
  const PlanView<LerpBlock> plan(bytes);
  if (plan.head->registers == 1) return AcrossFrom<1, kKeep>(out, row, plan);
  AcrossFrom<2, kKeep>(out, row, plan);
}

template <std::int64_t kRegisters, __mmask64 kKeep>
ZOR_ALWAYS_INLINE void BothFrom(std::uint8_t* out, const std::uint8_t* row,
                                const std::uint8_t* nextRow, const PlanView<LerpBlock>& plan,
                                std::int32_t weight) noexcept {
  const __m512i weights = WeightPairs(weight);
  ForEachBlock<kKeep>(out, plan.head->count, [&](std::int64_t b) {
    const LerpBlock& block = plan.blocks[b];
    const auto half = [&](std::int32_t h) {
      const std::int32_t base = plan.bases[2 * b + h];
      return LerpHighBytes(AcrossLanes<kRegisters>(row + base, block.half[h]),
                           AcrossLanes<kRegisters>(nextRow + base, block.half[h]), weights);
    };
    return PackHighBytes(half(0), half(1));
  });
}

/// out[i] = lerp(lerp across of the row, lerp across of the next row, weight), a weight of 1 to
/// 255.
template <__mmask64 kKeep = kAllBytes>
ZOR_ALWAYS_INLINE void LerpBytesBoth(std::uint8_t* out, const std::uint8_t* row,
                                     const std::uint8_t* nextRow, const std::uint8_t* bytes,
                                     std::int32_t weight) noexcept {
  const PlanView<LerpBlock> plan(bytes);
  if (plan.head->registers == 1) return BothFrom<1, kKeep>(out, row, nextRow, plan, weight);
  BothFrom<2, kKeep>(out, row, nextRow, plan, weight);
}

}  // namespace
}  // namespace zor
