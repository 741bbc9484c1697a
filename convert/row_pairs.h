// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The walk over the pairs of rows of a conversion between planes and packed pixels.

#include <cstddef>
#include <cstdint>

#include "platform/compiler.h"

namespace zor {

/// The operands of a kernel that makes packed pixels of planes.
struct FromPlanes {
  std::uint8_t* target;
  std::int32_t targetStride;
  const std::uint8_t* luma;
  const std::uint8_t* u;
  const std::uint8_t* v;
  std::int32_t lumaStride;
  std::int32_t chromaStride;
  std::int32_t width;
  std::int32_t height;  ///< negative: the target is written from its last row upward
};

/// The operands of a kernel that makes planes of packed pixels.
struct ToPlanes {
  std::uint8_t* luma;
  std::uint8_t* u;
  std::uint8_t* v;
  std::int32_t lumaStride;
  std::int32_t chromaStride;
  const std::uint8_t* source;
  std::int32_t sourceStride;
  std::int32_t width;
  std::int32_t height;  ///< negative: the source is read from its last row upward
};

/// The packed side of a conversion as it is walked: from its last row upward at a negative height.
template <class Byte>
struct WalkedRows {
  Byte* first;
  std::ptrdiff_t stride;
  std::int32_t height;

  WalkedRows(Byte* rows, std::int32_t rowStride, std::int32_t signedHeight) noexcept
      : first(rows), stride(rowStride), height(signedHeight) {
    if (height >= 0) return;
    height = -height;
    first += (height - 1) * stride;
    stride = -stride;
  }
};

/// Where one pair of rows begins on both sides.
template <class Packed, class Planar>
struct RowPair {
  Packed* packed;
  std::ptrdiff_t packedStride;
  Planar* luma;
  std::ptrdiff_t lumaStride;
  Planar* u;
  Planar* v;
  std::ptrdiff_t chromaStride;
  std::int32_t columns;  ///< an even number
  std::int32_t index;
  bool first;
  bool last;
};

/// Calls `visit(pair)` for all pairs. An odd last row is in none. At an odd width the last column
/// isn't either, and each next pair starts one pixel further left, in packed rows and in luma;
/// chroma stays in step.
/// @tparam kBytes of a packed pixel
template <int kBytes, class Packed, class Planar, class Visit>
ZOR_ALWAYS_INLINE void WalkRowPairs(const WalkedRows<Packed>& packed, Planar* luma, Planar* u,
                                    Planar* v, std::ptrdiff_t lumaStride,
                                    std::ptrdiff_t chromaStride, std::int32_t width,
                                    const Visit& visit) noexcept {
  const std::ptrdiff_t drift = width & 1;
  const std::int32_t pairs = packed.height / 2;
  if (width < 2) return;
  for (std::int32_t i = 0; i < pairs; ++i) {
    visit(RowPair<Packed, Planar>{packed.first + i * (2 * packed.stride - drift * kBytes),
                                  packed.stride, luma + i * (2 * lumaStride - drift), lumaStride,
                                  u + i * chromaStride, v + i * chromaStride, chromaStride,
                                  width & ~1, i, i == 0, i == pairs - 1});
  }
}

template <int kBytes, class Visit>
ZOR_ALWAYS_INLINE void WalkRowPairs(const FromPlanes& p, const Visit& visit) noexcept {
  WalkRowPairs<kBytes>(WalkedRows<std::uint8_t>(p.target, p.targetStride, p.height), p.luma, p.u,
                       p.v, p.lumaStride, p.chromaStride, p.width, visit);
}

template <int kBytes, class Visit>
ZOR_ALWAYS_INLINE void WalkRowPairs(const ToPlanes& p, const Visit& visit) noexcept {
  WalkRowPairs<kBytes>(WalkedRows<const std::uint8_t>(p.source, p.sourceStride, p.height), p.luma,
                       p.u, p.v, p.lumaStride, p.chromaStride, p.width, visit);
}

}  // namespace zor
