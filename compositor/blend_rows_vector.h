// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The row walk over vector policies. Included by the vector forms only, each with policies of its
/// own, so that every copy is private to its file's instruction flags.
///
/// A policy has a register type `V` of `kBytes` samples in 16-bit lanes of two, and:
///   Load, Store       unaligned
///   Evens             the even ones of 2 x kBytes samples in memory
///   Doubled           kBytes / 2 samples in memory, each in a 16-bit lane of its own
///   Set               one number in every 16-bit lane
///   Low, High         the low byte of every lane; the high byte, shifted down
///   Sub, Mul          16-bit lanes
///   Join              the high byte of every lane of @p low, shifted down, beside that of @p high
///   AddBytes

#include "compositor/blend_ends_sse2.h"
#include "compositor/blend_rows.h"
#include "compositor/blend_statement.h"
#include "platform/compiler.h"

namespace zor {
namespace {

/// Blends the low samples of all lanes by one weight and the high ones by another:
/// ((256 - w) c + w d) >> 8 = c + (w (d - c) >> 8), where the low 16 bits of the product are
/// enough, as the sum is taken modulo 256.
template <class P>
ZOR_ALWAYS_INLINE typename P::V BlendLanes(typename P::V c, typename P::V d, typename P::V wLow,
                                           typename P::V wHigh) {
  const typename P::V low = P::Mul(P::Sub(P::Low(d), P::Low(c)), wLow);
  const typename P::V high = P::Mul(P::Sub(P::High(d), P::High(c)), wHigh);
  return P::AddBytes(c, P::Join(low, high));
}

template <class P>
ZOR_ALWAYS_INLINE typename P::V BlendBytes(typename P::V c, typename P::V d, typename P::V w) {
  return BlendLanes<P>(c, d, P::Low(w), P::High(w));
}

/// What a row blends: the target's and child's samples, and where their weights come from. At
/// gives a register of blended samples, which Put stores.
struct Samples {
  std::uint8_t* target;
  const std::uint8_t* child;
  template <class P>
  ZOR_ALWAYS_INLINE void Put(std::size_t i, typename P::V blended) const {
    P::Store(target + i, blended);
  }
};

struct ByMask : Samples {
  const std::uint8_t* mask;
  template <class P>
  ZOR_ALWAYS_INLINE typename P::V At(std::size_t i) const {
    return BlendBytes<P>(P::Load(child + i), P::Load(target + i), P::Load(mask + i));
  }
  ZOR_ALWAYS_INLINE void One(std::size_t i) const {
    target[i] = BlendSample(child[i], target[i], mask[i]);
  }
};

/// Two planes by the even samples of one mask.
struct ByEvens {
  const ChromaRow& row;
  const std::uint8_t* mask;
  template <class P>
  struct Both {
    typename P::V u, v;
  };
  template <class P>
  ZOR_ALWAYS_INLINE Both<P> At(std::size_t i) const {
    const typename P::V w = P::Evens(mask + 2 * i);
    return {BlendBytes<P>(P::Load(row.child[0] + i), P::Load(row.target[0] + i), w),
            BlendBytes<P>(P::Load(row.child[1] + i), P::Load(row.target[1] + i), w)};
  }
  template <class P>
  ZOR_ALWAYS_INLINE void Put(std::size_t i, const Both<P>& blended) const {
    P::Store(row.target[0] + i, blended.u);
    P::Store(row.target[1] + i, blended.v);
  }
  ZOR_ALWAYS_INLINE void One(std::size_t i) const {
    for (int plane = 0; plane < 2; ++plane) {
      std::uint8_t* const to = row.target[plane] + i;
      *to = BlendSample(row.child[plane][i], *to, mask[2 * i]);
    }
  }
};

struct ByPairs : Samples {
  const std::uint8_t* mask;
  template <class P>
  ZOR_ALWAYS_INLINE typename P::V At(std::size_t i) const {  // i is even
    const typename P::V w = P::Doubled(mask + i / 2);
    return BlendLanes<P>(P::Load(child + i), P::Load(target + i), w, w);
  }
  ZOR_ALWAYS_INLINE void One(std::size_t i) const {
    target[i] = BlendSample(child[i], target[i], mask[i / 2]);
  }
};

template <int kTimes>
struct ByConstant : Samples {
  std::uint32_t weight;
  template <class P>
  ZOR_ALWAYS_INLINE typename P::V At(std::size_t i) const {
    const typename P::V w = P::Set(weight);
    const typename P::V c = P::Load(child + i);
    typename P::V d = P::Load(target + i);
    for (int time = 0; time < kTimes; ++time) d = BlendLanes<P>(c, d, w, w);
    return d;
  }
  ZOR_ALWAYS_INLINE void One(std::size_t i) const {
    for (int time = 0; time < kTimes; ++time) {
      target[i] = BlendSample(child[i], target[i], weight);
    }
  }
};

/// Walks a row in the widest registers that it fills. The last ones overlap those before them, so
/// that no row has a tail: they are blended before anything is stored.
template <class P, class... Narrower, class Row>
ZOR_ALWAYS_INLINE void Walk(const Row& row, std::size_t count) {
  if (count >= P::kBytes) {
    const std::size_t end = count - P::kBytes;
    const auto last = row.template At<P>(end);
    for (std::size_t i = 0; i < end; i += P::kBytes) {
      row.template Put<P>(i, row.template At<P>(i));
    }
    row.template Put<P>(end, last);
  } else if constexpr (sizeof...(Narrower) != 0) {
    Walk<Narrower...>(row, count);
  } else {
    for (std::size_t i = 0; i < count; ++i) row.One(i);
  }
}

/// Walks rows that are alike but for where they stand.
template <class... P, class Row>
ZOR_ALWAYS_INLINE void WalkRun(Row row, const BlendRun& run) {
  row.target = run.target;
  row.child = run.child;
  for (std::int64_t left = run.rows; left > 0; --left) {
    Walk<P...>(row, run.count);
    row.target += run.targetStride;
    row.child += run.childStride;
  }
}

/// The table's functions over policies, widest first.
template <class... P>
struct RowsOf {
  static void Masked(std::uint8_t* target, const std::uint8_t* child, const std::uint8_t* mask,
                     std::size_t count) noexcept {
    Walk<P...>(ByMask{{target, child}, mask}, count);
  }
  static void MaskedChroma(const ChromaRow& row, const std::uint8_t* mask, std::size_t grouped,
                           std::size_t count) noexcept {
    Walk<P...>(ByEvens{row, mask}, grouped);
    BlendByOdds(row, mask, grouped, count);
  }
  static void MaskedByPairs(std::uint8_t* target, const std::uint8_t* child,
                            const std::uint8_t* mask, std::size_t count) noexcept {
    Walk<P...>(ByPairs{{target, child}, mask}, 2 * count);
  }
  static void Constant(const BlendRun& run, std::uint32_t weight) noexcept {
    WalkRun<P...>(ByConstant<1>{{}, weight}, run);
  }
  static void ConstantTwice(const BlendRun& run, std::uint32_t weight) noexcept {
    WalkRun<P...>(ByConstant<2>{{}, weight}, run);
  }
  static constexpr BlendRows kTable = {Masked,        MaskedChroma, MaskedByPairs, Constant,
                                       ConstantTwice, LeftOver,     Passing};
};

}  // namespace
}  // namespace zor
