// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <emmintrin.h>

#include "ipl/move_rows_vector.h"

namespace zor {
namespace {

ZOR_ALWAYS_INLINE __m128i Load(const std::uint8_t* from) noexcept {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}

ZOR_ALWAYS_INLINE void Store(std::uint8_t* to, __m128i bytes) noexcept {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to), bytes);
}

struct Gray {
  static constexpr std::int64_t kPixel = 1;
  static constexpr std::int32_t kColumns = 16;
  static constexpr std::int32_t kRows = 16;
  static constexpr std::int32_t kCount = 16;

  static ZOR_ALWAYS_INLINE void Turn(std::uint8_t* to, std::int64_t step, const std::uint8_t* from,
                                     std::int64_t columnStep) noexcept {
    __m128i v[16];
    __m128i w[16];
#pragma GCC unroll 16
    for (int i = 0; i < 16; ++i) v[i] = Load(from + i * columnStep);
      // Row i beside row i + 8, four times: each turn doubles the run of rows that stand together.
#pragma GCC unroll 4
    for (int turn = 0; turn < 4; ++turn) {
#pragma GCC unroll 8
      for (int i = 0; i < 8; ++i) {
        w[2 * i] = _mm_unpacklo_epi8(v[i], v[i + 8]);
        w[2 * i + 1] = _mm_unpackhi_epi8(v[i], v[i + 8]);
      }
#pragma GCC unroll 16
      for (int i = 0; i < 16; ++i) v[i] = w[i];
    }
#pragma GCC unroll 16
    for (int i = 0; i < 16; ++i) Store(to + i * step, v[i]);
  }

  static ZOR_ALWAYS_INLINE void Reverse(std::uint8_t* to, const std::uint8_t* from) noexcept {
    __m128i v = Load(from);
    v = _mm_or_si128(_mm_slli_epi16(v, 8), _mm_srli_epi16(v, 8));
    v = _mm_shufflehi_epi16(_mm_shufflelo_epi16(v, 0x1B), 0x1B);
    Store(to, _mm_shuffle_epi32(v, 0x4E));
  }
};

struct Rgb32 {
  static constexpr std::int64_t kPixel = 4;
  static constexpr std::int32_t kColumns = 4;
  static constexpr std::int32_t kRows = 4;
  static constexpr std::int32_t kCount = 4;

  static ZOR_ALWAYS_INLINE void Turn(std::uint8_t* to, std::int64_t step, const std::uint8_t* from,
                                     std::int64_t columnStep) noexcept {
    const __m128i a = Load(from);
    const __m128i b = Load(from + columnStep);
    const __m128i c = Load(from + 2 * columnStep);
    const __m128i d = Load(from + 3 * columnStep);
    const __m128i ab01 = _mm_unpacklo_epi32(a, b);  // a0 b0 a1 b1
    const __m128i ab23 = _mm_unpackhi_epi32(a, b);
    const __m128i cd01 = _mm_unpacklo_epi32(c, d);
    const __m128i cd23 = _mm_unpackhi_epi32(c, d);
    Store(to, _mm_unpacklo_epi64(ab01, cd01));
    Store(to + step, _mm_unpackhi_epi64(ab01, cd01));
    Store(to + 2 * step, _mm_unpacklo_epi64(ab23, cd23));
    Store(to + 3 * step, _mm_unpackhi_epi64(ab23, cd23));
  }

  static ZOR_ALWAYS_INLINE void Reverse(std::uint8_t* to, const std::uint8_t* from) noexcept {
    Store(to, _mm_shuffle_epi32(Load(from), 0x1B));
  }
};

}  // namespace

// Three bytes a pixel would want a byte shuffle.
const MoveForm kMovesSse2 = {
    "sse2", KernelsOf<Gray>(), {1, 1, TurnPlain3, ReversePlain3}, KernelsOf<Rgb32>()};

}  // namespace zor
