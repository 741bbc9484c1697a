// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/stretch.h"

#include <algorithm>
#include <cstddef>

#include "scale/packed.h"
#include "scale/planar.h"
#include "scale/scale_picture.h"
#include "surface/fill.h"

namespace zor {
namespace {

/// A rectangle in a picture: where it starts and how large it is.
struct Part {
  std::int64_t left;
  std::int64_t top;
  std::int32_t width;
  std::int32_t height;
};

/// @return the length of a side; one that doesn't fit counts as none.
std::int32_t Side(std::int64_t from, std::int64_t to) noexcept {
  const std::int64_t length = to - from;
  return length < 0 || length > INT32_MAX ? 0 : static_cast<std::int32_t>(length);
}

Part PartOf(const RECT* rect, std::uint32_t width, std::int32_t height) noexcept {
  if (rect == nullptr) return {0, 0, Side(0, width), Side(0, height)};
  return {rect->left, rect->top, Side(rect->left, rect->right), Side(rect->top, rect->bottom)};
}

Part ToEvenSize(Part part) noexcept {
  part.width &= ~1;
  part.height &= ~1;
  return part;
}

/// Calls paint for the four bands around a rectangle: top, bottom, left, right.
template <class Paint>
void PaintBands(const RECT& rect, std::int32_t width, std::int32_t height, Paint paint) noexcept {
  const RECT bands[] = {{0, 0, width, rect.top},
                        {0, rect.bottom, width, height},
                        {0, rect.top, rect.left, rect.bottom},
                        {rect.right, rect.top, width, rect.bottom}};
  for (const RECT& band : bands) paint(band);
}

/// @return the bytes of a packed picture: whole strides, or more where its last row is longer.
std::int64_t PackedBytes(std::uint32_t width, std::int32_t height, std::int32_t stride,
                         std::int32_t bytesPerPixel) noexcept {
  const std::int64_t row = std::int64_t{width} * bytesPerPixel;
  return (std::int64_t{height} - 1) * stride + std::max<std::int64_t>(row, stride);
}

/// Where the planes of a picture stand, from its first byte on.
struct PlaneOffsets {
  std::int64_t first;
  std::int64_t second;
  std::int64_t end;
};

/// The part of a planar picture. The chroma planes' offsets are the side's own: source and target
/// round odd sizes differently.
PlanarPicture PlanarPart(std::uint8_t* pixels, const PlaneOffsets& offsets, const Part& part,
                         std::int32_t stride, std::int64_t chromaOffset) noexcept {
  const auto plane = [=](std::int64_t start, std::int64_t offset, std::int64_t end) {
    return Plane{pixels + start + offset, std::max<std::int64_t>(0, end - start - offset)};
  };
  return {plane(0, part.top * stride + part.left, offsets.first),
          plane(offsets.first, chromaOffset, offsets.second),
          plane(offsets.second, chromaOffset, offsets.end),
          part.width,
          part.height,
          stride};
}

PlanarPicture PlanarSource(std::uint8_t* pixels, const Part& part, std::int64_t height,
                           std::int32_t stride) noexcept {
  const std::int64_t chroma = (height / 2) * (stride / 2);
  const std::int64_t first = height * stride;
  return PlanarPart(pixels, {first, first + chroma, first + 2 * chroma}, part, stride,
                    part.left / 2 + ((part.top / 2) * stride) / 2);
}

PlanarPicture PlanarTarget(std::uint8_t* pixels, const Part& part, std::int64_t height,
                           std::int32_t stride) noexcept {
  const std::int64_t first = height * stride;
  const std::int64_t second = first + ((stride / 2) * height) / 2;
  return PlanarPart(pixels, {first, second, second + (height / 2) * (stride / 2)}, part, stride,
                    (part.top / 2) * (stride / 2) + part.left / 2);
}

}  // namespace

std::uint32_t StretchRgb(std::uint8_t* target, std::uint32_t targetWidth, std::int32_t targetHeight,
                         const RECT* targetRect, std::int32_t targetStride, std::int32_t targetBits,
                         std::uint32_t targetOrientation, const std::uint8_t* source,
                         std::uint32_t sourceWidth, std::int32_t sourceHeight,
                         const RECT* sourceRect, std::int32_t sourceStride, std::int32_t sourceBits,
                         std::uint32_t sourceOrientation, std::int32_t fit,
                         ScaleMode mode) noexcept {
  if (target == nullptr || source == nullptr) return 0;
  if (mode > SCALE_AREA) return 1;
  const Part to = PartOf(targetRect, targetWidth, targetHeight);
  const Part from = PartOf(sourceRect, sourceWidth, sourceHeight);
  const std::int32_t targetBytes = targetBits / 8;
  const std::int32_t sourceBytes = sourceBits / 8;
  const bool turnedOver = (targetOrientation == 0) != (sourceOrientation == 0);
  if (to.width > 0 && to.height > 0 && from.width > 0 && from.height > 0) {
    std::uint8_t* start = target + to.top * targetStride + to.left * targetBytes;
    if (turnedOver) start += (std::int64_t{to.height} - 1) * targetStride;
    const ScaleTarget scaleTarget{
        start,
        to.width,
        to.height,
        turnedOver ? -targetStride : targetStride,
        targetBytes,
        target,
        target + PackedBytes(targetWidth, targetHeight, targetStride, targetBytes)};
    const ScaleSource scaleSource{
        source + from.top * sourceStride + from.left * sourceBytes,
        from.width,
        from.height,
        sourceStride,
        sourceBytes,
        source,
        source + PackedBytes(sourceWidth, sourceHeight, sourceStride, sourceBytes)};
    const ScaleAxes axes{0.0, static_cast<double>(from.width) / to.width, 0.0,
                         static_cast<double>(from.height) / to.height};
    ScalePicture(scaleTarget, scaleSource, axes, mode, nullptr);
  }
  if (targetRect != nullptr && fit != 0) {
    const auto width = static_cast<std::int32_t>(targetWidth);
    PaintBands(*targetRect, width, targetHeight, [=](RECT band) {
      // On a picture that is turned over the bands walk upward from the start of the buffer, so
      // that only their row 0 lies in it.
      if (turnedOver) band.bottom = std::min<decltype(band.bottom)>(band.bottom, 1);
      FillRectRgb(target, width, targetHeight, targetStride, &band, targetBits, 0);
    });
  }
  return 1;
}

std::uint32_t StretchYuv420(std::uint8_t* source, std::uint32_t sourceWidth,
                            std::int32_t sourceHeight, std::int32_t sourceStride,
                            const RECT* sourceRect, std::uint8_t* target, std::uint32_t targetWidth,
                            std::int32_t targetHeight, std::int32_t targetStride,
                            const RECT* targetRect, std::int32_t fit, ScaleMode mode,
                            std::uint32_t bandColour) noexcept {
  if (source == nullptr || target == nullptr) return 0;
  Part from = PartOf(sourceRect, sourceWidth, sourceHeight);
  Part to = PartOf(targetRect, targetWidth, targetHeight);
  if (sourceRect != nullptr) from = ToEvenSize(from);
  if (targetRect != nullptr) to = ToEvenSize(to);
  ScaleYuv420(PlanarTarget(target, to, targetHeight, targetStride),
              PlanarSource(source, from, sourceHeight, sourceStride), mode);
  if (targetRect != nullptr && fit != 0) {
    const auto width = static_cast<std::int32_t>(targetWidth);
    PaintBands(*targetRect, width, targetHeight, [=](const RECT& band) {
      FillRectYuv420(target, width, targetHeight, targetStride, &band, bandColour);
    });
  }
  return 1;
}

std::uint32_t StretchYuy2(const std::uint8_t* source, std::uint32_t sourceWidth,
                          std::int32_t sourceHeight, std::int32_t sourceStride,
                          const RECT* sourceRect, std::uint8_t* target, std::uint32_t targetWidth,
                          std::int32_t targetHeight, std::int32_t targetStride,
                          const RECT* targetRect, std::int32_t fit, ScaleMode /*mode*/,
                          std::uint32_t bandColour) noexcept {
  if (source == nullptr || target == nullptr) return 0;
  const Part from = ToEvenSize(PartOf(sourceRect, sourceWidth, sourceHeight));
  const Part to = ToEvenSize(PartOf(targetRect, targetWidth, targetHeight));
  ScaleYuy2(
      {target + to.top * targetStride + to.left * 2, to.width, to.height, targetStride},
      {source + from.top * sourceStride + from.left * 2, from.width, from.height, sourceStride});
  if (targetRect != nullptr && fit != 0) {
    const auto width = static_cast<std::int32_t>(targetWidth);
    PaintBands(*targetRect, width, targetHeight, [=](const RECT& band) {
      FillRectPacked422(target, width, targetHeight, targetStride, &band, bandColour);
    });
  }
  return 1;
}

}  // namespace zor
