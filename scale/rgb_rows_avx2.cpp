// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <immintrin.h>

#include "platform/compiler.h"
#include "scale/lerp.h"
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

/// Columns whose vectors may be stored whole: 16 bytes for four pixels, of which 3-byte pixels fill
/// 12, so that the pixels behind them take the rest.
ZOR_ALWAYS_INLINE std::int32_t WholeColumns(const RgbColumns& columns, std::int32_t readable) {
  const std::int32_t room = columns.targetBytes == 3 ? columns.count - 2 : columns.count;
  return readable < room ? readable : room;
}

/// Stores 16 bytes: four pixels of four bytes, or of three, behind which four bytes are 0.
template <int kTo>
ZOR_ALWAYS_INLINE void StoreFour(std::uint8_t* out, __m128i pixels) {
  if (kTo == 3) {
    pixels = _mm_shuffle_epi8(
        pixels, _mm_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1));
  }
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), pixels);
}

template <int kTo>
ZOR_ALWAYS_INLINE void PickRow(std::uint8_t* out, const std::uint8_t* row,
                               const RgbColumns& columns) {
  const __m128i keep = _mm_set1_epi32(columns.sourceBytes == 4 ? -1 : 0x00FFFFFF);
  const std::int32_t wide = WholeColumns(columns, WideColumns(columns, 4));
  std::int32_t i = 0;
  for (; i + 4 <= wide; i += 4) {
    const std::int32_t* at = columns.offsets + i;
    const __m128i pixels = _mm_setr_epi32(
        static_cast<int>(Load32(row + at[0])), static_cast<int>(Load32(row + at[1])),
        static_cast<int>(Load32(row + at[2])), static_cast<int>(Load32(row + at[3])));
    StoreFour<kTo>(out + kTo * i, _mm_and_si128(pixels, keep));
  }
  for (; i < columns.count; ++i) {
    const std::uint8_t* p = row + columns.offsets[i];
    for (int k = 0; k < kTo; ++k) {
      out[kTo * i + k] = k < columns.sourceBytes ? p[k] : std::uint8_t{0};
    }
  }
}

