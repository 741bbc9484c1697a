// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Runs of entries that several forms have in common.

#include "convert/table/kernel_layouts.h"
#include "convert/table/kernel_table.h"
#include "convert/table/kernels.h"
#include "convert/table/plane_copies.h"

namespace zor {

/// The first row of each packed source.
inline constexpr std::size_t kYuy2Rows = kPackedRowsBegin;
inline constexpr std::size_t kYvyuRows = kYuy2Rows + 9;
inline constexpr std::size_t kUyvyRows = kYvyuRows + 9;
inline constexpr std::size_t kVyuyRows = kUyvyRows + 9;
inline constexpr std::size_t kRgb32Rows = kVyuyRows + 9;
inline constexpr std::size_t kRgb24Rows = kRgb32Rows + 9;
inline constexpr std::size_t kRgb565Rows = kRgb24Rows + 9;
inline constexpr std::size_t kRgb555Rows = kRgb565Rows + 9;
static_assert(kRgb555Rows + 9 == kKernelRows);

/// An entry and the same one with the row filter.
template <class Form, class Target>
constexpr KernelRow FromPlanesRow() {
  return {ConvertPlanes<Form, Target, Straight>, ConvertPlanes<Form, Target, Smoothed>};
}
template <class Form, class Pixel>
constexpr KernelRow FromLumaChromaRow() {
  return {ConvertLumaChroma<Form, RgbTarget<Pixel>, Straight>,
          ConvertLumaChroma<Form, RgbTarget<Pixel>, Smoothed>};
}
template <class Form, class Source, class Target>
constexpr KernelRow PackedPairsRow() {
  return {ConvertPackedPairs<Form, Source, Target, Straight>,
          ConvertPackedPairs<Form, Source, Target, Smoothed>};
}
template <class Form, class Source>
constexpr KernelRow ToPlanesRow() {
  return {ConvertToPlanes<Form, Source, Straight>, ConvertToPlanes<Form, Source, Smoothed>};
}

/// Rows 2, 3, 6 to 14 and 16.
template <class Form>
constexpr void AddPlanarSources(KernelRows& rows) {
  rows[2] = FromLumaChromaRow<Form, Rgb24>();
  rows[3] = FromLumaChromaRow<Form, Rgb32>();
  rows[6] = FromPlanesRow<Form, Yuy2>();
  rows[7] = FromPlanesRow<Form, Yvyu>();
  rows[8] = FromPlanesRow<Form, Uyvy>();
  rows[9] = FromPlanesRow<Form, Vyuy>();
  rows[10] = FromPlanesRow<Form, RgbTarget<Rgb32>>();
  rows[11] = FromPlanesRow<Form, RgbTarget<Rgb24>>();
  rows[12] = FromPlanesRow<Form, RgbTarget<Rgb565>>();
  rows[13] = FromPlanesRow<Form, RgbTarget<Rgb555>>();
  rows[14] = FromPlanesRow<Form, Rgb32WithLuma>();
  rows[16] = {ConvertPlanesKeyed<Form, Straight>, ConvertPlanesKeyed<Form, Smoothed>};
}

/// The four rows from any source with pairs of columns to the 4:2:2 packings. A packing's own row
/// is left to the copies.
template <class Form, class Source>
constexpr void AddPackingTargets(KernelRows& rows, std::size_t begin) {
  const auto add = [&rows, begin]<class Target>(std::size_t index, Target) {
    if constexpr (!std::is_same_v<Source, Target>) {
      rows[begin + index] = PackedPairsRow<Form, Source, Target>();
    }
  };
  add(1, Yuy2{});
  add(2, Yvyu{});
  add(3, Uyvy{});
  add(4, Vyuy{});
}

/// All rows of a 4:2:2 packing but its copy.
template <class Form, class Source>
constexpr void AddPackingSource(KernelRows& rows, std::size_t begin) {
  rows[begin] = ToPlanesRow<Form, Source>();
  AddPackingTargets<Form, Source>(rows, begin);
  rows[begin + 5] = PackedPairsRow<Form, Source, RgbTarget<Rgb32>>();
  rows[begin + 6] = PackedPairsRow<Form, Source, RgbTarget<Rgb24>>();
  rows[begin + 7] = PackedPairsRow<Form, Source, RgbTarget<Rgb565>>();
  rows[begin + 8] = PackedPairsRow<Form, Source, RgbTarget<Rgb555>>();
}

template <class Form>
constexpr void AddPackingSources(KernelRows& rows) {
  AddPackingSource<Form, Yuy2>(rows, kYuy2Rows);
  AddPackingSource<Form, Yvyu>(rows, kYvyuRows);
  AddPackingSource<Form, Uyvy>(rows, kUyvyRows);
  AddPackingSource<Form, Vyuy>(rows, kVyuyRows);
}

/// The rows that lead from an RGB format to planes.
template <class Form>
constexpr void AddRgbToPlanes(KernelRows& rows) {
  rows[kRgb32Rows] = ToPlanesRow<Form, RgbSource<Rgb32>>();
  rows[kRgb24Rows] = ToPlanesRow<Form, RgbSource<Rgb24>>();
  rows[kRgb565Rows] = ToPlanesRow<Form, RgbSource<Rgb565>>();
  rows[kRgb555Rows] = ToPlanesRow<Form, RgbSource<Rgb555>>();
}

/// Where the 4-byte, 3-byte and 2-byte pictures that are copied by their bytes have their rows. The
/// filter takes 16-bit pixels apart, so that those have straight copies only.
inline constexpr std::size_t kPackingCopies[] = {kYuy2Rows + 1, kYvyuRows + 2, kUyvyRows + 3,
                                                 kVyuyRows + 4};
inline constexpr std::size_t kRgb32Copy = kRgb32Rows + 5;
inline constexpr std::size_t kRgb24Copy = kRgb24Rows + 6;
inline constexpr std::size_t kRgbWordCopies[] = {kRgb565Rows + 7, kRgb555Rows + 8};

/// Entries by the row copy `kPlane`: row 1 and all that shares it, 16-bit pixels apart.
/// @tparam kEntry which of a row's entries they are
template <PackedKernel* kPlane, KernelEntry KernelRow::*kEntry>
constexpr void AddByteCopies(KernelRows& rows) {
  rows[1].*kEntry = kPlane;
  rows[4].*kEntry = CopyPlanes<kPlane, false>;
  rows[5].*kEntry = CopyPlanes<kPlane, true>;
  for (const std::size_t row : kPackingCopies) rows[row].*kEntry = CopyPicture<2, kPlane>;
  rows[kRgb32Copy].*kEntry = CopyPicture<4, kPlane>;
  rows[kRgb24Copy].*kEntry = CopyPicture<3, kPlane>;
}

/// First entries by the straight row copy `kPlane`.
template <PackedKernel* kPlane>
constexpr void AddStraightCopies(KernelRows& rows) {
  AddByteCopies<kPlane, &KernelRow::straight>(rows);
  for (const std::size_t row : kRgbWordCopies) rows[row].straight = CopyPicture<2, kPlane>;
}

/// Second entries by the smoothing row copy `kPlane`.
template <PackedKernel* kPlane>
constexpr void AddSmoothedCopies(KernelRows& rows) {
  AddByteCopies<kPlane, &KernelRow::smoothed>(rows);
}

}  // namespace zor
