// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <immintrin.h>

#include "platform/compiler.h"
#include "scale/rgb_rows.h"

namespace zor {
namespace {

constexpr std::int32_t kBlock = 16;    // columns
constexpr std::int64_t kWindow = 128;  // source bytes that a block picks from
constexpr std::uint64_t kColourBytes = 0x7777777777777777ull;  // three of every four

/// A window of the row.
struct Reach {
  std::int64_t base;   // its first byte
  std::uint64_t low;   // bytes of its first half that lie in the row
  std::uint64_t high;  // and of its second
};

/// What one block of columns takes from the row: its first half from one window and its second from
/// another, which is the same where that reaches.
struct alignas(64) Block {
  std::uint8_t index[64];  // of each output byte in its window
  Reach halves[2];
};

ZOR_ALWAYS_INLINE std::int32_t Blocks(const RgbColumns& c) {
  return (c.count + kBlock - 1) / kBlock;
}

ZOR_ALWAYS_INLINE std::uint64_t FirstBytes(std::int64_t n) {
  return n <= 0 ? 0 : n >= 64 ? ~0ull : ~0ull >> (64 - n);
}

/// Column @p i, held to the run.
ZOR_ALWAYS_INLINE std::int64_t OffsetOf(const RgbColumns& c, std::int32_t i) {
  return c.offsets[i < c.count ? i : c.count - 1];
}

/// @param reach bytes from a column's offset that a block reads.
/// @return whether one window serves all columns from @p first to @p last.
ZOR_ALWAYS_INLINE bool InWindow(const RgbColumns& c, std::int32_t first, std::int32_t last,
                                std::int64_t reach) {
  return OffsetOf(c, last) + reach - OffsetOf(c, first) <= kWindow;
}

ZOR_ALWAYS_INLINE std::int64_t PlanBytes(const RgbColumns& c, std::int64_t reach) {
  for (std::int32_t i = 0; i < c.count; i += kBlock / 2) {
    if (!InWindow(c, i, i + kBlock / 2 - 1, reach)) return -1;
  }
  return static_cast<std::int64_t>(sizeof(Block)) * Blocks(c);
}

std::int64_t PickPlanBytes(const RgbColumns& c) noexcept {
  return PlanBytes(c, c.pixelBytes);
}
std::int64_t AcrossPlanBytes(const RgbColumns& c) noexcept {
  return PlanBytes(c, 2 * c.pixelBytes);
}

void MakePlan(const RgbColumns& c, std::uint8_t* plan) noexcept {
  auto* blocks = reinterpret_cast<Block*>(plan);
  for (std::int32_t b = 0; b < Blocks(c); ++b) {
    Block& block = blocks[b];
    const std::int32_t start = b * kBlock;
    const bool whole = InWindow(c, start, start + kBlock - 1, 2 * c.pixelBytes);
    for (std::int32_t half = 0; half < 2; ++half) {
      const std::int64_t base = OffsetOf(c, whole ? start : start + half * (kBlock / 2));
      block.halves[half] = {base, FirstBytes(c.rowBytes - base),
                            FirstBytes(c.rowBytes - base - 64)};
    }
    for (std::int32_t i = 0; i < kBlock; ++i) {
      const std::int64_t at = OffsetOf(c, start + i) - block.halves[i / (kBlock / 2)].base;
      for (std::int32_t k = 0; k < 4; ++k) {
        block.index[4 * i + k] = static_cast<std::uint8_t>(k < c.pixelBytes ? at + k : 0);
      }
    }
  }
}

/// One window of a block; masked loads only where it leaves the row.
struct Window {
  __m512i low, high;

  ZOR_ALWAYS_INLINE Window(const std::uint8_t* row, const Reach& reach) {
    const std::uint8_t* at = row + reach.base;
    if (reach.high == ~0ull) {
      low = _mm512_loadu_si512(at);
      high = _mm512_loadu_si512(at + 64);
    } else {
      low = _mm512_maskz_loadu_epi8(reach.low, at);
      high = _mm512_maskz_loadu_epi8(reach.high, at + 64);
    }
  }
  ZOR_ALWAYS_INLINE __m512i At(__m512i index, std::uint64_t keep) const {
    return _mm512_maskz_mov_epi8(keep, _mm512_permutex2var_epi8(low, index, high));
  }
};

/// Both windows of a block.
struct Windows {
  Window first, second;
  bool apart;

