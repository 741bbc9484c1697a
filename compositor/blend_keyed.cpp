// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <algorithm>
#include <bit>
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
  /// Of a key that can match.
  KeySamples Samples() const {
    return {static_cast<std::uint8_t>(key_.y), static_cast<std::uint8_t>(key_.u),
            static_cast<std::uint8_t>(key_.v)};
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
  bool Empty() const { return count_ == 0; }

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

  static constexpr int kEntries = 8;

 private:
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

/// The gathering walk over pictures that lie inside their blocks. Neighbours that fill whole
/// batches meet nothing else in them, so they are blended as rows: luma once, and the chroma of
/// each pair's second pixel once.
class RunBlend {
 public:
  RunBlend(const BlendPlanes& target, const BlendPlanes& child, const KeyTest& key,
           std::uint32_t weight)
      : target_(target.block),
        child_(child.block),
        targetBytes_(target.block.data),
        childBytes_(child.block.data),
        canMatch_(key.CanMatch()),
        key_(canMatch_ ? key.Samples() : KeySamples{}),
        weight_(weight) {}

  void Row(const RowPlace& at, std::int64_t width) {
    std::int64_t start = kNone;  // of the run in hand
    for (std::int64_t x = 0; x < width; x += kWord) {
      const std::int64_t count = std::min(width - x, kWord);
      const std::uint64_t passing = Passing(at, x, count);
      for (std::int64_t i = 0; i < count;) {
        const bool passes = (passing >> i & 1) != 0;
        if (passes && start == kNone) start = x + i;
        if (!passes && start != kNone) {
          Add(at, start, x + i);
          start = kNone;
        }
        i += std::countr_zero((passes ? ~passing : passing) >> i);  // 64 if none is left
      }
    }
    if (start != kNone) Add(at, start, width);
    batch_.BlendRowEnd(target_, child_, weight_);
  }

 private:
  static constexpr std::int64_t kWord = 64;
  static constexpr std::int64_t kNone = -1;

  std::uint64_t Passing(const RowPlace& at, std::int64_t x, std::int64_t count) const {
    if (!canMatch_) return ~std::uint64_t{0};
    return rows_.passing(childBytes_ + at.childY + x, childBytes_ + at.childU + x / 2,
                         childBytes_ + at.childV + x / 2, key_, static_cast<std::size_t>(count));
  }

  /// Adds the passing pixels from @p x to @p end.
  void Add(const RowPlace& at, std::int64_t x, std::int64_t end) {
    while (x < end) {
      const std::int64_t whole = (end - x) / Batch::kEntries * Batch::kEntries;
      if (batch_.Empty() && whole > 0) {
        const std::int64_t pair = (x + 1) / 2;  // of the first pair's second pixel
        Blend(at.targetY + x, at.childY + x, whole);
        Blend(at.targetU + pair, at.childU + pair, whole / 2);
        Blend(at.targetV + pair, at.childV + pair, whole / 2);
        x += whole;
      } else {
        batch_.Add(at, x++);
        if (batch_.Full()) batch_.BlendFull(target_, child_, weight_);
      }
    }
  }

  void Blend(std::int64_t to, std::int64_t from, std::int64_t count) const {
    rows_.constant(
        {targetBytes_ + to, childBytes_ + from, 0, 0, 1, static_cast<std::size_t>(count)}, weight_);
  }

  const BlendRows& rows_ = InnerBlendRows();
  const InsideBytes target_;
  const InsideBytes child_;
  std::uint8_t* const targetBytes_;
  const std::uint8_t* const childBytes_;
  const bool canMatch_;
  const KeySamples key_;
  const std::uint32_t weight_;
  Batch batch_;
};

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
  if (!useSse2) {
    BlendPlain(InsideBytes(target.block), InsideBytes(child.block), walk, test, opacity);
  } else if (opacity == 0 && !test.CanMatch()) {
    CopyRows(target.block.data, child.block.data, walk);
  } else if (!test.CanMatch() && walk.width >= Batch::kEntries) {
    BlendWholeRows(target.block.data, child.block.data, walk, opacity);
  } else {
    RunBlend blend(target, child, test, opacity);
    for (std::int64_t row = 0; row < walk.rows; ++row) blend.Row(walk.Row(row), walk.width);
  }
}

}  // namespace zor
