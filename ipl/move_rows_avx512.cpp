// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <immintrin.h>

#include "ipl/move_rows_vector.h"

namespace zor {
namespace {

/// Byte numbers of a permute.
struct alignas(64) Bytes64 {
  std::uint8_t at[64];
};

/// Turns 16 x 16 words. v[i] holds row i; then v[i] holds column i.
ZOR_ALWAYS_INLINE void TurnWords(__m512i (&v)[16]) noexcept {
  __m512i w[16];
#pragma GCC unroll 4
  for (int g = 0; g < 16; g += 4) {
    const __m512i ab01 = _mm512_unpacklo_epi32(v[g], v[g + 1]);  // a0 b0 a1 b1 | a4 b4 a5 b5 | ...
    const __m512i ab23 = _mm512_unpackhi_epi32(v[g], v[g + 1]);
    const __m512i cd01 = _mm512_unpacklo_epi32(v[g + 2], v[g + 3]);
    const __m512i cd23 = _mm512_unpackhi_epi32(v[g + 2], v[g + 3]);
    w[g] = _mm512_unpacklo_epi64(ab01, cd01);  // column 0 | 4 | 8 | 12 of four rows
    w[g + 1] = _mm512_unpackhi_epi64(ab01, cd01);
    w[g + 2] = _mm512_unpacklo_epi64(ab23, cd23);
    w[g + 3] = _mm512_unpackhi_epi64(ab23, cd23);
  }
#pragma GCC unroll 4
  for (int k = 0; k < 4; ++k) {
    const __m512i low = _mm512_shuffle_i32x4(w[k], w[k + 4], 0x88);     // columns k, k + 8
    const __m512i lowOdd = _mm512_shuffle_i32x4(w[k], w[k + 4], 0xDD);  // k + 4, k + 12
    const __m512i high = _mm512_shuffle_i32x4(w[k + 8], w[k + 12], 0x88);
    const __m512i highOdd = _mm512_shuffle_i32x4(w[k + 8], w[k + 12], 0xDD);
    v[k] = _mm512_shuffle_i32x4(low, high, 0x88);
    v[k + 8] = _mm512_shuffle_i32x4(low, high, 0xDD);
    v[k + 4] = _mm512_shuffle_i32x4(lowOdd, highOdd, 0x88);
    v[k + 12] = _mm512_shuffle_i32x4(lowOdd, highOdd, 0xDD);
  }
}

struct Rgb32 {
  static constexpr std::int64_t kPixel = 4;
  static constexpr std::int32_t kColumns = 16;
  static constexpr std::int32_t kRows = 16;
  static constexpr std::int32_t kCount = 16;

  static ZOR_ALWAYS_INLINE void Turn(std::uint8_t* to, std::int64_t step, const std::uint8_t* from,
                                     std::int64_t columnStep) noexcept {
    __m512i v[16];
#pragma GCC unroll 16
    for (int i = 0; i < 16; ++i) v[i] = _mm512_loadu_si512(from + i * columnStep);
    TurnWords(v);
#pragma GCC unroll 16
    for (int i = 0; i < 16; ++i) _mm512_storeu_si512(to + i * step, v[i]);
  }

  static ZOR_ALWAYS_INLINE void Reverse(std::uint8_t* to, const std::uint8_t* from) noexcept {
    const __m512i order = _mm512_setr_epi32(15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0);
    _mm512_storeu_si512(to, _mm512_permutexvar_epi32(order, _mm512_loadu_si512(from)));
  }
};

/// Sixteen pixels of three bytes, as the low 48 bytes.
ZOR_ALWAYS_INLINE __m512i Load48(const std::uint8_t* from) noexcept {
  const __m256i low = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
  const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + 32));
  return _mm512_inserti64x4(_mm512_castsi256_si512(low), _mm256_castsi128_si256(high), 1);
}

ZOR_ALWAYS_INLINE void Store48(std::uint8_t* to, __m512i v) noexcept {
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), _mm512_castsi512_si256(v));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to + 32), _mm512_extracti32x4_epi32(v, 2));
}

constexpr Bytes64 SpreadOrder() {
  Bytes64 order{};
  for (int i = 0; i < 64; ++i) order.at[i] = static_cast<std::uint8_t>(i / 4 * 3 + i % 4);
  return order;
}

