// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The scaling modes, passed as "quality" to the resize and stretch slots.

#include <cstdint>

/// One of the `SCALE_` numbers.
using ScaleMode = std::uint32_t;

/// Each destination pixel copies one source pixel.
inline constexpr ScaleMode SCALE_NEAREST = 0;
/// Two-by-two interpolation; pixels beyond the source edge repeat the edge.
inline constexpr ScaleMode SCALE_BILINEAR = 1;
/// Two-by-two interpolation; pixels beyond the source edge fade into the background.
inline constexpr ScaleMode SCALE_BILINEAR_FADE = 2;
/// Each destination pixel averages a whole-pixel box of the source.
inline constexpr ScaleMode SCALE_BOX = 3;
/// As `SCALE_BOX`; boxes that leave the source blend with the background by coverage.
inline constexpr ScaleMode SCALE_BOX_FADE = 4;
/// As `SCALE_BILINEAR` across; down the picture even rows start on even source rows and odd rows
/// on odd ones.
inline constexpr ScaleMode SCALE_ROW_PAIRS = 5;
/// Exact area weighting, when the source is larger in both axes.
inline constexpr ScaleMode SCALE_AREA = 6;
/// Planar pictures only: `SCALE_NEAREST` on all planes.
inline constexpr ScaleMode SCALE_PLANAR_NEAREST = 0xFF00;
/// Planar pictures only: sharpens the source luma in place, then `SCALE_BILINEAR` on all planes.
inline constexpr ScaleMode SCALE_PLANAR_SHARPEN = 0xFF01;
/// Planar pictures only: exact area when the source is larger in both axes, else
/// `SCALE_BILINEAR_FADE`.
inline constexpr ScaleMode SCALE_PLANAR_AREA = 0xFF02;
