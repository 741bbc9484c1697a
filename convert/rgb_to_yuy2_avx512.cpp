// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/rgb_lanes_avx512.h"
#include "convert/rgb_to_yuy2_rows.h"
#include "convert/store_avx512.h"

namespace zor {
namespace {

/// Spreads two groups of eight 3-byte pixels, the second one 32 bytes behind the first.
struct SpreadGroups {
  static constexpr int Byte(int i) {
    return i / 32 * kYuy2GroupBytes + 3 * (i / 4 % 8) + (i % 4 < 3 ? i % 4 : 2);
  }
};

/// Sixteen pixels as B, G, R, x from two groups. Of 3-byte ones the bytes behind the last pixel are
/// not read.
template <class Pixel>
ZOR_ALWAYS_INLINE __m512i LoadGroups(const std::uint8_t* groups) {
  if constexpr (Pixel::kBytes == 4) {
    return LoadedOnce(groups);
  } else {
    return _mm512_permutexvar_epi8(TableOf<SpreadGroups>(), _mm512_maskz_loadu_epi64(0x7F, groups));
  }
}

/// The low words of the dwords of two registers.
struct LowWords {
  static constexpr int Word(int i) { return 2 * i; }
};

/// Eight pairs of columns in dwords Y U, Y V (low words), before the offsets.
ZOR_ALWAYS_INLINE __m512i ConvertSixteen(__m512i pixels) {
  const __m512i weights = _mm512_set1_epi64(std::int64_t{kVWeights} << 32 | kUWeights);
  const __m512i second = _mm512_shuffle_epi32(pixels, _MM_PERM_DDBB);
  const __m512i chroma = _mm512_dpbusd_epi32(_mm512_setzero_si512(), second, weights);
  return Select(0xFF, _mm512_srli_epi32(LumaOfSixteen(pixels), 8), chroma);
}

template <class Pixel>
struct Block {
  static constexpr std::int32_t kColumns = 32;
  std::uint8_t* target;
  const std::uint8_t* source;

  template <bool kStream>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const std::uint8_t* groups = source + x / 8 * kYuy2GroupBytes;
    const __m512i low = ConvertSixteen(LoadGroups<Pixel>(groups));
    const __m512i high = ConvertSixteen(LoadGroups<Pixel>(groups + 2 * kYuy2GroupBytes));
    const __m512i words = _mm512_permutex2var_epi16(low, WordTableOf<LowWords>(), high);
    const __m512i offsets = _mm512_set1_epi16(static_cast<short>(16 | 128 << 8));
    Store64<kStream>(target + 2 * x, _mm512_add_epi8(words, offsets));
  }
};

}  // namespace

std::int32_t Rgb32ToYuy2RowAvx512(std::uint8_t* target, const std::uint8_t* source,
                                  std::int32_t columns, const RowRoute& route) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, route.stream, Block<Rgb32>{target, source},
                                            AskForGroupsAbove{source, route.climb});
}

std::int32_t Rgb24ToYuy2RowAvx512(std::uint8_t* target, const std::uint8_t* source,
                                  std::int32_t columns, const RowRoute& route) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, route.stream, Block<Rgb24>{target, source},
                                            AskForGroupsAbove{source, route.climb});
}

}  // namespace zor
