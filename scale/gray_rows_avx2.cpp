// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <immintrin.h>

#include <cstring>

#include "platform/compiler.h"
#include "scale/gray_rows.h"
#include "scale/lerp.h"

namespace zor {
namespace {

// Eight columns read from one window of 16 source bytes, which a byte shuffle serves as long as the
// columns are at most about two pixels apart. 32 columns make a block.
//
// Pixels are carried as p - 128, so that multiply-and-add takes them as its signed operand and the
// weights (256 - w, w) as its unsigned one. The sum is lerp * 256 - 32768: its high byte is the
// result, again less 128. A weight of 0, for which 256 doesn't fit a byte, is turned into a 1 that
// meets the same pixel twice.

constexpr std::int32_t kWindow = 16;
constexpr std::int32_t kWindowColumns = 8;
constexpr std::int32_t kBlockColumns = 32;
constexpr std::int32_t kBlockWindows = kBlockColumns / kWindowColumns;

/// Windows 0 and 2 of a block share a vector, and so do 1 and 3: packing two vectors interleaves
/// their halves and thereby brings the columns into order.
constexpr std::int32_t WindowAt(std::int32_t vector, std::int32_t half) {
  return vector + 2 * half;
}

struct LerpBlock {
  alignas(32) std::uint8_t index[2][32];   // p0 q0 p1 q1 .. p7 q7 | of the other window
  alignas(32) std::uint8_t weight[2][32];  // (256 - w, w) likewise
  std::int32_t base[kBlockWindows];
  std::int32_t unused[4];
};

struct PickBlock {
  alignas(32) std::uint8_t index[2][32];  // eight bytes, the same again | of the other window
  std::int32_t base[kBlockWindows];
  std::int32_t unused[4];
};

struct alignas(32) PlanHead {
  std::int64_t count;
  std::int64_t blocks;
};

ZOR_ALWAYS_INLINE std::int64_t BlocksOf(std::int64_t count) noexcept {
  return (count + kBlockColumns - 1) / kBlockColumns;
}

/// Columns behind the last one repeat it.
ZOR_ALWAYS_INLINE std::int32_t OffsetAt(const GrayColumns& columns, std::int64_t column) noexcept {
  return columns.offsets[column < columns.count ? column : columns.count - 1];
}

/// A window starts at its first column, or earlier so that it ends with the row.
ZOR_ALWAYS_INLINE std::int32_t BaseAt(const GrayColumns& columns, std::int64_t column) noexcept {
  const std::int32_t first = OffsetAt(columns, column);
  const std::int32_t latest = columns.sourceWidth - kWindow;
  return first < latest ? first : latest;
}

/// @return whether every window of eight columns, and @p extra bytes behind, is within reach.
ZOR_ALWAYS_INLINE bool Reaches(const GrayColumns& columns, std::int32_t extra) noexcept {
  if (columns.sourceWidth < kWindow) return false;
  for (std::int64_t column = 0; column < columns.count; column += kWindowColumns) {
    const std::int32_t base = BaseAt(columns, column);
    if (OffsetAt(columns, column + kWindowColumns - 1) + extra - base >= kWindow) return false;
  }
  return true;
}

std::uint64_t LerpPlanBytes(const GrayColumns& columns) noexcept {
  if (!Reaches(columns, 1)) return 0;
  return sizeof(PlanHead) + sizeof(LerpBlock) * static_cast<std::uint64_t>(BlocksOf(columns.count));
}

std::uint64_t PickPlanBytes(const GrayColumns& columns) noexcept {
  if (!Reaches(columns, 0)) return 0;
  return sizeof(PlanHead) + sizeof(PickBlock) * static_cast<std::uint64_t>(BlocksOf(columns.count));
}

template <class Block>
ZOR_ALWAYS_INLINE Block* StartPlan(const GrayColumns& columns, std::uint8_t* plan,
                                   std::int64_t* blocks) noexcept {
  const PlanHead head{columns.count, BlocksOf(columns.count)};
  std::memcpy(plan, &head, sizeof(head));
  *blocks = head.blocks;
  return reinterpret_cast<Block*>(plan + sizeof(head));
}

/// Calls place(block, vector, byte, base, column) for every column of the plan; byte is eight times
/// the half that the column's window stands in, plus its place there.
template <class Block, class Place>
ZOR_ALWAYS_INLINE void ForEachColumn(const GrayColumns& columns, std::uint8_t* plan,
                                     Place place) noexcept {
  std::int64_t blocks;
  auto* block = StartPlan<Block>(columns, plan, &blocks);
  for (std::int64_t b = 0; b < blocks; ++b, ++block) {
    for (std::int32_t vector = 0; vector < 2; ++vector) {
      for (std::int32_t half = 0; half < 2; ++half) {
        const std::int32_t window = WindowAt(vector, half);
        const std::int64_t first = b * kBlockColumns + window * kWindowColumns;
        block->base[window] = BaseAt(columns, first);
        for (std::int32_t i = 0; i < kWindowColumns; ++i) {
          place(block, vector, half, i, first + i,
                OffsetAt(columns, first + i) - block->base[window]);
        }
      }
    }
  }
}

void PlanLerp(const GrayColumns& columns, std::uint8_t* plan) noexcept {
  ForEachColumn<LerpBlock>(
      columns, plan,
      [&](LerpBlock* block, std::int32_t vector, std::int32_t half, std::int32_t i,
          std::int64_t column, std::int32_t offset) {
        const std::int32_t weight =
            columns.weights[column < columns.count ? column : columns.count - 1];
        std::uint8_t* index = block->index[vector] + 16 * half + 2 * i;
        std::uint8_t* weights = block->weight[vector] + 16 * half + 2 * i;
        const std::int32_t share = weight == 0 ? 1 : weight;
        index[0] = static_cast<std::uint8_t>(offset);
        index[1] = static_cast<std::uint8_t>(weight == 0 ? offset : offset + 1);
        weights[0] = static_cast<std::uint8_t>(256 - share);
        weights[1] = static_cast<std::uint8_t>(share);
      });
}

void PlanPick(const GrayColumns& columns, std::uint8_t* plan) noexcept {
  ForEachColumn<PickBlock>(
      columns, plan,
      [&](PickBlock* block, std::int32_t vector, std::int32_t half, std::int32_t i, std::int64_t,
          std::int32_t offset) {
        block->index[vector][16 * half + i] = static_cast<std::uint8_t>(offset);
        block->index[vector][16 * half + 8 + i] = static_cast<std::uint8_t>(offset);
      });
}

ZOR_ALWAYS_INLINE __m256i Load(const std::uint8_t* bytes) noexcept {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(bytes));
}
ZOR_ALWAYS_INLINE void Store(std::uint8_t* bytes, __m256i value) noexcept {
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(bytes), value);
}
ZOR_ALWAYS_INLINE __m256i Flip(__m256i pixels) noexcept {
  return _mm256_xor_si256(pixels, _mm256_set1_epi8(static_cast<char>(0x80)));
}

