// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <cstddef>

#include "compositor/blend.h"
#include "compositor/blend_rows.h"
#include "compositor/checked_bytes.h"

namespace zor {
namespace {

constexpr std::int64_t kGroup = 16;  // columns of a whole group of the SSE2 form

/// The operands of one masked blend.
struct Operands {
  CheckedBytes target;
  CheckedBytes child;
  CheckedBytes mask;

  /// Blends @p count samples, at most 16, all read before any is written.
  void Together(std::int64_t to, std::int64_t from, const std::uint8_t* weights, int count) const {
    std::uint8_t blended[kGroup];
    for (int i = 0; i < count; ++i) {
      blended[i] = BlendAt(target, to + i, child, from + i, weights[i]);
    }
    for (int i = 0; i < count; ++i) target.Put(to + i, blended[i]);
  }

  void One(std::int64_t to, std::int64_t from, std::uint32_t weight) const {
    target.Put(to, BlendAt(target, to, child, from, weight));
  }
};

/// Where the work of one picture stands and how it steps, in bytes from the picture's first.
struct PlanarWalk {
  std::int64_t y;
  std::int64_t u;
  std::int64_t v;
  std::int64_t stride;
  std::int64_t chromaStride;

  PlanarWalk(std::uint32_t pictureStride, std::uint32_t height, std::int32_t left, std::int32_t top,
             bool useSse2)
      : stride(pictureStride), chromaStride(stride / 2) {
    // The forms differ in this offset only where the stride is odd.
    const std::int64_t chromaRow = useSse2 ? (top / 2) * chromaStride : ((top / 2) * stride) >> 1;
    y = top * stride + left;
    u = stride * height + chromaRow + (left >> 1);
    v = u + (chromaStride * height) / 2;
  }

  void Advance() {  // to the next row of blocks
    y += 2 * stride;
    u += chromaStride;
    v += chromaStride;
  }