  ZOR_ALWAYS_INLINE Windows(const std::uint8_t* row, const Block& block)
      : first(row, block.halves[0]),
        second(first),
        apart(block.halves[0].base != block.halves[1].base) {
    if (apart) second = Window(row, block.halves[1]);
  }
  ZOR_ALWAYS_INLINE __m512i At(__m512i index, std::uint64_t keep) const {
    const __m512i bytes = first.At(index, keep);
    if (!apart) return bytes;
    return _mm512_mask_mov_epi64(bytes, 0xF0, second.At(index, keep));
  }
};

ZOR_ALWAYS_INLINE std::uint64_t Keep(const RgbColumns& c) {
  return c.pixelBytes == 4 ? ~0ull : kColourBytes;
}

/// Stores a block's pixels, the last block's only as far as the run goes.
ZOR_ALWAYS_INLINE void Store(std::uint8_t* out, std::int32_t left, __m512i pixels) {
  if (left >= kBlock) {
    _mm512_storeu_si512(out, pixels);
  } else {
    _mm512_mask_storeu_epi32(out, static_cast<__mmask16>((1u << left) - 1), pixels);
  }
}

void Pick(std::uint8_t* out, const std::uint8_t* row, const RgbColumns& c,
          const std::uint8_t* plan) noexcept {
  const auto* blocks = reinterpret_cast<const Block*>(plan);
  const std::uint64_t keep = Keep(c);
  for (std::int32_t b = 0; b < Blocks(c); ++b) {
    const Windows window(row, blocks[b]);
    Store(out + 64 * static_cast<std::int64_t>(b), c.count - b * kBlock,
          window.At(_mm512_load_si512(blocks[b].index), keep));
  }
}

/// Lanes of 16 bits: (256 p + (q - p) w) >> 8, exact modulo 2^16.
ZOR_ALWAYS_INLINE __m512i LerpLanes(__m512i p, __m512i q, __m512i w) {
  const __m512i product = _mm512_mullo_epi16(_mm512_sub_epi16(q, p), w);
  return _mm512_srli_epi16(_mm512_add_epi16(_mm512_slli_epi16(p, 8), product), 8);
}

void Across(std::uint8_t* out, const std::uint8_t* row, const RgbColumns& c,
            const std::uint8_t* plan) noexcept {
  const auto* blocks = reinterpret_cast<const Block*>(plan);
  const std::uint64_t keep = Keep(c);
  const __m512i zero = _mm512_setzero_si512();
  const __m512i next = _mm512_set1_epi8(static_cast<char>(c.pixelBytes));
  for (std::int32_t b = 0; b < Blocks(c); ++b) {
    const std::int32_t left = c.count - b * kBlock;
    const Windows window(row, blocks[b]);
    const __m512i index = _mm512_load_si512(blocks[b].index);
    const __m512i p = window.At(index, keep);
    const __m512i q = window.At(_mm512_add_epi8(index, next), keep);
    const std::uint32_t* words = c.words + b * kBlock;
    const __m512i w =
        left >= kBlock ? _mm512_loadu_si512(words)
                       : _mm512_maskz_loadu_epi32(static_cast<__mmask16>((1u << left) - 1), words);
    const __m512i low = LerpLanes(_mm512_unpacklo_epi8(p, zero), _mm512_unpacklo_epi8(q, zero),
                                  _mm512_unpacklo_epi8(w, zero));
    const __m512i high = LerpLanes(_mm512_unpackhi_epi8(p, zero), _mm512_unpackhi_epi8(q, zero),
                                   _mm512_unpackhi_epi8(w, zero));
    Store(out + 64 * static_cast<std::int64_t>(b), left, _mm512_packus_epi16(low, high));
  }
}

void Pack(std::uint8_t* out, const std::uint8_t* in, std::int32_t count) noexcept {
  alignas(64) static constexpr std::uint8_t kIndex[64] = {
      0,  1,  2,  4,  5,  6,  8,  9,  10, 12, 13, 14, 16, 17, 18, 20, 21, 22, 24, 25, 26, 28,
      29, 30, 32, 33, 34, 36, 37, 38, 40, 41, 42, 44, 45, 46, 48, 49, 50, 52, 53, 54, 56, 57,
      58, 60, 61, 62, 0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0};
  const __m512i index = _mm512_load_si512(kIndex);
  std::int32_t i = 0;
  // 48 of 64 bytes a store: the 16 behind them belong to the next pixels.
  for (; i + 22 <= count; i += kBlock) {
    _mm512_storeu_si512(out + 3 * i,
                        _mm512_permutexvar_epi8(index, _mm512_loadu_si512(in + 4 * i)));
  }
  while (i < count) {
    const std::int32_t n = count - i < kBlock ? count - i : kBlock;
    const __m512i pixels = _mm512_maskz_loadu_epi8(FirstBytes(4 * n), in + 4 * i);
    _mm512_mask_storeu_epi8(out + 3 * i, FirstBytes(3 * n), _mm512_permutexvar_epi8(index, pixels));
    i += n;
  }
}

}  // namespace

const RgbRowForm kRgbRowsAvx512 = {
    "avx512", {PickPlanBytes, MakePlan, Pick}, {AcrossPlanBytes, MakePlan, Across}, Pack};

}  // namespace zor
