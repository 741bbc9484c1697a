// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/rgb_picture.h"

#include <algorithm>

#include "platform/memory.h"

namespace zor {
namespace {

bool IsBox(ScaleMode mode) {
  return mode == SCALE_BOX || mode == SCALE_BOX_FADE;
}

/// The memory of a picture that is walked from @p first on; what the caller knows of it, or the
/// walk's own rows.
ByteRange MemoryOf(const std::uint8_t* begin, const std::uint8_t* end, const std::uint8_t* first,
                   std::int64_t stride, std::int32_t rows, std::int64_t rowBytes) {
  if (begin != nullptr) return {begin, end};
  const std::uint8_t* last = first + (rows - 1) * stride;
  return {std::min(first, last), std::max(first, last) + rowBytes};
}

/// Where the right run begins. A 3-byte destination row always ends in it.
void SettleAcross(const ScaleTarget& target, const ScaleSource& source, AxisEdges* edges) {
  if (target.bytesPerPixel == 3) {
    edges->last = std::max(edges->first, std::min(edges->last, target.width - 1));
  } else if (source.bytesPerPixel == 3) {
    edges->last = std::min(edges->last, target.width - 1);
  }
}

/// Where the bottom band begins. Some routes give it one row at least.
void SettleDown(const ScaleTarget& target, const ScaleSource& source, ScaleMode mode,
                AxisEdges* edges) {
  const bool held = target.bytesPerPixel == 3 && !IsBox(mode) &&
                    (source.bytesPerPixel == 3 || mode == SCALE_BILINEAR_FADE);
  if (held) edges->last = std::min(edges->last, target.height - 1);
}

}  // namespace

void ScaleRgb(const ScaleTarget& target, const ScaleSource& source, const ScaleAxes& axes,
              ScaleMode mode, const std::uint32_t* background) noexcept {
  const auto width = static_cast<std::uint64_t>(target.width);
  const auto height = static_cast<std::uint64_t>(target.height);
  WorkArray<std::uint32_t> block(2 * (width + height));
  if (!block) return;
  std::uint32_t* wordsAcross = block.data();
  auto* offsetsAcross = reinterpret_cast<std::int32_t*>(wordsAcross + width);
  std::uint32_t* wordsDown = wordsAcross + 2 * width;
  auto* offsetsDown = reinterpret_cast<std::int32_t*>(wordsDown + height);

  RgbPicture picture{target,
                     source,
                     axes,
                     mode,
                     *background,
                     MemoryOf(source.memory, source.memoryEnd, source.pixels, source.stride,
                              source.height, std::int64_t{source.width} * source.bytesPerPixel),
                     MemoryOf(target.memory, target.memoryEnd, target.pixels, target.stride,
                              target.height, std::int64_t{target.width} * target.bytesPerPixel)};
  AxisEdges across =
      BuildAxisTable(target.width, source.width, wordsAcross, offsetsAcross, source.bytesPerPixel,
                     axes.startX, axes.stepX, mode == SCALE_ROW_PAIRS ? SCALE_BILINEAR : mode);
  AxisEdges down = BuildAxisTable(target.height, source.height, wordsDown, offsetsDown,
                                  source.stride, axes.startY, axes.stepY, mode);
  SettleAcross(target, source, &across);
  SettleDown(target, source, mode, &down);
  picture.across = {wordsAcross, offsetsAcross, across};
  picture.down = {wordsDown, offsetsDown, down};
  IsBox(mode) ? BoxScaleRows(picture) : InterpolateRgb(picture);
}

}  // namespace zor