  /// @return whether all rows of blocks lie in the picture's block, plane apart from plane.
  bool InsideApart(const BlockBytes& block, std::int64_t blockRows, std::int64_t blocks) const {
    const std::int64_t chroma = (blockRows - 1) * chromaStride + blocks;
    return zor::InsideApart(block, {y, y + (2 * blockRows - 1) * stride + 2 * blocks},
                            {u, u + chroma}, {v, v + chroma});
  }
};

/// The samples of a 2 x 2 block, first digit the row.
enum class Sample { kY00, kY01, kY10, kY11, kU, kV };

/// The order in which a block's samples are blended; it shows only where operands share memory.
constexpr Sample kPlainOrder[] = {Sample::kY00, Sample::kY01, Sample::kU,
                                  Sample::kV,   Sample::kY10, Sample::kY11};
constexpr Sample kSingleOrder[] = {Sample::kY00, Sample::kY01, Sample::kY10,
                                   Sample::kY11, Sample::kV,   Sample::kU};

/// One block: luma by its own mask samples, chroma by the lower right one.
void Block(const Sample (&order)[6], const Operands& on, const PlanarWalk& t, const PlanarWalk& c,
           std::int64_t m, std::int64_t column) {
  const std::int64_t x = 2 * column;
  const std::int64_t lower = m + c.stride;
  for (const Sample sample : order) {
    switch (sample) {
      case Sample::kY00:
        on.One(t.y + x, c.y + x, on.mask[m + x]);
        break;
      case Sample::kY01:
        on.One(t.y + x + 1, c.y + x + 1, on.mask[m + x + 1]);
        break;
      case Sample::kY10:
        on.One(t.y + t.stride + x, c.y + c.stride + x, on.mask[lower + x]);
        break;
      case Sample::kY11:
        on.One(t.y + t.stride + x + 1, c.y + c.stride + x + 1, on.mask[lower + x + 1]);
        break;
      case Sample::kU:
        on.One(t.u + column, c.u + column, on.mask[lower + x + 1]);
        break;
      case Sample::kV:
        on.One(t.v + column, c.v + column, on.mask[lower + x + 1]);
        break;
    }
  }
}

/// One group of 16 columns by 2 rows of the SSE2 form: everything that a step loads is read before
/// the step stores. Chroma takes the even samples of the lower mask row.
void Group(const Operands& on, const PlanarWalk& t, const PlanarWalk& c, std::int64_t m,
           std::int64_t x) {
  std::uint8_t upper[kGroup];
  std::uint8_t lower[kGroup];
  std::uint8_t evens[kGroup / 2];
  std::uint8_t u[kGroup / 2];
  for (std::int64_t i = 0; i < kGroup; ++i) lower[i] = on.mask[m + c.stride + x + i];
  for (std::int64_t i = 0; i < kGroup / 2; ++i) {
    evens[i] = lower[2 * i];
    u[i] = BlendAt(on.target, t.u + x / 2 + i, on.child, c.u + x / 2 + i, evens[i]);
  }
  on.Together(t.v + x / 2, c.v + x / 2, evens, kGroup / 2);
  for (std::int64_t i = 0; i < kGroup / 2; ++i) on.target.Put(t.u + x / 2 + i, u[i]);
  on.Together(t.y + t.stride + x, c.y + c.stride + x, lower, kGroup);
  for (std::int64_t i = 0; i < kGroup; ++i) upper[i] = on.mask[m + x + i];
  on.Together(t.y + x, c.y + x, upper, kGroup);
}

/// One row of blocks of the SSE2 form where no operands share memory and all lies in its block:
/// luma in whole rows, chroma by evens in the groups and by odds behind them.
void FastBlockRow(const BlendRows& rows, std::uint8_t* target, const PlanarWalk& t,
                  const std::uint8_t* child, const PlanarWalk& c, const std::uint8_t* m,
                  std::int64_t blocks) {
  const auto columns = static_cast<std::size_t>(2 * blocks);
  const std::int64_t grouped = 2 * blocks / kGroup * (kGroup / 2);
  const std::uint8_t* lower = m + c.stride;
  rows.masked(target + t.y, child + c.y, m, columns);
  rows.masked(target + t.y + t.stride, child + c.y + c.stride, lower, columns);
  rows.maskedChroma({{target + t.u, target + t.v}, {child + c.u, child + c.v}}, lower,
                    static_cast<std::size_t>(grouped), static_cast<std::size_t>(blocks));
}

/// One row of the packed forms, group by group: 8 pixels in the SSE2 form.
void PackedRow(const Operands& on, std::int64_t t, std::int64_t c, std::int64_t m,
               std::int64_t width, bool useSse2) {
  std::int64_t x = 0;
  for (; useSse2 && x + kGroup / 2 <= width; x += kGroup / 2) {
    std::uint8_t weights[kGroup];
    for (int i = 0; i < kGroup; ++i) weights[i] = on.mask[m + x + i / 2];
    on.Together(t + 2 * x, c + 2 * x, weights, kGroup);
  }
  for (; x < width; ++x) {
    const std::uint32_t weight = on.mask[m + x];
    on.One(t + 2 * x, c + 2 * x, weight);
    on.One(t + 2 * x + 1, c + 2 * x + 1, weight);
  }
}

bool Apart(const Operands& on) {
  return !on.target.SharesMemoryWith(on.child) && !on.target.SharesMemoryWith(on.mask);
}

}  // namespace

std::int32_t BlendYuv420Masked(const BlockBytes& target, const BlockBytes& child,
                               const BlockBytes& mask, std::uint32_t targetStride,
                               std::uint32_t targetHeight, std::uint32_t childStride,
                               std::uint32_t childHeight, const RECT* destRect,
                               const RECT* sourceRect, bool useSse2) noexcept {
  const std::int64_t blockRows = (std::int64_t{destRect->bottom} - destRect->top) >> 1;
  const std::int64_t blocks = (std::int64_t{destRect->right} - destRect->left) >> 1;
  if (blockRows <= 0 || blocks <= 0) return 0;
  const Operands on{CheckedBytes(target), CheckedBytes(child), CheckedBytes(mask)};
  PlanarWalk t(targetStride, targetHeight, destRect->left, destRect->top, useSse2);
  PlanarWalk c(childStride, childHeight, sourceRect->left, sourceRect->top, useSse2);
  std::int64_t m = c.y;  // the mask has the child's stride and coordinates
  // The rows of a rectangle wider than the target's stride meet, and then their order shows.
  const bool fast = useSse2 && Apart(on) && 2 * blocks <= t.stride &&
                    t.InsideApart(target, blockRows, blocks) &&
                    c.InsideApart(child, blockRows, blocks) &&
                    Inside(mask, {m, m + (2 * blockRows - 1) * c.stride + 2 * blocks});
  const BlendRows& rows = InnerBlendRows();
  for (std::int64_t row = 0; row < blockRows; ++row) {
    if (fast) {
      FastBlockRow(rows, target.data, t, child.data, c, mask.data + m, blocks);
    } else {
      const std::int64_t grouped = useSse2 ? 2 * blocks / kGroup * kGroup : 0;
      for (std::int64_t x = 0; x < grouped; x += kGroup) Group(on, t, c, m, x);
      for (std::int64_t column = grouped / 2; column < blocks; ++column) {
        Block(useSse2 ? kSingleOrder : kPlainOrder, on, t, c, m, column);
      }
    }
    t.Advance();
    c.Advance();
    m += 2 * c.stride;
  }
  return 0;
}

std::int32_t BlendYuy2Masked(const BlockBytes& target, const BlockBytes& child,
                             const BlockBytes& mask, std::uint32_t /*targetWidth*/,
                             std::uint32_t /*targetHeight*/, std::uint32_t childWidth,
                             std::uint32_t /*childHeight*/, std::uint32_t targetStride,
                             std::uint32_t childStride, const RECT* destRect,
                             const RECT* sourceRect, bool useSse2) noexcept {
  const std::int64_t rowCount = std::int64_t{destRect->bottom} - destRect->top;
  const std::int64_t width = std::int64_t{destRect->right} - destRect->left;
  if (rowCount <= 0 || width <= 0) return 0;
  const Operands on{CheckedBytes(target), CheckedBytes(child), CheckedBytes(mask)};
  std::int64_t t = std::int64_t{destRect->top} * targetStride + 2 * std::int64_t{destRect->left};
  std::int64_t c = std::int64_t{sourceRect->top} * childStride + 2 * std::int64_t{sourceRect->left};
  const std::int64_t maskTop = useSse2 ? sourceRect->top : destRect->top;
  std::int64_t m = maskTop * childWidth + sourceRect->left;
  auto whole = [&](std::int64_t start, std::int64_t step, std::int64_t row) {
    return Extent{start, start + (rowCount - 1) * step + row};
  };
  const bool fast = useSse2 && Apart(on) && Inside(target, whole(t, targetStride, 2 * width)) &&
                    Inside(child, whole(c, childStride, 2 * width)) &&
                    Inside(mask, whole(m, childWidth, width));
  const BlendRows& rows = InnerBlendRows();
  for (std::int64_t row = 0; row < rowCount; ++row) {
    if (fast) {
      rows.maskedByPairs(target.data + t, child.data + c, mask.data + m,
                         static_cast<std::size_t>(width));
    } else {
      PackedRow(on, t, c, m, width, useSse2);
    }
    t += targetStride;
    c += childStride;
    m += childWidth;
  }
  return 0;
}

}  // namespace zor