/// Two windows of a row side by side.
ZOR_ALWAYS_INLINE __m256i Windows(const std::uint8_t* row, std::int32_t low,
                                  std::int32_t high) noexcept {
  return _mm256_inserti128_si256(
      _mm256_castsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(row + low))),
      _mm_loadu_si128(reinterpret_cast<const __m128i*>(row + high)), 1);
}

/// Sixteen columns, interpolated across: the result less 128 in the high byte of each lane.
ZOR_ALWAYS_INLINE __m256i AcrossLanes(const std::uint8_t* row, const LerpBlock& block,
                                      std::int32_t vector) noexcept {
  const __m256i source =
      Flip(Windows(row, block.base[WindowAt(vector, 0)], block.base[WindowAt(vector, 1)]));
  return _mm256_maddubs_epi16(Load(block.weight[vector]),
                              _mm256_shuffle_epi8(source, Load(block.index[vector])));
}

/// High bytes of the lanes of both vectors, no longer less 128.
ZOR_ALWAYS_INLINE __m256i PackHighBytes(__m256i low, __m256i high) noexcept {
  return Flip(_mm256_packus_epi16(_mm256_srli_epi16(low, 8), _mm256_srli_epi16(high, 8)));
}

/// Lanes of (high byte of a, high byte of b) times (256 - w, w).
ZOR_ALWAYS_INLINE __m256i LerpHighBytes(__m256i a, __m256i b, __m256i weights) noexcept {
  const __m256i pairs =
      _mm256_blendv_epi8(_mm256_srli_epi16(a, 8), b, _mm256_set1_epi16(static_cast<short>(0xFF00)));
  return _mm256_maddubs_epi16(weights, pairs);
}

