// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Constant tables for the permutations of AVX-512 forms. Included by AVX-512 forms only.

#include <immintrin.h>

#include <cstdint>

#include "platform/compiler.h"

namespace zor {
namespace {

template <class Element, int kElements>
struct alignas(64) PermuteTable {
  Element index[kElements];
};

template <class Rule>
struct ByteTableOf {
  static constexpr PermuteTable<std::uint8_t, 64> Make() {
    PermuteTable<std::uint8_t, 64> table{};
    for (int i = 0; i < 64; ++i) table.index[i] = static_cast<std::uint8_t>(Rule::Byte(i));
    return table;
  }
  static constexpr PermuteTable<std::uint8_t, 64> kTable = Make();
};

template <class Rule>
struct WordTableOfRule {
  static constexpr PermuteTable<std::uint16_t, 32> Make() {
    PermuteTable<std::uint16_t, 32> table{};
    for (int i = 0; i < 32; ++i) table.index[i] = static_cast<std::uint16_t>(Rule::Word(i));
    return table;
  }
  static constexpr PermuteTable<std::uint16_t, 32> kTable = Make();
};

/// The register whose byte i is `Rule::Byte(i)`.
template <class Rule>
ZOR_ALWAYS_INLINE __m512i TableOf() {
  return _mm512_load_si512(&ByteTableOf<Rule>::kTable);
}

/// The register whose 16-bit word i is `Rule::Word(i)`.
template <class Rule>
ZOR_ALWAYS_INLINE __m512i WordTableOf() {
  return _mm512_load_si512(&WordTableOfRule<Rule>::kTable);
}

}  // namespace
}  // namespace zor
