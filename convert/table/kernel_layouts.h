// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// From what to what each row of the kernel table converts.

#include <cstddef>
#include <cstdint>

namespace zor {

enum class Layout : std::uint8_t {
  kMemory,        ///< a block of bytes
  kPlane,         ///< rows of bytes
  kLumaChroma,    ///< luma plane, then a plane of rows U V U V ...
  kYuv420,        ///< planes of luma, U and V, each with an address of its own
  kYvu420,        ///< the same with the chroma planes exchanged
  kYuy2,          ///< Y0 U Y1 V
  kYvyu,          ///< Y0 V Y1 U
  kUyvy,          ///< U Y0 V Y1
  kVyuy,          ///< V Y0 U Y1
  kRgb32,         ///< B G R and a fourth byte
  kRgb24,         ///< B G R
  kRgb565,        ///< 16-bit words: 5 bits red, 6 green, 5 blue from the top
  kRgb555,        ///< 16-bit words: 5 bits each below a bit of 0
  kRgb32Luma,     ///< B G R Y
  kLumaChroma16,  ///< as kLumaChroma, chroma behind the height taken up to a multiple of 16
  kRgb32Keyed,    ///< B G R and 255 or 0
};

struct KernelLayouts {
  Layout source;
  Layout target;
};

/// Destinations of every packed source, in the order of their rows.
inline constexpr Layout kNineTargets[] = {Layout::kYuv420, Layout::kYuy2,   Layout::kYvyu,
                                          Layout::kUyvy,   Layout::kVyuy,   Layout::kRgb32,
                                          Layout::kRgb24,  Layout::kRgb565, Layout::kRgb555};
inline constexpr std::size_t kPackedRowsBegin = 17;

inline constexpr KernelLayouts kPlanarRows[kPackedRowsBegin] = {
    {Layout::kMemory, Layout::kMemory},    {Layout::kPlane, Layout::kPlane},
    {Layout::kLumaChroma, Layout::kRgb24}, {Layout::kLumaChroma, Layout::kRgb32},
    {Layout::kYuv420, Layout::kYuv420},    {Layout::kYuv420, Layout::kYvu420},
    {Layout::kYuv420, Layout::kYuy2},      {Layout::kYuv420, Layout::kYvyu},
    {Layout::kYuv420, Layout::kUyvy},      {Layout::kYuv420, Layout::kVyuy},
    {Layout::kYuv420, Layout::kRgb32},     {Layout::kYuv420, Layout::kRgb24},
    {Layout::kYuv420, Layout::kRgb565},    {Layout::kYuv420, Layout::kRgb555},
    {Layout::kYuv420, Layout::kRgb32Luma}, {Layout::kYuv420, Layout::kLumaChroma16},
    {Layout::kYuv420, Layout::kRgb32Keyed}};

/// @param row 0 to 88
constexpr KernelLayouts LayoutsOfRow(std::size_t row) noexcept {
  if (row < kPackedRowsBegin) return kPlanarRows[row];
  // The packed sources come in the order of the packed targets.
  const std::size_t packed = row - kPackedRowsBegin;
  return {kNineTargets[1 + packed / 9], kNineTargets[packed % 9]};
}

}  // namespace zor
