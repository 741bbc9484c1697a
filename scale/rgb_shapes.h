// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The row kernels of the interpolating modes: one value per region of a picture, written out for
/// one pixel of four lanes.

#include <cstdint>
#include <cstring>

#include "scale/lerp.h"

namespace zor {

/// The bytes that may be touched of a picture.
struct ByteRange {
  const std::uint8_t* begin;
  const std::uint8_t* end;
};

/// Four bytes of one pixel. Of a 3-byte pixel the fourth is the next one's first byte.
struct Lanes {
  std::uint8_t v[4];
};

/// What a region's pixel is made of. p and q are the pixels at a column's offset and behind it on
/// the row, s and t those on the next row; wx is the column's weight, wy the row's.
enum class Shape : std::uint8_t {
  kCopy,              ///< p
  kCopyDoubled,       ///< p's bytes as (b0, b0, b1)
  kCorner,            ///< lerp(bg, p, wx wy >> 8)
  kCornerTopLeft,     ///< two by two with p at the lower right and background elsewhere
  kCornerBottomLeft,  ///< two by two with p at the upper right
  kTopMiddle,         ///< two by two with p, q below
  kBottomMiddle,      ///< two by two with p, q above
  kMiddleLeft,        ///< two by two with p, s on the right
  kMiddleRight,       ///< two by two with p, s on the left
  kEdgeH,             ///< lerp(bg, lerp(p, q, wx), wy)
  kEdgeVRight,        ///< lerp(bg, lerp(p, s, wy), wx)
  kFull,              ///< lerp(lerp(p, q, wx), lerp(s, t, wx), wy)
  kHorizontalOnly,    ///< lerp(p, q, wx)
  kVerticalOnly       ///< lerp(p, s, wy)
};

/// @return whether a shape stores the fourth byte behind a 3-byte pixel.
constexpr bool Spills(Shape shape) {
  return shape != Shape::kCopy && shape != Shape::kCopyDoubled && shape != Shape::kVerticalOnly;
}

/// Four bytes from @p at; those outside of the range count as 0.
inline Lanes LoadLanes(const std::uint8_t* at, const ByteRange& range) {
  Lanes lanes{};
  if (at >= range.begin && range.end - at >= 4) {
    std::memcpy(lanes.v, at, 4);
    return lanes;
  }
  for (int i = 0; i < 4; ++i) {
    if (at + i >= range.begin && at + i < range.end) lanes.v[i] = at[i];
  }
  return lanes;
}

/// Lane by lane, each with the word's byte of its own.
inline Lanes LerpLanes(const Lanes& a, const Lanes& b, std::uint32_t word) {
  Lanes out;
  for (int i = 0; i < 4; ++i) {
    const auto weight = static_cast<std::int32_t>(word >> (8 * i) & 255);
    out.v[i] = static_cast<std::uint8_t>(Lerp(a.v[i], b.v[i], weight));
  }
  return out;
}

/// The words' bytes multiplied, each product's high byte.
inline std::uint32_t ProductWord(std::uint32_t wx, std::uint32_t wy) {
  std::uint32_t word = 0;
  for (int i = 0; i < 32; i += 8) word |= ((wx >> i & 255) * (wy >> i & 255) >> 8) << i;
  return word;
}

/// The pixels around one column of one row.
struct ShapeInput {
  const std::uint8_t* at;  ///< p
  std::int64_t stride;     ///< bytes to the next source row
  ByteRange source;
  Lanes background;
  std::uint32_t wx;
  std::uint32_t wy;
};

/// @tparam kBytes of a source pixel.
template <int kBytes>
Lanes ShapeValue(Shape shape, const ShapeInput& in) {
  const Lanes& bg = in.background;
  auto load = [&](std::int64_t offset) { return LoadLanes(in.at + offset, in.source); };
  auto twoByTwo = [&](const Lanes& a, const Lanes& b, const Lanes& c, const Lanes& d) {
    return LerpLanes(LerpLanes(a, b, in.wx), LerpLanes(c, d, in.wx), in.wy);
  };
  const Lanes p = load(0);
  switch (shape) {
    case Shape::kCopy:
      return p;
    case Shape::kCopyDoubled:
      return {{p.v[0], p.v[0], p.v[1], 0}};
    case Shape::kCorner:
      return LerpLanes(bg, p, ProductWord(in.wx, in.wy));
    case Shape::kCornerTopLeft:
      return twoByTwo(bg, bg, bg, p);
    case Shape::kCornerBottomLeft:
      return twoByTwo(bg, p, bg, bg);
    case Shape::kTopMiddle:
      return twoByTwo(bg, bg, p, load(kBytes));
    case Shape::kBottomMiddle:
      return twoByTwo(p, load(kBytes), bg, bg);
    case Shape::kMiddleLeft:
      return twoByTwo(bg, p, bg, load(in.stride));
    case Shape::kMiddleRight:
      return twoByTwo(p, bg, load(in.stride), bg);
    case Shape::kEdgeH:
      return LerpLanes(bg, LerpLanes(p, load(kBytes), in.wx), in.wy);
    case Shape::kEdgeVRight:
      return LerpLanes(bg, LerpLanes(p, load(in.stride), in.wy), in.wx);
    case Shape::kFull:
      return twoByTwo(p, load(kBytes), load(in.stride), load(in.stride + kBytes));
    case Shape::kHorizontalOnly:
      return LerpLanes(p, load(kBytes), in.wx);
    case Shape::kVerticalOnly:
      break;
  }
  return LerpLanes(p, load(in.stride), in.wy);
}

}  // namespace zor
