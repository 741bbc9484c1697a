// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/rgb_lanes_avx2.h"
#include "convert/rgb_to_yuy2_rows.h"
#include "convert/store_avx2.h"

namespace zor {
namespace {

/// Four pairs of columns in dwords Y U, Y V (low words), before the offsets.
ZOR_ALWAYS_INLINE __m256i ConvertEight(__m256i pixels) {
  const __m256i weights = _mm256_set1_epi64x(0x0070A2EE00DAB670);  // U, then V
  const __m256i second = _mm256_shuffle_epi32(pixels, _MM_SHUFFLE(3, 3, 1, 1));
  const __m256i chroma =
      _mm256_madd_epi16(_mm256_maddubs_epi16(second, weights), _mm256_set1_epi16(1));
  const __m256i luma =
      _mm256_srli_epi32(_mm256_add_epi32(LumaOfEight(pixels), _mm256_set1_epi32(28160)), 8);
  return _mm256_or_si256(luma, _mm256_and_si256(chroma, _mm256_set1_epi32(~0xFF)));
}

template <class Pixel>
struct Block {
  static constexpr std::int32_t kColumns = 16;
  std::uint8_t* target;
  const std::uint8_t* source;

  template <bool kStream>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const std::uint8_t* pixels = source + x / 8 * kYuy2GroupBytes;
    const __m256i words =
        _mm256_packs_epi32(ConvertEight(LoadEightPixels<Pixel>(pixels)),
                           ConvertEight(LoadEightPixels<Pixel>(pixels + kYuy2GroupBytes)));
    const __m256i offsets = _mm256_set1_epi16(static_cast<short>(16 | 128 << 8));
    Store32<kStream>(
        target + 2 * x,
        _mm256_add_epi8(_mm256_permute4x64_epi64(words, _MM_SHUFFLE(3, 1, 2, 0)), offsets));
  }
};

}  // namespace

std::int32_t Rgb32ToYuy2RowAvx2(std::uint8_t* target, const std::uint8_t* source,
                                std::int32_t columns, const RowRoute& route) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, route.stream, Block<Rgb32>{target, source},
                                            AskForGroupsAbove{source, route.climb});
}

std::int32_t Rgb24ToYuy2RowAvx2(std::uint8_t* target, const std::uint8_t* source,
                                std::int32_t columns, const RowRoute& route) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, route.stream, Block<Rgb24>{target, source},
                                            AskForGroupsAbove{source, route.climb});
}

}  // namespace zor
