// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Packed RGB out of AVX-512 registers of one colour each. Included by AVX-512 forms only.

#include "convert/permute_table_avx512.h"
#include "convert/pixel_formats.h"
#include "convert/store_avx512.h"

namespace zor {
namespace {

/// Where column i of 64 stands: each lane holds the even ones of its 16 columns, then the odd ones,
/// as a pack of words by parity leaves them.
constexpr int ByteOfColumn(int column) {
  return column / 16 * 16 + column % 2 * 8 + column % 16 / 2;
}

/// B and G of 32 columns in turn, out of their two registers.
template <int kHalf>
struct BlueGreen {
  static constexpr int Byte(int i) { return ByteOfColumn(32 * kHalf + i / 2) + i % 2 * 64; }
};

/// B, G, R of sixteen columns out of a register of B and G of 32 columns and the register of R. The
/// fourth byte is masked off.
template <int kQuarter>
struct WithRed {
  static constexpr int Byte(int i) {
    const int column = i / 4;
    return i % 4 == 2 ? 64 + ByteOfColumn(16 * kQuarter + column)
                      : 32 * (kQuarter % 2) + 2 * column + i % 4 % 2;
  }
};

/// B and G of bytes 64 x `kThird` and on of 3-byte pixels, out of their two registers; R is put in.
template <int kThird>
struct BlueGreenOf24 {
  static constexpr int Byte(int i) {
    const int byte = 64 * kThird + i;
    return ByteOfColumn(byte / 3) + (byte % 3 == 1 ? 64 : 0);
  }
};

template <int kThird>
struct RedOf24 {
  static constexpr int Byte(int i) { return ByteOfColumn((64 * kThird + i) / 3); }
  static constexpr std::uint64_t Mask() {
    std::uint64_t mask = 0;
    for (int i = 0; i < 64; ++i) {
      if ((64 * kThird + i) % 3 == 2) mask |= std::uint64_t{1} << i;
    }
    return mask;
  }
};

template <bool kStream, int kQuarter>
ZOR_ALWAYS_INLINE void StoreQuarter32(std::uint8_t* target, __m512i blueGreen, __m512i red) {
  Store64<kStream>(target + 64 * kQuarter,
                   _mm512_maskz_permutex2var_epi8(0x7777777777777777u, blueGreen,
                                                  TableOf<WithRed<kQuarter>>(), red));
}

template <bool kStream, int kThird>
ZOR_ALWAYS_INLINE void StoreThird24(std::uint8_t* target, __m512i blue, __m512i green,
                                    __m512i red) {
  const __m512i blueGreen = _mm512_permutex2var_epi8(blue, TableOf<BlueGreenOf24<kThird>>(), green);
  constexpr std::uint64_t kRed = RedOf24<kThird>::Mask();
  Store64<kStream>(target + 64 * kThird,
                   _mm512_mask_permutexvar_epi8(blueGreen, kRed, TableOf<RedOf24<kThird>>(), red));
}

/// Stores 64 pixels; columns stand in the registers as `ByteOfColumn` says.
template <class Pixel, bool kStream>
ZOR_ALWAYS_INLINE void Store64Pixels(std::uint8_t* target, __m512i blue, __m512i green,
                                     __m512i red) {
  if constexpr (Pixel::kBytes == 4) {
    const __m512i low = _mm512_permutex2var_epi8(blue, TableOf<BlueGreen<0>>(), green);
    const __m512i high = _mm512_permutex2var_epi8(blue, TableOf<BlueGreen<1>>(), green);
    StoreQuarter32<kStream, 0>(target, low, red);
    StoreQuarter32<kStream, 1>(target, low, red);
    StoreQuarter32<kStream, 2>(target, high, red);
    StoreQuarter32<kStream, 3>(target, high, red);
  } else {
    StoreThird24<kStream, 0>(target, blue, green, red);
    StoreThird24<kStream, 1>(target, blue, green, red);
    StoreThird24<kStream, 2>(target, blue, green, red);
  }
}

}  // namespace
}  // namespace zor
