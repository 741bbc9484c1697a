// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <zorsurface/result_codes.h>

#include <algorithm>

#include "compositor/swap_planes.h"
#include "convert/fast_mem_copy.h"
#include "convert/feature_word.h"
#include "platform/pixel_block.h"
#include "surface/engine_table.h"
#include "surface/lent_memory.h"
#include "surface/mask_from_alpha.h"
#include "surface/picture_layout.h"
#include "surface/surface_buffer.h"

namespace zor {
namespace {

/// What a conversion makes of a format.
struct TargetLayout {
  std::int32_t bitsPerPixel;
  std::uint32_t orientation;
  std::int64_t stride;
  std::int64_t bytes;
};

TargetLayout LayoutOf(std::int32_t format, std::int64_t width, std::int64_t height) {
  switch (format) {
    case FORMAT_RGB24: {
      const std::int64_t stride = ((width * 24 + 31) >> 3) & ~std::int64_t{3};
      return {24, 0, stride, stride * height};
    }
    case FORMAT_RGB32:
      return {32, 0, width * 4, width * 4 * height};
    case FORMAT_YUV420:
      return {12, 1, width, (width * height * 3) >> 1};
    default:
      return {16, 1, width * 2, width * 2 * height};
  }
}

/// @return the bytes that a kernel may write from the target's first on: whole rows, and what forms
///         are defined to write behind them.
std::int64_t ReachOf(std::int32_t format, std::int64_t width, std::int64_t height,
                     std::int64_t stride) {
  if (height < 1) return 0;
  if (format == FORMAT_YUV420) return PlanarReach(stride, width, height);
  const std::int64_t pixel = format == FORMAT_RGB24 ? 3 : format == FORMAT_RGB32 ? 4 : 2;
  // The MMX form runs 8 columns past a row whose width has bit 3 set.
  const bool overruns = format == FORMAT_RGB32 && (CpuFeatureWord & kFeatureSse2) == 0 &&
                        (CpuFeatureWord & kFeatureMmx) != 0 && (width & 8) != 0;
  return (height - 1) * stride + (width + (overruns ? 8 : 0)) * pixel;
}

/// @return whether each next row starts one pixel further left, as at every odd width.
bool Drifts(const SurfaceDescription& picture) {
  return (picture.width & 1) != 0;
}

/// @return whether a conversion writes every byte of a new block. Rows that end at their stride and
///         come in pairs leave none out, but the SSE2 form from RGB to YUY2, which leaves what
///         isn't a whole block of 8 columns.
bool WritesEveryByte(const SurfaceDescription& from, std::int32_t format, std::int64_t stride) {
  if (Drifts(from) || (from.height & 1) != 0 || from.height < 4) return false;
  if (format == FORMAT_RGB24) return stride == std::int64_t{from.width} * 3;
  return format != FORMAT_YUY2 || !IsRgb(from.format) || (from.width & 7) == 0;
}

void SwapByteByByte(std::uint8_t* first, std::uint8_t* second, std::int64_t count) {
  for (std::int64_t i = 0; i < count; ++i) std::swap(first[i], second[i]);
}

void CopyBlock(std::uint8_t* target, const std::uint8_t* source, std::int64_t bytes) {
  if (bytes > 0) FastMemCopy(target, source, static_cast<std::size_t>(bytes));
}

}  // namespace

std::int32_t CZorSurfaceBuffer::ExchangeChroma() {
  const std::int64_t stride = description_.stride;
  const std::int64_t height = description_.height;
  if (!PictureInBlock(description_, pixels_)) return VED_OK;
  if (direct_.active != 0) {
    // Three block copies: a stride that differs shifts the rows.
    const std::int64_t d = direct_.stride;
    const std::int64_t row = std::min(stride, d);
    const std::int64_t plane = stride * height;
    const std::int64_t chroma = (row * height) >> 2;
    std::uint8_t* memory = direct_.memory;
    CopyBlock(memory, pixels_, height * row);
    CopyBlock(memory + d * height, pixels_ + plane + plane / 4, chroma);
    CopyBlock(memory + d * height + ((d * height) >> 2), pixels_ + plane, chroma);
    return VED_OK;
  }
  const std::int64_t n = ((stride / 2) * height) >> 1;
  std::uint8_t* first = pixels_ + stride * height;
  if ((CpuFeatureWord & kFeatureSse2) == 0) {
    SwapByteByByte(first, first + n, n);
  } else if (SwapPlanes(first, first + n, static_cast<std::int32_t>(n)) == 0) {
    return VED_E_KERNEL;
  }
  return VED_OK;
}

std::int32_t CZorSurfaceBuffer::ConvertNow(std::int32_t format) {
  if (pixels_ == nullptr) return E_FAIL;
  SurfaceDescription& d = description_;
  if (format == d.format) {
    if (direct_.active != 0) CopyRowsOut(direct_.memory, direct_.stride, direct_.orientation);
    return VED_OK;
  }
  const Conversion* conversion = FindConversion(d.format, format);
  if (conversion == nullptr) return VED_E_UNSUPPORTED;
  if (conversion->wrapper == nullptr) return ExchangeChroma();

  // Planes need even sizes. Under direct output the resize draws into the host's memory, and the
  // conversion then overwrites it from the picture as it is.
  if (format == FORMAT_YUV420 && IsRgb(d.format) && ((d.width | d.height) & 1) != 0) {
    const std::int32_t before = d.format;
    ResizeNow(d.width & ~1, d.height & ~1, 1, 1);
    // The resize of a mask that leads back to this surface runs the rest of its queue.
    if (d.format != before) return ConvertNow(format);
  }
  return direct_.active != 0 ? ConvertIntoMemory(*conversion) : ConvertIntoBlock(*conversion);
}

std::int32_t CZorSurfaceBuffer::ConvertIntoMemory(const Conversion& conversion) {
  const SurfaceDescription& d = description_;
  const std::int64_t bytes = PictureBytes(direct_.stride, d.height, conversion.to == FORMAT_YUV420);
  const std::int64_t reach = ReachOf(conversion.to, d.width, d.height, direct_.stride);
  LentMemory lent(direct_.memory, bytes, reach, Drifts(d), d.width, d.height);
  if (lent.Target() == nullptr) return VED_E_OUTOFMEMORY;
  RunConversion(conversion, lent.Target(), direct_.stride,
                d.Orientation != direct_.orientation ? 1 : 0);
  lent.Finish();
  return VED_OK;
}

std::int32_t CZorSurfaceBuffer::ConvertIntoBlock(const Conversion& conversion) {
  SurfaceDescription& d = description_;
  const TargetLayout layout = LayoutOf(conversion.to, d.width, d.height);
  SurfaceDescription result = d;
  result.format = conversion.to;
  result.bitsPerPixel = layout.bitsPerPixel;
  result.Orientation = layout.orientation;
  result.stride = static_cast<std::int32_t>(layout.stride);
  std::uint8_t* const target =
      AllocateResult(result, layout.bytes,
                     WritesEveryByte(d, conversion.to, layout.stride) ? BlockContents::kUnset
                                                                      : BlockContents::kZero);
  if (target == nullptr) return VED_E_OUTOFMEMORY;
  if (d.format == FORMAT_RGB32 && mask_ == nullptr) mask_ = BuildMaskFromAlpha(d, pixels_);
  RunConversion(conversion, target, result.stride, d.Orientation);
  ReplacePixels(target);
  d = result;
  return VED_OK;
}

void CZorSurfaceBuffer::RunConversion(const Conversion& conversion, std::uint8_t* target,
                                      std::int32_t targetStride, std::uint32_t rowOrder) const {
  const SurfaceDescription& d = description_;
  if (!PictureInBlock(d, pixels_)) return;
  conversion.wrapper(pixels_, d.stride, target, targetStride, d.width, d.height, CpuFeatureWord,
                     conversion.bitDepth != 0 ? conversion.bitDepth : d.bitsPerPixel,
                     conversion.orientation == OrientationArgument::kRowOrder ? rowOrder : 1);
}

}  // namespace zor
