// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The picture layouts that the host knows by name, and the library's format number of each.

#include <cstdint>
#include <string>
#include <string_view>

namespace zorhost {

/// Bytes in rising addresses. The planar two differ in the order of their chroma planes only.
///
/// A decoder's I420 frame holds Y, U, V. The library's `FORMAT_YUV420` kernels take the plane right
/// behind luma as V, so such a frame is `kYvu420` (`FORMAT_YVU420`) on its way in: the builder
/// exchanges the planes while it copies, and the colours come out right. Handed in as
/// `FORMAT_YUV420`, red and blue would change places. What is read out of a planar surface is
/// Y, V, U again.
enum class Layout {
  kRgb24,   ///< B, G, R
  kRgb32,   ///< B, G, R, alpha
  kGray8,   ///< one byte a pixel
  kYuv420,  ///< planes Y, V, U: the library's own order
  kYuy2,    ///< Y0, U, Y1, V for each pair of columns
  kYvu420,  ///< planes Y, U, V: the order of decoders and files (I420)
};

struct LayoutTraits {
  Layout layout;
  const char* name;     ///< as on the command line
  std::int32_t format;  ///< the library's number
  std::int32_t bitsPerPixel;
  bool rgb;
  bool planar;
  const char* memory;  ///< the memory order in words
};

const LayoutTraits& Traits(Layout layout);
/// @throws UsageError naming the known layouts.
Layout LayoutFromName(std::string_view name);
/// "rgb24, rgb32, ..."
std::string KnownLayouts();

}  // namespace zorhost
