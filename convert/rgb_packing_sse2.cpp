// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/rgb_lanes_sse2.h"
#include "convert/rgb_packing_rows.h"

namespace zor {
namespace {

struct Spread {
  static constexpr std::int32_t kColumns = 16;
  std::uint8_t* target;
  const std::uint8_t* source;

  template <bool>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const __m128i colour = _mm_set1_epi32(0x00FFFFFF);
    for (int i = 0; i < 4; ++i) {
      StoreSixteen(target + 4 * x + 16 * i,
                   _mm_and_si128(LoadFourPixels<Rgb24>(source + 3 * x + 12 * i), colour));
    }
  }
};

struct Squeeze {
  static constexpr std::int32_t kColumns = 16;
  std::uint8_t* target;
  const std::uint8_t* source;

  template <bool>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    __m128i pixels[4];
    for (int i = 0; i < 4; ++i) pixels[i] = LoadFourPixels<Rgb32>(source + 4 * x + 16 * i);
    StorePixels<Rgb24>(target + 3 * x, pixels);
  }
};

}  // namespace

std::int32_t Rgb24ToRgb32RowSse2(std::uint8_t* target, const std::uint8_t* source,
                                 std::int32_t columns, const RowRoute& route) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, false, Spread{target, source},
                                            AskForRowAbove<3>{source, route.climb});
}

std::int32_t Rgb32ToRgb24RowSse2(std::uint8_t* target, const std::uint8_t* source,
                                 std::int32_t columns, const RowRoute& route) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, false, Squeeze{target, source},
                                            AskForRowAbove<4>{source, route.climb});
}

}  // namespace zor
