// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/rgb_to_yuv420.h"
#include "convert/rgb_to_yuy2.h"
#include "convert/table/entries.h"
#include "convert/table/form_sse2.h"
#include "convert/table/forwards.h"
#include "convert/yuv420_to_rgb.h"
#include "convert/yuv420_to_yuy2.h"
#include "convert/yuy2_rgb.h"
#include "convert/yuy2_to_yuv420.h"

namespace zor {
namespace {

/// Blocks of 128 bytes, through the caches, then the rest.
void CopyMemory128(void* destination, const void* source, std::size_t bytes) noexcept {
  auto* to = static_cast<std::uint8_t*>(destination);
  const auto* from = static_cast<const std::uint8_t*>(source);
  for (; bytes >= 128; bytes -= 128, to += 128, from += 128) {
    __m128i words[8];
    for (int i = 0; i < 8; ++i) words[i] = LoadSixteen(from + 16 * i);
    for (int i = 0; i < 8; ++i) StoreSixteen(to + 16 * i, words[i]);
  }
  std::memcpy(to, from, bytes);
}

/// Rows without blocks of their own, those from RGB to packed pictures, stay forwards.
constexpr KernelRows Sse2Rows() {
  KernelRows rows = Forwards<false>();
  rows[0].straight = CopyMemory128;
  rows[15] = {PlanesToLumaChroma<CopyRows<CopyMemory128>, Straight, Sse2Form>,
              PlanesToLumaChroma<SmoothRows<Sse2Form>, Smoothed, Sse2Form>};
  AddPlanarSources<Sse2Form>(rows);
  AddPackingSources<Sse2Form>(rows);
  AddRgbToPlanes<Sse2Form>(rows);
  AddStraightCopies<CopyRows<CopyMemory128>>(rows);
  AddSmoothedCopies<SmoothRows<Sse2Form>>(rows);

  // The kernels that the wrappers call.
  rows[6].smoothed = ConvertYuv420ToYuy2Sse2;
  rows[10].smoothed = ConvertYuv420ToRgb32Sse2;
  rows[11].straight = ConvertYuv420ToRgb24Sse2;
  rows[17].smoothed = ConvertYuy2ToYuv420Sse2;
  rows[22].straight = ConvertYuy2ToRgb32Sse2;
  rows[23].straight = ConvertYuy2ToRgb24Sse2;
  rows[53].straight = ConvertRgb32ToYuv420Sse2;
  rows[54].straight = ConvertRgb32ToYuy2Sse2;
  rows[62].straight = ConvertRgb24ToYuv420Sse2;
  rows[63].straight = ConvertRgb24ToYuy2Sse2;
  return rows;
}

}  // namespace

constexpr KernelRows kSse2KernelRows = Sse2Rows();

}  // namespace zor
