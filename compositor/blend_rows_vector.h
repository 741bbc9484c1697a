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

/// What a row blends: the target's and child's samples, and where their weights come from.
struct Samples {
  std::uint8_t* target;
  const std::uint8_t* child;
};

struct ByMask : Samples {
  const std::uint8_t* mask;
  template <class P>
  ZOR_ALWAYS_INLINE typename P::V At(std::size_t i) const {
    return BlendBytes<P>(P::Load(child + i), P::Load(target + i), P::Load(mask + i));
  }
  ZOR_ALWAYS_INLINE std::uint8_t One(std::size_t i) const {
    return BlendSample(child[i], target[i], mask[i]);
  }
};

struct ByEvens : Samples {
  const std::uint8_t* mask;
  template <class P>
  ZOR_ALWAYS_INLINE typename P::V At(std::size_t i) const {
    return BlendBytes<P>(P::Load(child + i), P::Load(target + i), P::Evens(mask + 2 * i));
  }
  ZOR_ALWAYS_INLINE std::uint8_t One(std::size_t i) const {
    return BlendSample(child[i], target[i], mask[2 * i]);
  }
};

struct ByPairs : Samples {
  const std::uint8_t* mask;
  template <class P>
  ZOR_ALWAYS_INLINE typename P::V At(std::size_t i) const {  // i is even
    const typename P::V w = P::Doubled(mask + i / 2);
    return BlendLanes<P>(P::Load(child + i), P::Load(target + i), w, w);
  }
  ZOR_ALWAYS_INLINE std::uint8_t One(std::size_t i) const {
    return BlendSample(child[i], target[i], mask[i / 2]);
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
  ZOR_ALWAYS_INLINE std::uint8_t One(std::size_t i) const {
    std::uint8_t d = target[i];
    for (int time = 0; time < kTimes; ++time) d = BlendSample(child[i], d, weight);
    return d;
  }
};

/// Walks a row in the widest registers that it fills. The last ones overlap those before them, so
/// that no row has a tail: they are blended before anything is stored.
template <class P, class... Narrower, class Row>
ZOR_ALWAYS_INLINE void Walk(const Row& row, std::size_t count) {
  if (count >= P::kBytes) {
    const std::size_t end = count - P::kBytes;
    const typename P::V last = row.template At<P>(end);
    for (std::size_t i = 0; i < end; i += P::kBytes) {
      P::Store(row.target + i, row.template At<P>(i));
    }
    P::Store(row.target + end, last);
  } else if constexpr (sizeof...(Narrower) != 0) {
    Walk<Narrower...>(row, count);
  } else {
    for (std::size_t i = 0; i < count; ++i) row.target[i] = row.One(i);
  }
}

/// The table's functions over policies, widest first.
template <class... P>
struct RowsOf {
  static void Masked(std::uint8_t* target, const std::uint8_t* child, const std::uint8_t* mask,
                     std::size_t count) noexcept {
    Walk<P...>(ByMask{{target, child}, mask}, count);
  }
  static void MaskedByEvens(std::uint8_t* target, const std::uint8_t* child,
                            const std::uint8_t* mask, std::size_t count) noexcept {
    Walk<P...>(ByEvens{{target, child}, mask}, count);
  }
  static void MaskedByPairs(std::uint8_t* target, const std::uint8_t* child,
                            const std::uint8_t* mask, std::size_t count) noexcept {
    Walk<P...>(ByPairs{{target, child}, mask}, 2 * count);
  }
  static void Constant(std::uint8_t* target, const std::uint8_t* child, std::uint32_t weight,
                       std::size_t count) noexcept {
    Walk<P...>(ByConstant<1>{{target, child}, weight}, count);
  }
  static void ConstantTwice(std::uint8_t* target, const std::uint8_t* child, std::uint32_t weight,
                            std::size_t count) noexcept {
    Walk<P...>(ByConstant<2>{{target, child}, weight}, count);
  }
  static constexpr BlendRows kTable = {Masked, MaskedByEvens, MaskedByPairs, Constant,
                                       ConstantTwice};
};

}  // namespace
}  // namespace zor
