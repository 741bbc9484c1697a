// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The record that describes a surface, and the picture formats.

#include <zorsurface/types.h>

/// Bytes of a pixel in rising addresses: B, G, R.
inline constexpr std::int32_t FORMAT_RGB24 = 1;
/// Bytes of a pixel in rising addresses: B, G, R, alpha.
inline constexpr std::int32_t FORMAT_RGB32 = 2;
/// One byte a pixel.
inline constexpr std::int32_t FORMAT_GRAY8 = 3;
/// Three planes in one block: luma, then V, then U, each chroma plane of half the width, height and
/// stride. The V plane starts at stride x height, the U plane a quarter of that further on.
inline constexpr std::int32_t FORMAT_YUV420 = 4;
/// Packed 4:2:2: Y0, U, Y1, V for each pair of columns.
inline constexpr std::int32_t FORMAT_YUY2 = 5;
/// `FORMAT_YUV420` with U in front of V, as decoders hand it out: what `CreateFromMemory` and
/// `QueueConvert` take, never the format of a living surface.
inline constexpr std::int32_t FORMAT_YVU420 = 6;

/// A surface as 13 32-bit words. The layout is part of the binary contract.
struct SurfaceDescription {
  std::uint32_t size;            ///< 52
  std::int32_t width;            ///< pixels per row
  std::int32_t height;           ///< rows
  std::int32_t format;           ///< one of the `FORMAT_` numbers
  std::uint32_t StorageKind;     ///< 4 in every finished surface
  std::int32_t bitsPerPixel;     ///< 24, 32, 8, 12 or 16 by format
  std::int32_t stride;           ///< bytes from one row to the next; of luma in planar pictures
  RECT DirtyRect;                ///< the region changed last
  std::uint32_t Orientation;     ///< 1: the first row in memory is the top one; 0: the bottom one
  std::uint32_t ComposeInPlace;  ///< nonzero: `Compose` draws into the surface itself
};

static_assert(sizeof(SurfaceDescription) == 52, "13 words");