ZOR_ALWAYS_INLINE __m256i WeightPairs(std::int32_t weight) noexcept {
  return _mm256_set1_epi16(static_cast<short>((weight << 8) | (256 - weight)));
}

/// Runs block(block) over the plan and stores the 32 bytes that it gives, of the last block only
/// what belongs to the run.
template <class Block, class Columns>
ZOR_ALWAYS_INLINE void ForEachBlock(std::uint8_t* out, const std::uint8_t* plan,
                                    Columns columns) noexcept {
  PlanHead head;
  std::memcpy(&head, plan, sizeof(head));
  const auto* block = reinterpret_cast<const Block*>(plan + sizeof(head));
  const std::int64_t whole = head.count / kBlockColumns;
  for (std::int64_t b = 0; b < whole; ++b) Store(out + kBlockColumns * b, columns(block[b]));
  if (whole < head.blocks) {
    alignas(32) std::uint8_t bytes[kBlockColumns];
    Store(bytes, columns(block[whole]));
    std::memcpy(out + kBlockColumns * whole, bytes,
                static_cast<std::size_t>(head.count - kBlockColumns * whole));
  }
}

void Pick(std::uint8_t* out, const std::uint8_t* row, const std::uint8_t* plan) noexcept {
  ForEachBlock<PickBlock>(out, plan, [=](const PickBlock& block) {
    const auto columns = [&](std::int32_t vector) {
      return _mm256_shuffle_epi8(
          Windows(row, block.base[WindowAt(vector, 0)], block.base[WindowAt(vector, 1)]),
          Load(block.index[vector]));
    };
    return _mm256_unpacklo_epi64(columns(0), columns(1));
  });
}

void Across(std::uint8_t* out, const std::uint8_t* row, const std::uint8_t* plan) noexcept {
  ForEachBlock<LerpBlock>(out, plan, [=](const LerpBlock& block) {
    return PackHighBytes(AcrossLanes(row, block, 0), AcrossLanes(row, block, 1));
  });
}

void Both(std::uint8_t* out, const std::uint8_t* row, const std::uint8_t* nextRow,
          const std::uint8_t* plan, std::int32_t weight) noexcept {
  const __m256i weights = WeightPairs(weight);
  ForEachBlock<LerpBlock>(out, plan, [=](const LerpBlock& block) {
    const __m256i low =
        LerpHighBytes(AcrossLanes(row, block, 0), AcrossLanes(nextRow, block, 0), weights);
    const __m256i high =
        LerpHighBytes(AcrossLanes(row, block, 1), AcrossLanes(nextRow, block, 1), weights);
    return PackHighBytes(low, high);
  });
}

void Down(std::uint8_t* out, const std::uint8_t* a, const std::uint8_t* b, std::int32_t weight,
          std::int32_t count) noexcept {
  const __m256i weights = WeightPairs(weight);
  std::int32_t i = 0;
  for (; i + 32 <= count; i += 32) {
    const __m256i x = Flip(Load(a + i));
    const __m256i y = Flip(Load(b + i));
    Store(out + i, PackHighBytes(_mm256_maddubs_epi16(weights, _mm256_unpacklo_epi8(x, y)),
                                 _mm256_maddubs_epi16(weights, _mm256_unpackhi_epi8(x, y))));
  }
  for (; i < count; ++i) out[i] = static_cast<std::uint8_t>(Lerp(a[i], b[i], weight));
}

}  // namespace

const GrayRowForm kGrayRowsAvx2 = {
    "avx2", {PickPlanBytes, PlanPick, Pick}, {LerpPlanBytes, PlanLerp, Across, Both}, Down};

}  // namespace zor
