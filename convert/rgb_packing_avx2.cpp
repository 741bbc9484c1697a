// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/rgb_lanes_avx2.h"
#include "convert/rgb_packing_rows.h"
#include "convert/store_avx2.h"

namespace zor {
namespace {

struct Spread {
  static constexpr std::int32_t kColumns = 32;
  std::uint8_t* target;
  const std::uint8_t* source;

  template <bool kStream>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const __m256i colour = _mm256_set1_epi32(0x00FFFFFF);
#pragma GCC unroll 4
    for (int i = 0; i < 4; ++i) {
      Store32<kStream>(target + 4 * x + 32 * i,
                       _mm256_and_si256(LoadEightPixels<Rgb24>(source + 3 * x + 24 * i), colour));
    }
  }
};

struct Squeeze {
  static constexpr std::int32_t kColumns = 32;
  std::uint8_t* target;
  const std::uint8_t* source;

  template <bool kStream>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    __m256i pixels[4];
#pragma GCC unroll 4
    for (int i = 0; i < 4; ++i) pixels[i] = LoadEightPixels<Rgb32>(source + 4 * x + 32 * i);
    Store32Pixels<Rgb24, kStream>(target + 3 * x, pixels);
  }
};

}  // namespace

std::int32_t Rgb24ToRgb32RowAvx2(std::uint8_t* target, const std::uint8_t* source,
                                 std::int32_t columns, const RowRoute& route) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, route.stream, Spread{target, source},
                                            AskForRowAbove<3>{source, route.climb});
}

std::int32_t Rgb32ToRgb24RowAvx2(std::uint8_t* target, const std::uint8_t* source,
                                 std::int32_t columns, const RowRoute& route) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, route.stream, Squeeze{target, source},
                                            AskForRowAbove<4>{source, route.climb});
}

}  // namespace zor
