// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <immintrin.h>

#include "ipl/move_rows_vector.h"

namespace zor {
namespace {

ZOR_ALWAYS_INLINE __m128i Load16(const std::uint8_t* from) noexcept {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}

ZOR_ALWAYS_INLINE __m256i Load16Twice(const std::uint8_t* low, const std::uint8_t* high) noexcept {
  return _mm256_inserti128_si256(_mm256_castsi128_si256(Load16(low)), Load16(high), 1);
}

ZOR_ALWAYS_INLINE __m256i Load(const std::uint8_t* from) noexcept {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
}

ZOR_ALWAYS_INLINE void Store(std::uint8_t* to, __m256i bytes) noexcept {
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), bytes);
}

/// Turns 4 x 4 words in each half. v[i] holds row i | row i + 4; then column i of both.
ZOR_ALWAYS_INLINE void TurnWordsInHalves(__m256i (&v)[4]) noexcept {
  const __m256i ab01 = _mm256_unpacklo_epi32(v[0], v[1]);  // a0 b0 a1 b1 | ...
  const __m256i ab23 = _mm256_unpackhi_epi32(v[0], v[1]);
  const __m256i cd01 = _mm256_unpacklo_epi32(v[2], v[3]);
  const __m256i cd23 = _mm256_unpackhi_epi32(v[2], v[3]);
  v[0] = _mm256_unpacklo_epi64(ab01, cd01);
  v[1] = _mm256_unpackhi_epi64(ab01, cd01);
  v[2] = _mm256_unpacklo_epi64(ab23, cd23);
  v[3] = _mm256_unpackhi_epi64(ab23, cd23);
}

struct Gray {
  static constexpr std::int64_t kPixel = 1;
  static constexpr std::int32_t kColumns = 32;
  static constexpr std::int32_t kRows = 16;
  static constexpr std::int32_t kCount = 32;

  static ZOR_ALWAYS_INLINE void Turn(std::uint8_t* to, std::int64_t step, const std::uint8_t* from,
                                     std::int64_t columnStep) noexcept {
    __m256i v[16];
    __m256i w[16];
#pragma GCC unroll 16
    for (int i = 0; i < 16; ++i) {
      v[i] = Load16Twice(from + i * columnStep, from + (i + 16) * columnStep);
    }
    // Row i beside row i + 8, four times: each turn doubles the run of rows that stand together.
#pragma GCC unroll 4
    for (int turn = 0; turn < 4; ++turn) {
#pragma GCC unroll 8
      for (int i = 0; i < 8; ++i) {
        w[2 * i] = _mm256_unpacklo_epi8(v[i], v[i + 8]);
        w[2 * i + 1] = _mm256_unpackhi_epi8(v[i], v[i + 8]);
      }
#pragma GCC unroll 16
      for (int i = 0; i < 16; ++i) v[i] = w[i];
    }
#pragma GCC unroll 16
    for (int i = 0; i < 16; ++i) Store(to + i * step, v[i]);
  }

  static ZOR_ALWAYS_INLINE void Reverse(std::uint8_t* to, const std::uint8_t* from) noexcept {
    const __m256i order = _mm256_broadcastsi128_si256(
        _mm_setr_epi8(15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0));
    Store(to, _mm256_shuffle_epi8(_mm256_permute4x64_epi64(Load(from), 0x4E), order));
  }
};

struct Rgb32 {
  static constexpr std::int64_t kPixel = 4;
  static constexpr std::int32_t kColumns = 8;
  static constexpr std::int32_t kRows = 8;
  static constexpr std::int32_t kCount = 8;

  static ZOR_ALWAYS_INLINE void Turn(std::uint8_t* to, std::int64_t step, const std::uint8_t* from,
                                     std::int64_t columnStep) noexcept {
#pragma GCC unroll 2
    for (int half = 0; half < 2; ++half) {
      __m256i v[4];
#pragma GCC unroll 4
      for (int i = 0; i < 4; ++i) {
        const std::uint8_t* at = from + i * columnStep + 16 * half;
        v[i] = Load16Twice(at, at + 4 * columnStep);
      }
      TurnWordsInHalves(v);
#pragma GCC unroll 4
      for (int i = 0; i < 4; ++i) Store(to + (4 * half + i) * step, v[i]);
    }
  }

  static ZOR_ALWAYS_INLINE void Reverse(std::uint8_t* to, const std::uint8_t* from) noexcept {
    Store(to, _mm256_permutevar8x32_epi32(Load(from), _mm256_setr_epi32(7, 6, 5, 4, 3, 2, 1, 0)));
  }
};

/// Writes the low 12 bytes of each half, side by side.
ZOR_ALWAYS_INLINE void Store24(std::uint8_t* to, __m256i v) noexcept {
  v = _mm256_permutevar8x32_epi32(v, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 7, 7));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm256_castsi256_si128(v));
  _mm_storel_epi64(reinterpret_cast<__m128i*>(to + 16), _mm256_extracti128_si256(v, 1));
}

struct Rgb24 {
  static constexpr std::int64_t kPixel = 3;
  static constexpr std::int32_t kColumns = 8;
  static constexpr std::int32_t kRows = 8;
  static constexpr std::int32_t kCount = 8;

  static ZOR_ALWAYS_INLINE void Turn(std::uint8_t* to, std::int64_t step, const std::uint8_t* from,
                                     std::int64_t columnStep) noexcept {
    const __m256i squeeze = _mm256_broadcastsi128_si256(
        _mm_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1));
    const __m128i first = _mm_setr_epi8(0, 1, 2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11, -1);
    const __m128i second = _mm_setr_epi8(4, 5, 6, -1, 7, 8, 9, -1, 10, 11, 12, -1, 13, 14, 15, -1);
#pragma GCC unroll 2
    for (int half = 0; half < 2; ++half) {
      // The second four pixels are read from four bytes in front, so that the eight end the read.
      const __m256i spread = _mm256_broadcastsi128_si256(half == 0 ? first : second);
      __m256i v[4];
#pragma GCC unroll 4
      for (int i = 0; i < 4; ++i) {
        const std::uint8_t* at = from + i * columnStep + 8 * half;
        v[i] = _mm256_shuffle_epi8(Load16Twice(at, at + 4 * columnStep), spread);
      }
      TurnWordsInHalves(v);
#pragma GCC unroll 4
      for (int i = 0; i < 4; ++i) {
        Store24(to + (4 * half + i) * step, _mm256_shuffle_epi8(v[i], squeeze));
      }
    }
  }

  static ZOR_ALWAYS_INLINE void Reverse(std::uint8_t* to, const std::uint8_t* from) noexcept {
    // Pixels 4 to 7 from byte 8 on, then pixels 0 to 3.
    const __m256i order = _mm256_setr_epi8(13, 14, 15, 10, 11, 12, 7, 8, 9, 4, 5, 6, -1, -1, -1, -1,
                                           9, 10, 11, 6, 7, 8, 3, 4, 5, 0, 1, 2, -1, -1, -1, -1);
    Store24(to, _mm256_shuffle_epi8(Load16Twice(from + 8, from), order));
  }
};

}  // namespace

const MoveForm kMovesAvx2 = {"avx2", KernelsOf<Gray>(), KernelsOf<Rgb24>(), KernelsOf<Rgb32>()};

}  // namespace zor
