// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/rgb_lanes_avx512.h"
#include "convert/yuv_colour_avx512.h"
#include "convert/yuy2_rgb_rows.h"

namespace zor {
namespace {

struct EvenBytes {
  static constexpr int Byte(int i) { return 2 * i; }
};

struct OddBytes {
  static constexpr int Byte(int i) { return 2 * i + 1; }
};

template <class Pixel>
struct Block {
  static constexpr std::int32_t kColumns = 64;
  std::uint8_t* target;
  const std::uint8_t* source;

  template <bool kStream>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const __m512i low = LoadedOnce(source + 2 * x);
    const __m512i high = LoadedOnce(source + 2 * x + 64);
    const __m512i luma = _mm512_permutex2var_epi8(low, TableOf<EvenBytes>(), high);
    const __m512i chroma = _mm512_xor_si512(  // U V, as signed bytes
        _mm512_permutex2var_epi8(low, TableOf<OddBytes>(), high), _mm512_set1_epi8(-128));
    StoreColours<Pixel, kStream>(target + x * Pixel::kBytes, luma, ChromaTerms(chroma));
  }
};

}  // namespace

std::int32_t Yuy2ToRgb32RowAvx512(std::uint8_t* target, const std::uint8_t* source,
                                  std::int32_t columns, const RowRoute& route) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, route.stream, Block<Rgb32>{target, source},
                                            AskForRowAbove<2>{source, route.climb});
}

std::int32_t Yuy2ToRgb24RowAvx512(std::uint8_t* target, const std::uint8_t* source,
                                  std::int32_t columns, const RowRoute& route) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, route.stream, Block<Rgb24>{target, source},
                                            AskForRowAbove<2>{source, route.climb});
}

}  // namespace zor
