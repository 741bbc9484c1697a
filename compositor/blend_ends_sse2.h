// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The few samples at a row's end that have weights of their own. Included by the vector forms
/// only.

#include <emmintrin.h>

#include <cstring>

#include "compositor/blend_rows.h"
#include "compositor/blend_statement.h"
#include "platform/compiler.h"

namespace zor {
namespace {

/// Eight samples in 16-bit lanes.
struct EightSamples {
  __m128i child;
  __m128i target;

  /// Each lane by a weight of its own; 256 leaves the target as it is.
  ZOR_ALWAYS_INLINE void Blend(__m128i weights) {
    const __m128i part = _mm_mullo_epi16(_mm_sub_epi16(target, child), weights);
    target = _mm_srli_epi16(_mm_add_epi16(_mm_slli_epi16(child, 8), part), 8);
  }
};

ZOR_ALWAYS_INLINE __m128i LoadEight(const std::uint8_t* p) {
  return _mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)),
                           _mm_setzero_si128());
}
ZOR_ALWAYS_INLINE __m128i LoadFour(const std::uint8_t* p) {
  int four;
  std::memcpy(&four, p, sizeof four);
  return _mm_unpacklo_epi8(_mm_cvtsi32_si128(four), _mm_setzero_si128());
}
ZOR_ALWAYS_INLINE __m128i LoadTwoFours(const std::uint8_t* low, const std::uint8_t* high) {
  return _mm_unpacklo_epi64(LoadFour(low), LoadFour(high));
}
ZOR_ALWAYS_INLINE void StoreFour(std::uint8_t* p, __m128i bytes) {
  const int four = _mm_cvtsi128_si32(bytes);
  std::memcpy(p, &four, sizeof four);
}

/// The lanes from 8 - count on.
ZOR_ALWAYS_INLINE __m128i LastLanes(std::size_t count) {
  static constexpr std::int16_t kLanes[16] = {0,  0,  0,  0,  0,  0,  0,  0,
                                              -1, -1, -1, -1, -1, -1, -1, -1};
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(kLanes + count));
}

/// The lanes of the pairs among that many last columns, for four samples of U and four of V.
ZOR_ALWAYS_INLINE __m128i LastPairs(std::size_t columns) {
  static constexpr std::int16_t kLanes[8][4] = {{0, 0, 0, 0},    {0, 0, 0, 0},   {0, 0, 0, -1},
                                                {0, 0, -1, 0},   {0, 0, -1, -1}, {0, -1, -1, 0},
                                                {0, -1, -1, -1}, {-1, -1, -1, 0}};
  const __m128i four = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(kLanes[columns]));
  return _mm_unpacklo_epi64(four, four);
}

/// The weights in some lanes, and 256 in the others.
ZOR_ALWAYS_INLINE __m128i WeightsIn(__m128i lanes, __m128i weights) {
  const __m128i stays = _mm_set1_epi16(256);
  return _mm_add_epi16(stays, _mm_and_si128(lanes, _mm_sub_epi16(weights, stays)));
}

/// Blends the samples from @p grouped on, fewer than eight, by the odd samples of the mask.
ZOR_ALWAYS_INLINE void BlendByOdds(const ChromaRow& row, const std::uint8_t* mask,
                                   std::size_t grouped, std::size_t count) {
  if (grouped == count) return;
  for (int plane = 0; plane < 2; ++plane) {
    std::uint8_t* const target = row.target[plane];
    const std::uint8_t* const child = row.child[plane];
    if (count < 8) {
      for (std::size_t i = grouped; i < count; ++i) {
        target[i] = BlendSample(child[i], target[i], mask[2 * i + 1]);
      }
      continue;
    }
    const std::size_t at = count - 8;
    const auto* pairs = reinterpret_cast<const __m128i*>(mask + 2 * at);
    const __m128i odds = _mm_srli_epi16(_mm_loadu_si128(pairs), 8);
    EightSamples samples{LoadEight(child + at), LoadEight(target + at)};
    samples.Blend(WeightsIn(LastLanes(count - grouped), odds));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(target + at),
                     _mm_packus_epi16(samples.target, samples.target));
  }
}

/// `BlendRows::leftOver`.
void LeftOver(std::uint8_t* target, const std::uint8_t* child, const ChromaRow& chroma,
              std::uint32_t weight, std::size_t columns, bool followed) noexcept {
  const __m128i weights = _mm_set1_epi16(static_cast<short>(weight));
  if (followed) {
    EightSamples luma{LoadEight(child), LoadEight(target)};
    luma.Blend(WeightsIn(LastLanes(columns), weights));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(target),
                     _mm_packus_epi16(luma.target, luma.target));
  }
  const __m128i pairs = WeightsIn(LastPairs(columns), weights);
  EightSamples both{LoadTwoFours(chroma.child[0], chroma.child[1]),
                    LoadTwoFours(chroma.target[0], chroma.target[1])};
  both.Blend(pairs);
  if (followed) both.Blend(pairs);
  const __m128i bytes = _mm_packus_epi16(both.target, both.target);
  StoreFour(chroma.target[0], bytes);
  StoreFour(chroma.target[1], _mm_srli_si128(bytes, 4));
}

/// `BlendRows::passing`.
std::uint64_t Passing(const std::uint8_t* y, const std::uint8_t* u, const std::uint8_t* v,
                      const KeySamples& key, std::size_t count) noexcept {
  const auto all = [](std::uint8_t sample) { return _mm_set1_epi8(static_cast<char>(sample)); };
  const __m128i keyY = all(key.y);
  const __m128i keyU = all(key.u);
  const __m128i keyV = all(key.v);
  std::uint64_t passing = 0;
  std::size_t i = 0;
  for (; i + 16 <= count; i += 16) {
    const auto load = [=](const std::uint8_t* p) {
      return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p + i / 2));
    };
    const __m128i chroma = _mm_and_si128(_mm_cmpeq_epi8(load(u), keyU),  //
                                         _mm_cmpeq_epi8(load(v), keyV));
    const __m128i luma =
        _mm_cmpeq_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(y + i)), keyY);
    const __m128i equal = _mm_and_si128(luma, _mm_unpacklo_epi8(chroma, chroma));
    passing |= static_cast<std::uint64_t>(_mm_movemask_epi8(equal) ^ 0xFFFF) << i;
  }
  for (; i < count; ++i) {
    const bool differs = y[i] != key.y || u[i / 2] != key.u || v[i / 2] != key.v;
    passing |= static_cast<std::uint64_t>(differs) << i;
  }
  return passing;
}

}  // namespace
}  // namespace zor