void Pick(std::uint8_t* out, const std::uint8_t* row, const RgbColumns& columns,
          const std::uint8_t*) noexcept {
  columns.targetBytes == 4 ? PickRow<4>(out, row, columns) : PickRow<3>(out, row, columns);
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

/// Four columns of a row, interpolated across, in lanes of 16 bits: 0 2 | 1 3.
template <int kFrom>
ZOR_ALWAYS_INLINE __m256i FourAcross(const std::uint8_t* row, const RgbColumns& columns,
                                     std::int32_t i) {
  const std::int32_t* at = columns.offsets + i;
  // Each product fits 16 bits unsigned, and so does the sum of a pair.
  const __m256i a = _mm256_mullo_epi16(LoadPairs<kFrom>(row + at[0], row + at[1]),
                                       PairWeights(columns.words + i));
  const __m256i b = _mm256_mullo_epi16(LoadPairs<kFrom>(row + at[2], row + at[3]),
                                       PairWeights(columns.words + i + 2));
  // a: a0p a0q | a1p a1q, b likewise
  return _mm256_srli_epi16(
      _mm256_add_epi16(_mm256_unpacklo_epi64(a, b), _mm256_unpackhi_epi64(a, b)), 8);
}

/// Interpolates whole columns four by four, and the rest byte by byte.
/// @param four gives the lanes of four columns. @param one gives one byte of a column.
template <int kFrom, int kTo, class Four, class One>
ZOR_ALWAYS_INLINE void LerpRow(std::uint8_t* out, const RgbColumns& columns, Four four, One one) {
  const std::int32_t wide = WholeColumns(columns, WideColumns(columns, 8));
  std::int32_t i = 0;
  for (; i + 4 <= wide; i += 4) {
    const __m256i bytes = _mm256_packus_epi16(four(i), _mm256_setzero_si256());
    // pixels 0 2 - - | 1 3 - - -> 0 1 2 3
    const __m256i ordered =
        _mm256_permutevar8x32_epi32(bytes, _mm256_setr_epi32(0, 4, 1, 5, 0, 0, 0, 0));
    StoreFour<kTo>(out + kTo * i, _mm256_castsi256_si128(ordered));
  }
  for (; i < columns.count; ++i) {
    for (int k = 0; k < kTo; ++k) {
      out[kTo * i + k] = k < kFrom ? static_cast<std::uint8_t>(one(i, k)) : std::uint8_t{0};
    }
  }
}

template <int kFrom>
ZOR_ALWAYS_INLINE std::int32_t OneAcross(const std::uint8_t* row, const RgbColumns& columns,
                                         std::int32_t i, int k) {
  const std::uint8_t* p = row + columns.offsets[i] + k;
  return Lerp(p[0], p[kFrom], static_cast<std::int32_t>(columns.words[i] & 255));
}

template <int kFrom, int kTo>
struct AcrossRow {
  static void Run(std::uint8_t* out, const std::uint8_t* row, const RgbColumns& columns) {
    LerpRow<kFrom, kTo>(
        out, columns, [&](std::int32_t i) { return FourAcross<kFrom>(row, columns, i); },
        [&](std::int32_t i, int k) { return OneAcross<kFrom>(row, columns, i, k); });
  }
};

template <int kFrom, int kTo>
struct BothRows {
  static void Run(std::uint8_t* out, const std::uint8_t* row, const std::uint8_t* nextRow,
                  const RgbColumns& columns, std::int32_t weight) {
    const __m256i w = _mm256_set1_epi16(static_cast<short>(weight));
    const __m256i minus = _mm256_sub_epi16(_mm256_set1_epi16(256), w);
    LerpRow<kFrom, kTo>(
        out, columns,
        [&](std::int32_t i) {
          const __m256i a = _mm256_mullo_epi16(FourAcross<kFrom>(row, columns, i), minus);
          const __m256i b = _mm256_mullo_epi16(FourAcross<kFrom>(nextRow, columns, i), w);
          return _mm256_srli_epi16(_mm256_add_epi16(a, b), 8);
        },
        [&](std::int32_t i, int k) {
          return Lerp(OneAcross<kFrom>(row, columns, i, k),
                      OneAcross<kFrom>(nextRow, columns, i, k), weight);
        });
  }
};

/// Runs a kernel for the columns' pixel sizes.
template <template <int, int> class Kernel, class... Arguments>
ZOR_ALWAYS_INLINE void Dispatch(const RgbColumns& columns, Arguments... arguments) {
  if (columns.sourceBytes == 4) {
    columns.targetBytes == 4 ? Kernel<4, 4>::Run(arguments...) : Kernel<4, 3>::Run(arguments...);
  } else {
    columns.targetBytes == 4 ? Kernel<3, 4>::Run(arguments...) : Kernel<3, 3>::Run(arguments...);
  }
}

void Across(std::uint8_t* out, const std::uint8_t* row, const RgbColumns& columns,
            const std::uint8_t*) noexcept {
  Dispatch<AcrossRow, std::uint8_t*, const std::uint8_t*, const RgbColumns&>(columns, out, row,
                                                                             columns);
}

void Both(std::uint8_t* out, const std::uint8_t* row, const std::uint8_t* nextRow,
          const RgbColumns& columns, const std::uint8_t*, std::int32_t weight) noexcept {
  Dispatch<BothRows, std::uint8_t*, const std::uint8_t*, const std::uint8_t*, const RgbColumns&>(
      columns, out, row, nextRow, columns, weight);
}

void Pack(std::uint8_t* out, const std::uint8_t* in, std::int32_t count) noexcept {
  std::int32_t i = 0;
  // 12 of 16 bytes a store: the four behind them belong to the next pixels.
  for (; i + 6 <= count; i += 4) {
    StoreFour<3>(out + 3 * i, _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + 4 * i)));
  }
  for (; i < count; ++i) {
    for (int k = 0; k < 3; ++k) out[3 * i + k] = in[4 * i + k];
  }
}

}  // namespace

const RgbRowForm kRgbRowsAvx2 = {
    "avx2", {NoPlan, MakeNoPlan, Pick}, {NoPlan, MakeNoPlan, Across, Both}, Pack};

}  // namespace zor
