// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/rgb_lanes_avx512.h"
#include "convert/rgb_store_avx512.h"
#include "convert/yuy2_rgb_rows.h"

namespace zor {
namespace {

struct EvenBytes {
  static constexpr int Byte(int i) { return 2 * i; }
};

struct OddBytes {
  static constexpr int Byte(int i) { return 2 * i + 1; }
};

/// A pair of weights for one factor of byte products.
ZOR_ALWAYS_INLINE __m512i Weights(int even, int odd) {
  return _mm512_set1_epi16(static_cast<short>(even | odd << 8));
}

/// One colour of 64 columns: each lane holds the even ones of its 16 columns, then the odd ones.
ZOR_ALWAYS_INLINE __m512i Pack(__m512i even, __m512i odd) {
  return _mm512_packus_epi16(_mm512_srai_epi16(even, 6), _mm512_srai_epi16(odd, 6));
}

template <class Pixel>
struct Block {
  static constexpr std::int32_t kColumns = 64;
  std::uint8_t* target;
  const std::uint8_t* source;

  /// The 6-bit arithmetic, with the columns by parity, so that chroma is worked out once a pair.
  /// The luma offset of 16 x 74 is taken off the chroma terms: those keep their 16 bits, and each
  /// sum saturates once as before.
  template <bool kStream>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const __m512i low = LoadedOnce(source + 2 * x);
    const __m512i high = LoadedOnce(source + 2 * x + 64);
    const __m512i luma = _mm512_permutex2var_epi8(low, TableOf<EvenBytes>(), high);
    const __m512i chroma = _mm512_xor_si512(  // U V, as signed bytes
        _mm512_permutex2var_epi8(low, TableOf<OddBytes>(), high), _mm512_set1_epi8(-128));

    const __m512i offset = _mm512_set1_epi16(16 * 74);
    const __m512i blue = _mm512_sub_epi16(_mm512_maddubs_epi16(Weights(129, 0), chroma), offset);
    const __m512i green = _mm512_add_epi16(_mm512_maddubs_epi16(Weights(25, 52), chroma), offset);
    const __m512i red = _mm512_sub_epi16(_mm512_maddubs_epi16(Weights(0, 102), chroma), offset);
    const __m512i even = _mm512_maddubs_epi16(luma, Weights(74, 0));
    const __m512i odd = _mm512_maddubs_epi16(luma, Weights(0, 74));
    Store64Pixels<Pixel, kStream>(
        target + x * Pixel::kBytes,
        Pack(_mm512_adds_epi16(even, blue), _mm512_adds_epi16(odd, blue)),
        Pack(_mm512_subs_epi16(even, green), _mm512_subs_epi16(odd, green)),
        Pack(_mm512_adds_epi16(even, red), _mm512_adds_epi16(odd, red)));
  }
};

}  // namespace

std::int32_t Yuy2ToRgb32RowAvx512(std::uint8_t* target, const std::uint8_t* source,
                                  std::int32_t columns, bool stream) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, stream, Block<Rgb32>{target, source});
}

std::int32_t Yuy2ToRgb24RowAvx512(std::uint8_t* target, const std::uint8_t* source,
                                  std::int32_t columns, bool stream) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, stream, Block<Rgb24>{target, source});
}

}  // namespace zor
