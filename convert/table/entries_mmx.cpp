// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/fast_mem_copy.h"
#include "convert/rgb_to_yuv420.h"
#include "convert/table/entries.h"
#include "convert/table/forwards.h"
#include "convert/yuv420_to_rgb.h"
#include "convert/yuv420_to_yuy2.h"
#include "convert/yuy2_rgb.h"
#include "convert/yuy2_to_yuv420.h"

namespace zor {
namespace {

constexpr KernelRows MmxRows() {
  KernelRows rows = Forwards<false>();
  rows[0].straight = MemCopyMmx;
  AddStraightCopies<CopyRows<MemCopyMmx>>(rows);
  rows[6].smoothed = ConvertYuv420ToYuy2Mmx;
  rows[10].smoothed = ConvertYuv420ToRgb32Mmx;
  rows[17].smoothed = ConvertYuy2ToYuv420Mmx;
  rows[22].straight = ConvertYuy2ToRgb32Mmx;
  rows[23].straight = ConvertYuy2ToRgb24Mmx;
  rows[53].straight = ConvertRgb32ToYuv420Mmx;
  rows[62].straight = ConvertRgb24ToYuv420Mmx;
  return rows;
}

/// A second entry's SSE form is the plain one: the average instruction that came with SSE rounds
/// as it does, where MMX truncates.
constexpr KernelRows SseRows() {
  KernelRows rows = Forwards<true>();
  rows[0].straight = MemCopyStream;
  rows[1].straight = CopyRows<MemCopyStream>;
  return rows;
}

}  // namespace

constexpr KernelRows kMmxKernelRows = MmxRows();
constexpr KernelRows kSseKernelRows = SseRows();

}  // namespace zor
