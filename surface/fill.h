// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Painting rectangles with one colour. Rows are in memory order.

#include <zorsurface/types.h>

#include <cstdint>

namespace zor {

/// Luma and chroma of a colour.
struct FillYuv {
  std::uint8_t y;
  std::uint8_t u;
  std::uint8_t v;
};
/// @param colour byte 0 is blue, byte 2 red. @return BT.601 in video range, rounded.
FillYuv FillColourToYuv(std::uint32_t colour) noexcept;

/// Paints RGB pixels; byte 0 of the colour is red and byte 2 blue. 8-bit pixels stay as they are.
/// @param rect null for the whole picture. @return 0 for null pixels or a rectangle out of bounds,
///        otherwise 1. A rectangle without area paints nothing.
std::uint32_t FillRectRgb(std::uint8_t* pixels, std::int32_t width, std::int32_t height,
                          std::int32_t stride, const RECT* rect, std::int32_t bitsPerPixel,
                          std::uint32_t colour) noexcept;

/// Paints a planar picture; byte 0 of the colour is blue and byte 2 red. U goes to the first chroma
/// plane, where the conversions read V. Arguments and result as `FillRectRgb`.
std::uint32_t FillRectYuv420(std::uint8_t* pixels, std::int32_t width, std::int32_t height,
                             std::int32_t stride, const RECT* rect, std::uint32_t colour) noexcept;

/// Paints a packed picture with the bytes U, Y, V, Y, from the picture's first byte on: the
/// rectangle gives the size only. Arguments and result as `FillRectRgb`.
std::uint32_t FillRectPacked422(std::uint8_t* pixels, std::int32_t width, std::int32_t height,
                                std::int32_t stride, const RECT* rect,
                                std::uint32_t colour) noexcept;

/// Paints rows of one value. @param bytesPerPixel 2, 3, 4 or 102 (as 2); others paint nothing.
/// @param memoryEnd the byte behind the picture: the fourth byte that a coloured 3-byte row spills
///        behind its last pixel is written only before it.
void FillRows(std::uint8_t* start, std::int32_t stride, std::int32_t bytesPerPixel,
              std::int32_t width, std::int32_t height, std::uint32_t value,
              const std::uint8_t* memoryEnd) noexcept;

/// One row of 4-byte pixels.
void FillRow32(std::uint8_t* row, std::uint32_t value, std::int32_t count) noexcept;

/// One row of 3-byte pixels; the value's top byte lands behind the last one, if that lies before
/// @p memoryEnd.
void FillRow24(std::uint8_t* row, std::uint32_t value, std::int32_t count,
               const std::uint8_t* memoryEnd) noexcept;

/// One row of 2-byte pixels from the value's low half.
void FillRow16(std::uint8_t* row, std::uint32_t value, std::int32_t count) noexcept;

}  // namespace zor