constexpr Bytes64 SqueezeOrder() {
  Bytes64 order{};
  for (int i = 0; i < 48; ++i) order.at[i] = static_cast<std::uint8_t>(i / 3 * 4 + i % 3);
  return order;
}

constexpr Bytes64 ReverseOrder(int pixel, int count) {
  Bytes64 order{};
  for (int i = 0; i < pixel * count; ++i) {
    order.at[i] = static_cast<std::uint8_t>((count - 1 - i / pixel) * pixel + i % pixel);
  }
  return order;
}

constexpr Bytes64 kSpread = SpreadOrder();
constexpr Bytes64 kSqueeze = SqueezeOrder();
constexpr Bytes64 kReverse3 = ReverseOrder(3, 16);
constexpr Bytes64 kReverse1 = ReverseOrder(1, 64);

ZOR_ALWAYS_INLINE __m512i Permute(const Bytes64& order, __m512i v) noexcept {
  return _mm512_permutexvar_epi8(_mm512_load_si512(&order), v);
}

struct Rgb24 {
  static constexpr std::int64_t kPixel = 3;
  static constexpr std::int32_t kColumns = 16;
  static constexpr std::int32_t kRows = 16;
  static constexpr std::int32_t kCount = 16;

  static ZOR_ALWAYS_INLINE void Turn(std::uint8_t* to, std::int64_t step, const std::uint8_t* from,
                                     std::int64_t columnStep) noexcept {
    __m512i v[16];
#pragma GCC unroll 16
    for (int i = 0; i < 16; ++i) v[i] = Permute(kSpread, Load48(from + i * columnStep));
    TurnWords(v);
#pragma GCC unroll 16
    for (int i = 0; i < 16; ++i) Store48(to + i * step, Permute(kSqueeze, v[i]));
  }

  static ZOR_ALWAYS_INLINE void Reverse(std::uint8_t* to, const std::uint8_t* from) noexcept {
    Store48(to, Permute(kReverse3, Load48(from)));
  }
};

struct Gray {
  static constexpr std::int64_t kPixel = 1;
  static constexpr std::int32_t kColumns = 64;
  static constexpr std::int32_t kRows = 16;
  static constexpr std::int32_t kCount = 64;

  static ZOR_ALWAYS_INLINE __m128i Load16(const std::uint8_t* from) noexcept {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
  }

  static ZOR_ALWAYS_INLINE void Turn(std::uint8_t* to, std::int64_t step, const std::uint8_t* from,
                                     std::int64_t columnStep) noexcept {
    // A quarter of each vector takes a source row of its own, 16 rows on from the one before, so
    // that sixteen quarters turned in their places make lines of 64 columns.
    __m512i v[16];
    __m512i w[16];
#pragma GCC unroll 16
    for (int i = 0; i < 16; ++i) {
      const std::uint8_t* row = from + i * columnStep;
      const __m256i low = _mm256_inserti128_si256(_mm256_castsi128_si256(Load16(row)),
                                                  Load16(row + 16 * columnStep), 1);
      const __m256i high = _mm256_inserti128_si256(
          _mm256_castsi128_si256(Load16(row + 32 * columnStep)), Load16(row + 48 * columnStep), 1);
      v[i] = _mm512_inserti64x4(_mm512_castsi256_si512(low), high, 1);
    }
    // Row i beside row i + 8, four times: each turn doubles the run of rows that stand together.
#pragma GCC unroll 4
    for (int turn = 0; turn < 4; ++turn) {
#pragma GCC unroll 8
      for (int i = 0; i < 8; ++i) {
        w[2 * i] = _mm512_unpacklo_epi8(v[i], v[i + 8]);
        w[2 * i + 1] = _mm512_unpackhi_epi8(v[i], v[i + 8]);
      }
#pragma GCC unroll 16
      for (int i = 0; i < 16; ++i) v[i] = w[i];
    }
#pragma GCC unroll 16
    for (int i = 0; i < 16; ++i) _mm512_storeu_si512(to + i * step, v[i]);
  }

  static ZOR_ALWAYS_INLINE void Reverse(std::uint8_t* to, const std::uint8_t* from) noexcept {
    _mm512_storeu_si512(to, Permute(kReverse1, _mm512_loadu_si512(from)));
  }
};

}  // namespace

const MoveForm kMovesAvx512 = {"avx512", KernelsOf<Gray>(), KernelsOf<Rgb24>(), KernelsOf<Rgb32>()};

}  // namespace zor
