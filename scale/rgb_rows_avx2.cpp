// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <immintrin.h>

#include "platform/compiler.h"
#include "scale/rgb_rows.h"

namespace zor {
namespace {

std::int64_t NoPlan(const RgbColumns&) noexcept {
  return 0;
}
void MakeNoPlan(const RgbColumns&, std::uint8_t*) noexcept {}

/// Columns, from the first on, whose pixel can be read @p bytes wide inside of the row.
ZOR_ALWAYS_INLINE std::int32_t WideColumns(const RgbColumns& columns, std::int64_t bytes) {
  std::int32_t count = columns.count;
  while (count > 0 && columns.offsets[count - 1] + bytes > columns.rowBytes) --count;
  return count;
}

ZOR_ALWAYS_INLINE std::uint32_t Load32(const std::uint8_t* p) {
  std::uint32_t word;
  __builtin_memcpy(&word, p, 4);
  return word;
}

void Pick(std::uint8_t* out, const std::uint8_t* row, const RgbColumns& columns,
          const std::uint8_t*) noexcept {
  const std::uint32_t keep = columns.pixelBytes == 4 ? 0xFFFFFFFFu : 0x00FFFFFFu;
  const std::int32_t wide = WideColumns(columns, 4);
  std::int32_t i = 0;
  for (; i + 8 <= wide; i += 8) {
    const std::int32_t* at = columns.offsets + i;
    const __m256i pixels = _mm256_setr_epi32(
        static_cast<int>(Load32(row + at[0])), static_cast<int>(Load32(row + at[1])),
        static_cast<int>(Load32(row + at[2])), static_cast<int>(Load32(row + at[3])),
        static_cast<int>(Load32(row + at[4])), static_cast<int>(Load32(row + at[5])),
        static_cast<int>(Load32(row + at[6])), static_cast<int>(Load32(row + at[7])));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + 4 * i),
                        _mm256_and_si256(pixels, _mm256_set1_epi32(static_cast<int>(keep))));
  }
  for (; i < columns.count; ++i) {
    const std::uint8_t* p = row + columns.offsets[i];
    out[4 * i] = p[0];
    out[4 * i + 1] = p[1];
    out[4 * i + 2] = p[2];
    out[4 * i + 3] = columns.pixelBytes == 4 ? p[3] : 0;
  }
}

/// Two pixels and the ones behind them: p0 q0 | p1 q1, four lanes of 16 bits each.
template <int kBytes>
ZOR_ALWAYS_INLINE __m256i LoadPairs(const std::uint8_t* first, const std::uint8_t* second) {
  __m128i both = _mm_unpacklo_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(first)),
                                    _mm_loadl_epi64(reinterpret_cast<const __m128i*>(second)));
  if (kBytes == 3) {
    // b0 b1 b2 c0 c1 c2 .. -> b0 b1 b2 0 c0 c1 c2 0
    both = _mm_shuffle_epi8(both,
                            _mm_setr_epi8(0, 1, 2, -1, 3, 4, 5, -1, 8, 9, 10, -1, 11, 12, 13, -1));
  }
  return _mm256_cvtepu8_epi16(both);
}

/// Two pixels' weights: 256 - w for p and w for q, four lanes each.
ZOR_ALWAYS_INLINE __m256i PairWeights(const std::uint32_t* words) {
  const __m128i two = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(words));
  const __m256i w = _mm256_cvtepu8_epi16(_mm_shuffle_epi32(two, _MM_SHUFFLE(1, 1, 0, 0)));
  const __m256i minus = _mm256_sub_epi16(_mm256_set1_epi16(256), w);
  return _mm256_blend_epi32(minus, w, 0xCC);
}

template <int kBytes>
void AcrossRow(std::uint8_t* out, const std::uint8_t* row, const RgbColumns& columns) {
  const std::int32_t wide = WideColumns(columns, 8);
  std::int32_t i = 0;
  for (; i + 4 <= wide; i += 4) {
    const std::int32_t* at = columns.offsets + i;
    // Each product fits 16 bits unsigned, and so does the sum of a pair.
    const __m256i a = _mm256_mullo_epi16(LoadPairs<kBytes>(row + at[0], row + at[1]),
                                         PairWeights(columns.words + i));
    const __m256i b = _mm256_mullo_epi16(LoadPairs<kBytes>(row + at[2], row + at[3]),
                                         PairWeights(columns.words + i + 2));
    // a: a0p a0q | a1p a1q, b likewise -> 0 2 | 1 3
    const __m256i sum = _mm256_add_epi16(_mm256_unpacklo_epi64(a, b), _mm256_unpackhi_epi64(a, b));
    const __m256i bytes = _mm256_packus_epi16(_mm256_srli_epi16(sum, 8), _mm256_setzero_si256());
    // pixels 0 2 - - | 1 3 - - -> 0 1 2 3
    const __m256i ordered =
        _mm256_permutevar8x32_epi32(bytes, _mm256_setr_epi32(0, 4, 1, 5, 0, 0, 0, 0));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 4 * i), _mm256_castsi256_si128(ordered));
  }
  for (; i < columns.count; ++i) {
    const std::uint8_t* p = row + columns.offsets[i];
    const auto w = static_cast<std::int32_t>(columns.words[i] & 255);
    out[4 * i + 3] = 0;
    for (int k = 0; k < kBytes; ++k) {
      out[4 * i + k] = static_cast<std::uint8_t>((p[k] * (256 - w) + p[k + kBytes] * w) >> 8);
    }
  }
}

void Across(std::uint8_t* out, const std::uint8_t* row, const RgbColumns& columns,
            const std::uint8_t*) noexcept {
  columns.pixelBytes == 4 ? AcrossRow<4>(out, row, columns) : AcrossRow<3>(out, row, columns);
}

void Pack(std::uint8_t* out, const std::uint8_t* in, std::int32_t count) noexcept {
  std::int32_t i = 0;
  // 12 of 16 bytes a store: the four behind them belong to the next pixels.
  for (; i + 6 <= count; i += 4) {
    const __m128i four = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + 4 * i));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 3 * i),
                     _mm_shuffle_epi8(four, _mm_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14,
                                                          -1, -1, -1, -1)));
  }
  for (; i < count; ++i) {
    out[3 * i] = in[4 * i];
    out[3 * i + 1] = in[4 * i + 1];
    out[3 * i + 2] = in[4 * i + 2];
  }
}

}  // namespace

const RgbRowForm kRgbRowsAvx2 = {
    "avx2", {NoPlan, MakeNoPlan, Pick}, {NoPlan, MakeNoPlan, Across}, Pack};

}  // namespace zor
