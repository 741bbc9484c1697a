// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/byte_columns_avx512.h"
#include "scale/rgb_rows.h"

namespace zor {
namespace {

/// The bytes of the target's pixels as columns of their own.
template <int kTo>
struct PixelBytes {
  const RgbColumns& columns;

  ZOR_ALWAYS_INLINE std::int64_t Count() const noexcept {
    return kTo * std::int64_t{columns.count};
  }
  ZOR_ALWAYS_INLINE std::int64_t RowBytes() const noexcept { return columns.rowBytes; }
  ZOR_ALWAYS_INLINE std::int32_t Distance() const noexcept { return columns.sourceBytes; }
  ZOR_ALWAYS_INLINE std::int32_t Offset(std::int64_t i) const noexcept {
    const auto byte = static_cast<std::int32_t>(i % kTo);
    return Lowest(i) + (byte < columns.sourceBytes ? byte : 0);
  }
  ZOR_ALWAYS_INLINE std::int32_t Lowest(std::int64_t i) const noexcept {
    return columns.offsets[i / kTo];
  }
  ZOR_ALWAYS_INLINE std::int32_t Highest(std::int64_t i) const noexcept {
    return Lowest(i) + columns.sourceBytes - 1;
  }
  ZOR_ALWAYS_INLINE std::int32_t Weight(std::int64_t i) const noexcept {
    return static_cast<std::int32_t>(columns.words[i / kTo] & 255);
  }
};

constexpr __mmask64 kColourBytes = 0x7777777777777777;  // three of every four

/// Calls work with the columns' bytes.
template <class Work>
ZOR_ALWAYS_INLINE auto WithBytes(const RgbColumns& columns, Work work) noexcept {
  return columns.targetBytes == 3 ? work(PixelBytes<3>{columns}) : work(PixelBytes<4>{columns});
}

/// @return whether a fourth byte of 0 has to be made.
ZOR_ALWAYS_INLINE bool AddsByte(const RgbColumns& columns) noexcept {
  return columns.targetBytes > columns.sourceBytes;
}

ZOR_ALWAYS_INLINE std::int64_t OrBeyondReach(std::uint64_t bytes) noexcept {
  return bytes == 0 ? -1 : static_cast<std::int64_t>(bytes);
}

std::int64_t PickPlanBytes(const RgbColumns& columns) noexcept {
  return OrBeyondReach(WithBytes(columns, [](auto bytes) { return BytesOfPickPlan(bytes); }));
}
std::int64_t LerpPlanBytes(const RgbColumns& columns) noexcept {
  return OrBeyondReach(WithBytes(columns, [](auto bytes) { return BytesOfLerpPlan(bytes); }));
}
void PlanPick(const RgbColumns& columns, std::uint8_t* plan) noexcept {
  WithBytes(columns, [=](auto bytes) { MakePickPlan(bytes, plan); });
}
void PlanLerp(const RgbColumns& columns, std::uint8_t* plan) noexcept {
  WithBytes(columns, [=](auto bytes) { MakeLerpPlan(bytes, plan); });
}

void Pick(std::uint8_t* out, const std::uint8_t* row, const RgbColumns& columns,
          const std::uint8_t* plan) noexcept {
  AddsByte(columns) ? PickBytes<kColourBytes>(out, row, plan) : PickBytes(out, row, plan);
}

void Across(std::uint8_t* out, const std::uint8_t* row, const RgbColumns& columns,
            const std::uint8_t* plan) noexcept {
  AddsByte(columns) ? LerpBytesAcross<kColourBytes>(out, row, plan)
                    : LerpBytesAcross(out, row, plan);
}

void Both(std::uint8_t* out, const std::uint8_t* row, const std::uint8_t* nextRow,
          const RgbColumns& columns, const std::uint8_t* plan, std::int32_t weight) noexcept {
  AddsByte(columns) ? LerpBytesBoth<kColourBytes>(out, row, nextRow, plan, weight)
                    : LerpBytesBoth(out, row, nextRow, plan, weight);
}

constexpr std::int32_t kPackPixels = 16;

void Pack(std::uint8_t* out, const std::uint8_t* in, std::int32_t count) noexcept {
  alignas(64) static constexpr std::uint8_t kIndex[64] = {
      0,  1,  2,  4,  5,  6,  8,  9,  10, 12, 13, 14, 16, 17, 18, 20, 21, 22, 24, 25, 26, 28,
      29, 30, 32, 33, 34, 36, 37, 38, 40, 41, 42, 44, 45, 46, 48, 49, 50, 52, 53, 54, 56, 57,
      58, 60, 61, 62, 0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0};
  const __m512i index = _mm512_load_si512(kIndex);
  std::int32_t i = 0;
  // 48 of 64 bytes a store: the 16 behind them belong to the next pixels.
  for (; i + 22 <= count; i += kPackPixels) {
    _mm512_storeu_si512(out + 3 * i,
                        _mm512_permutexvar_epi8(index, _mm512_loadu_si512(in + 4 * i)));
  }
  while (i < count) {
    const std::int32_t n = count - i < kPackPixels ? count - i : kPackPixels;
    const __m512i pixels = _mm512_maskz_loadu_epi8(MaskOf(4 * n), in + 4 * i);
    _mm512_mask_storeu_epi8(out + 3 * i, MaskOf(3 * n), _mm512_permutexvar_epi8(index, pixels));
    i += n;
  }
}

}  // namespace

const RgbRowForm kRgbRowsAvx512 = {
    "avx512", {PickPlanBytes, PlanPick, Pick}, {LerpPlanBytes, PlanLerp, Across, Both}, Pack};

}  // namespace zor
