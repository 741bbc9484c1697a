// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <utility>

#include "compositor/blend.h"
#include "compositor/blend_rows.h"
#include "compositor/checked_bytes.h"

namespace zor {
namespace {

/// Row starts of both pictures for one row of the rectangles, in bytes from each picture's first.
struct RowPlace {
  std::int64_t targetY, targetU, targetV;
  std::int64_t childY, childU, childV;
};

/// The geometry of one blend.
class KeyedWalk {
 public:
  KeyedWalk(const BlendPlanes& target, const BlendPlanes& child, const RECT& destRect,
            const RECT& sourceRect)
      : width(std::int64_t{destRect.right} - destRect.left),
        rows(std::int64_t{destRect.bottom} - destRect.top),
        target_(Planes(target, destRect)),
        child_(Planes(child, sourceRect)) {}

  RowPlace Row(std::int64_t row) const {
    const Origin& t = target_;
    const Origin& c = child_;
    return {t.y + row * t.stride,
            t.u + row / 2 * (t.stride / 2),
            t.u + t.vBehindU + row / 2 * (t.stride / 2),
            c.y + row * c.stride,
            c.u + row / 2 * (c.stride / 2),
            c.u + c.vBehindU + row / 2 * (c.stride / 2)};
  }

  /// @return whether all that the walk touches lies in the blocks, plane apart from plane and row
  ///         apart from row.
  bool InsideApart(const BlockBytes& target, const BlockBytes& child) const {
    if (2 * ((width + 1) / 2) > target_.stride) return false;
    const RowPlace first = Row(0);
    const RowPlace last = Row(rows - 1);
    const std::int64_t pairs = (width + 1) / 2;
    return zor::InsideApart(target, {first.targetY, last.targetY + width},
                            {first.targetU, last.targetU + pairs},
                            {first.targetV, last.targetV + pairs}) &&
           zor::InsideApart(child, {first.childY, last.childY + width},
                            {first.childU, last.childU + pairs},
                            {first.childV, last.childV + pairs});
  }

  const std::int64_t width;
  const std::int64_t rows;

 private:
  struct Origin {
    std::int64_t y, u, vBehindU, stride;
  };
  static Origin Planes(const BlendPlanes& picture, const RECT& rect) {
    const std::int64_t s = picture.stride;
    const std::int64_t plane = s * picture.height;
    return {rect.top * s + rect.left, plane + rect.top / 2 * (s / 2) + rect.left / 2, plane >> 2,
            s};
  }

  Origin target_;
  Origin child_;
};

/// Whether a pixel of a child's row is blended.
class KeyTest {
 public:
  explicit KeyTest(const KeyColour& key) : key_(key) {}
  bool CanMatch() const {
    auto sample = [](std::int32_t v) { return v >= 0 && v <= 255; };
    return sample(key_.y) && sample(key_.u) && sample(key_.v);
  }
  template <class Bytes>
  bool Passes(const Bytes& child, const RowPlace& at, std::int64_t x) const {
    return child[at.childY + x] != key_.y || child[at.childU + x / 2] != key_.u ||
           child[at.childV + x / 2] != key_.v;
  }

 private:
  KeyColour key_;
};

template <class Bytes>
void BlendPlain(const Bytes& target, const Bytes& child, const KeyedWalk& walk, const KeyTest& key,
                std::uint32_t w) {
  for (std::int64_t row = 0; row < walk.rows; ++row) {
    const RowPlace at = walk.Row(row);
    for (std::int64_t x = 0; x < walk.width; ++x) {
      if (!key.Passes(child, at, x)) continue;
      auto blend = [&](std::int64_t to, std::int64_t from) {
        target.Put(to, BlendAt(target, to, child, from, w));
      };
      blend(at.targetY + x, at.childY + x);
      blend(at.targetU + x / 2, at.childU + x / 2);
      blend(at.targetV + x / 2, at.childV + x / 2);
    }
  }
}

/// The gathered entries of the SSE2 form. Entries behind the count are those of earlier rows and
/// batches; they are blended again with the next full batch or at the next row's end.
class Batch {
 public:
  void Add(const RowPlace& at, std::int64_t x) {
    luma_[count_] = {at.targetY + x, at.childY + x};
    // The odd entry of a pair takes the place of the even one.
    u_[count_ / 2] = {at.targetU + x / 2, at.childU + x / 2};
    v_[count_ / 2] = {at.targetV + x / 2, at.childV + x / 2};
    ++count_;
  }

