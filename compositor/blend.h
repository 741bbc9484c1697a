// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The compositor's blends.
///
/// One formula serves them all: with c the child's sample, d the target's and w the weight of the
/// target, the result is ((256 - w) x c + w x d) >> 8, truncated. A weight of 0 gives the child
/// exactly; 255, the largest mask sample, still lets 1/256 of the child through.
///
/// Each blend has a plain and an SSE2 form, which differ where their comments say so. The kernels
/// don't scale: both rectangles have one size. A rectangle that leaves a picture addresses other
/// bytes of its block as the arithmetic gives; bytes outside of a block read as 0 and are not
/// written.

#include <zorsurface/types.h>

#include <cstdint>

namespace zor {

/// The bytes of one picture's block.
struct BlockBytes {
  std::uint8_t* data;
  std::int64_t size;
};

/// One planar picture as the blends see it: luma, then a U plane, then a V plane in one block.
struct BlendPlanes {
  BlockBytes block;
  std::uint32_t stride;  ///< bytes, of luma; chroma rows have half
  std::uint32_t height;
};

/// Blends a planar child through a mask, in blocks of 2 x 2 luma samples with one U and one V; an
/// odd last row or column of the rectangle stays. Luma takes its own mask sample. Chroma takes one
/// mask sample of the block: the lower right one in the plain form; in the SSE2 form the lower left
/// one in whole groups of 16 columns and the lower right one behind them.
/// @param mask one byte per child pixel, addressed with the child's stride and source rectangle.
/// @return 0.
std::int32_t BlendYuv420Masked(const BlockBytes& target, const BlockBytes& child,
                               const BlockBytes& mask, std::uint32_t targetStride,
                               std::uint32_t targetHeight, std::uint32_t childStride,
                               std::uint32_t childHeight, const RECT* destRect,
                               const RECT* sourceRect, bool useSse2) noexcept;

/// Blends a packed child through a mask; both bytes of a pixel take the pixel's mask sample. Mask
/// rows are @p childWidth apart; the first is the source rectangle's top row in the SSE2 form and
/// the row of the destination's top in the plain form.
/// @return 0.
std::int32_t BlendYuy2Masked(const BlockBytes& target, const BlockBytes& child,
                             const BlockBytes& mask, std::uint32_t targetWidth,
                             std::uint32_t targetHeight, std::uint32_t childWidth,
                             std::uint32_t childHeight, std::uint32_t targetStride,
                             std::uint32_t childStride, const RECT* destRect,
                             const RECT* sourceRect, bool useSse2) noexcept;

/// A key in Y, U and V. A pixel whose three samples equal it is left out.
struct KeyColour {
  std::int32_t y;
  std::int32_t u;
  std::int32_t v;
};

/// The back colour that means "no key".
inline constexpr std::uint32_t kNoKeyColour = 0xFF000000u;

/// @return the key of a back colour whose byte 0 is blue and byte 2 red; three values that no
///         sample equals for `kNoKeyColour`. A bright colour's Y may pass 255 and then matches
///         nothing.
KeyColour KeyColourOf(std::uint32_t backColour) noexcept;

/// Blends a planar child with one weight, leaving out the pixels that equal the key.
///
/// The plain form blends Y, U and V at every pixel that passes, so a chroma sample is blended up to
/// four times over its own result. The SSE2 form gathers batches of eight pixels and keeps the rest
/// of a batch over the end of a row, which blends those entries again; a chroma sample is blended
/// once per full batch that holds it.
/// @param opacity weight of the target; 256 and above draw nothing.
void BlendYuv420Keyed(const BlendPlanes& target, const BlendPlanes& child,
                      const RECT& destRect, const RECT& sourceRect, std::uint32_t opacity,
                      const KeyColour& key, bool useSse2) noexcept;

}  // namespace zor
