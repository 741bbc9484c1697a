// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/rgb_packing.h"
#include "convert/rgb_to_yuv420.h"
#include "convert/rgb_to_yuy2.h"
#include "convert/table/entries.h"
#include "convert/yuv420_to_rgb.h"
#include "convert/yuv420_to_yuy2.h"
#include "convert/yuy2_rgb.h"
#include "convert/yuy2_to_yuv420.h"

namespace zor {
namespace {

void CopyMemory(void* destination, const void* source, std::size_t bytes) noexcept {
  std::memcpy(destination, source, bytes);
}

/// The rows of an RGB source to packed pictures. What a picture becomes in its own format is set
/// over these by the copies, but for the filter of 16-bit pixels, which stays.
template <class Pixel>
constexpr void AddRgbSource(KernelRows& rows, std::size_t begin) {
  AddPackingTargets<PlainForm, RgbSource<Pixel>>(rows, begin);
  const auto add = [&rows, begin]<class Target>(std::size_t index, Target) {
    rows[begin + index] = {ConvertPixels<Pixel, Target, Straight>,
                           ConvertPixels<Pixel, Target, Smoothed>};
  };
  add(5, Rgb32{});
  add(6, Rgb24{});
  add(7, Rgb565{});
  add(8, Rgb555{});
}

/// To YUY2 through the filter, in the argument list of the kernels that write into their source.
template <class Pixel>
constexpr KernelEntry kSmoothedToYuy2 =
    ConvertPackedPairs<PlainForm, RgbSource<Pixel>, Yuy2, Smoothed, std::uint8_t>;

constexpr KernelRows PlainRows() {
  KernelRows rows = {};
  rows[0].straight = CopyMemory;
  rows[15] = {PlanesToLumaChroma<CopyRows<CopyMemory>, Straight, PlainPlaneBlocks>,
              PlanesToLumaChroma<SmoothRows<PlainPlaneBlocks>, Smoothed, PlainPlaneBlocks>};
  AddPlanarSources<PlainForm>(rows);
  AddPackingSources<PlainForm>(rows);
  AddRgbToPlanes<PlainForm>(rows);
  AddRgbSource<Rgb32>(rows, kRgb32Rows);
  AddRgbSource<Rgb24>(rows, kRgb24Rows);
  AddRgbSource<Rgb565>(rows, kRgb565Rows);
  AddRgbSource<Rgb555>(rows, kRgb555Rows);
  AddStraightCopies<CopyRows<CopyMemory>>(rows);
  AddSmoothedCopies<SmoothRows<PlainPlaneBlocks>>(rows);

  // The kernels that the wrappers call.
  rows[6].smoothed = ConvertYuv420ToYuy2Plain;
  rows[10].smoothed = ConvertYuv420ToRgb32Plain;
  rows[11].smoothed = ConvertYuv420ToRgb24Plain;
  rows[17].smoothed = ConvertYuy2ToYuv420Plain;
  rows[22].straight = ConvertYuy2ToRgb32Plain;
  rows[23].straight = ConvertYuy2ToRgb24Plain;
  rows[53].straight = ConvertRgb32ToYuv420Plain;
  rows[54] = {ConvertRgb32ToYuy2Plain, kSmoothedToYuy2<Rgb32>};
  rows[59].straight = ConvertRgb32ToRgb24;
  rows[62].straight = ConvertRgb24ToYuv420Plain;
  rows[63] = {ConvertRgb24ToYuy2Plain, kSmoothedToYuy2<Rgb24>};
  rows[67].straight = ConvertRgb24ToRgb32;
  return rows;
}

}  // namespace

constexpr KernelRows kPlainKernelRows = PlainRows();

// Holds the plain forms before any code runs.
constinit KernelRows ConversionKernelTable = PlainRows();

}  // namespace zor