  bool Full() const { return count_ == kEntries; }

  /// Blends all entries: every sample is read before any is written.
  template <class Bytes>
  void BlendFull(const Bytes& target, const Bytes& child, std::uint32_t w) {
    std::uint8_t y[kEntries];
    std::uint8_t u[kPairs];
    std::uint8_t v[kPairs];
    for (int i = 0; i < kEntries; ++i) y[i] = Value(luma_[i], target, child, w);
    for (int i = 0; i < kPairs; ++i) {
      u[i] = Value(u_[i], target, child, w);
      v[i] = Value(v_[i], target, child, w);
    }
    for (int i = 0; i < kEntries; ++i) target.Put(luma_[i].to, y[i]);
    for (int i = 0; i < kPairs; ++i) {
      target.Put(u_[i].to, u[i]);
      target.Put(v_[i].to, v[i]);
    }
    count_ = 0;
  }

  /// Blends the entries in hand one by one, a pair's chroma once for each of its entries, and
  /// keeps them.
  template <class Bytes>
  void BlendRowEnd(const Bytes& target, const Bytes& child, std::uint32_t w) {
    for (int i = 0; i < count_; ++i) {
      for (const Entry& entry : {luma_[i], v_[i / 2], u_[i / 2]}) {
        target.Put(entry.to, Value(entry, target, child, w));
      }
    }
  }

 private:
  static constexpr int kEntries = 8;
  static constexpr int kPairs = 4;
  struct Entry {
    std::int64_t to, from;
  };
  template <class Bytes>
  static std::uint8_t Value(const Entry& entry, const Bytes& target, const Bytes& child,
                            std::uint32_t w) {
    return BlendAt(target, entry.to, child, entry.from, w);
  }

  int count_ = 0;
  Entry luma_[kEntries];
  Entry u_[kPairs];
  Entry v_[kPairs];
};

template <class Bytes>
void BlendGathered(const Bytes& target, const Bytes& child, const KeyedWalk& walk,
                   const KeyTest& key, std::uint32_t w) {
  Batch batch;
  for (std::int64_t row = 0; row < walk.rows; ++row) {
    const RowPlace at = walk.Row(row);
    for (std::int64_t x = 0; x < walk.width; ++x) {
      if (!key.Passes(child, at, x)) continue;
      batch.Add(at, x);
      if (batch.Full()) batch.BlendFull(target, child, w);
    }
    batch.BlendRowEnd(target, child, w);
  }
}

/// Without a key and at a width of a batch or more, how often a sample is blended follows from how
/// many entries a row leaves over: luma once, and what was left over once more with the next row's
/// first batch. Chroma once a row, what pairs left over twice, and once more with the next row. The
/// last chroma of an odd number left over is blended once only, at its row's end: the next row's
/// first pixel takes its place. The order doesn't show, as it is one blend of one sample over and
/// over.
void BlendWholeRows(std::uint8_t* target, const std::uint8_t* child, const KeyedWalk& walk,
                    std::uint32_t w) {
  const BlendRows& rows = InnerBlendRows();
  const auto columns = static_cast<std::size_t>(walk.width);
  const std::size_t chroma = (columns + 1) / 2;
  const RowPlace first = walk.Row(0);
  const RowPlace second = walk.Row(1);
  rows.constant({target + first.targetY, child + first.childY, second.targetY - first.targetY,
                 second.childY - first.childY, walk.rows, columns},
                w);
  const std::int64_t pairs = walk.rows / 2;
  const RowPlace next = walk.Row(2);
  const RowPlace last = walk.Row(2 * pairs);
  for (const auto& [to, from] : {std::pair{&RowPlace::targetU, &RowPlace::childU},
                                 std::pair{&RowPlace::targetV, &RowPlace::childV}}) {
    const std::int64_t targetStride = next.*to - first.*to, childStride = next.*from - first.*from;
    rows.constantTwice(
        {target + first.*to, child + first.*from, targetStride, childStride, pairs, chroma}, w);
    rows.constant(
        {target + last.*to, child + last.*from, targetStride, childStride, walk.rows % 2, chroma},
        w);
  }
  if (columns % 8 == 0) return;
  std::size_t left = 0;
  for (std::int64_t row = 0; row < walk.rows; ++row) {
    left = (left + columns) % 8;
    if (left == 0) continue;
    const RowPlace at = walk.Row(row);
    const std::size_t y = columns - 8, c = chroma - 4;
    rows.leftOver(target + at.targetY + y, child + at.childY + y,
                  {{target + at.targetU + c, target + at.targetV + c},
                   {child + at.childU + c, child + at.childV + c}},
                  w, left, row + 1 < walk.rows);
  }
}

/// With opacity 0 every blend stores the child, however often it is repeated, so only which samples
/// are reached counts: all luma that passes; and of chroma, a sample whose entry isn't overtaken by
/// the next pixel's before it is blended.
void CopyPassing(const InsideBytes& target, const InsideBytes& child, const KeyedWalk& walk,
                 const KeyTest& key) {
  bool odd = false;  // the number of entries in hand
  for (std::int64_t row = 0; row < walk.rows; ++row) {
    const RowPlace at = walk.Row(row);
    std::int64_t open = -1;  // chroma of an even entry, lost if another pixel comes
    auto store = [&](std::int64_t pair) {
      target.Put(at.targetU + pair, child[at.childU + pair]);
      target.Put(at.targetV + pair, child[at.childV + pair]);
    };
    for (std::int64_t x = 0; x < walk.width; ++x) {
      if (!key.Passes(child, at, x)) continue;
      target.Put(at.targetY + x, child[at.childY + x]);
      if (odd) {
        store(x / 2);
        open = -1;
      } else {
        open = x / 2;
      }
      odd = !odd;
    }
    if (open >= 0) store(open);
  }
}

/// Opacity 0 without a key: the child's samples, rows as they are.
void CopyRows(std::uint8_t* target, const std::uint8_t* child, const KeyedWalk& walk) {
  const auto columns = static_cast<std::size_t>(walk.width);
  for (std::int64_t row = 0; row < walk.rows; ++row) {
    const RowPlace at = walk.Row(row);
    std::memcpy(target + at.targetY, child + at.childY, columns);
    if (row % 2 != 0) continue;  // the odd row's chroma is the same
    std::memcpy(target + at.targetU, child + at.childU, (columns + 1) / 2);
    std::memcpy(target + at.targetV, child + at.childV, (columns + 1) / 2);
  }
}

}  // namespace

void BlendYuv420Keyed(const BlendPlanes& target, const BlendPlanes& child, const RECT& destRect,
                      const RECT& sourceRect, std::uint32_t opacity, const KeyColour& key,
                      bool useSse2) noexcept {
  const KeyedWalk walk(target, child, destRect, sourceRect);
  const KeyTest test(key);
  if (opacity >= 256 || walk.width <= 0 || walk.rows <= 0) return;
  const CheckedBytes to(target.block);
  const CheckedBytes from(child.block);
  if (to.SharesMemoryWith(from) || !walk.InsideApart(target.block, child.block)) {
    if (useSse2) {
      BlendGathered(to, from, walk, test, opacity);
    } else {
      BlendPlain(to, from, walk, test, opacity);
    }
    return;
  }
  const InsideBytes on(target.block);
  const InsideBytes of(child.block);
  if (!useSse2) {
    BlendPlain(on, of, walk, test, opacity);
  } else if (opacity == 0 && test.CanMatch()) {
    CopyPassing(on, of, walk, test);
  } else if (opacity == 0) {
    CopyRows(target.block.data, child.block.data, walk);
  } else if (!test.CanMatch() && walk.width >= 8) {
    BlendWholeRows(target.block.data, child.block.data, walk, opacity);
  } else {
    BlendGathered(on, of, walk, test, opacity);
  }
}

}  // namespace zor
