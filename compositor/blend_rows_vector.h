// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The row walks over a vector policy. Included by the vector forms only, each with its own policy,
/// so that every copy is private to its file's instruction flags.
///
/// A policy has a register type `V` of `kBytes` samples and:
///   Load, Store       unaligned
///   Set               one weight, 0 to 256, in every 16-bit lane
///   Blend             bytes c, d by byte weights w
///   BlendWide         bytes c, d by 16-bit weights
///   Evens             the even samples of 2 x kBytes mask bytes
///   PairsLow/High     each of kBytes mask samples twice, 2 x kBytes bytes in two registers
///   kMaskedTail       whether LoadTail and StoreTail touch only the first n bytes

#include "compositor/blend_rows.h"
#include "compositor/blend_statement.h"
#include "platform/compiler.h"

namespace zor {
namespace {

template <class P>
void MaskedRow(std::uint8_t* target, const std::uint8_t* child, const std::uint8_t* mask,
               std::size_t count) noexcept {
  std::size_t i = 0;
  for (; i + P::kBytes <= count; i += P::kBytes) {
    P::Store(target + i, P::Blend(P::Load(child + i), P::Load(target + i), P::Load(mask + i)));
  }
  if constexpr (P::kMaskedTail) {
    if (const std::size_t n = count - i; n != 0) {
      P::StoreTail(target + i, n,
                   P::Blend(P::LoadTail(child + i, n), P::LoadTail(target + i, n),
                            P::LoadTail(mask + i, n)));
    }
  } else {
    for (; i < count; ++i) target[i] = BlendSample(child[i], target[i], mask[i]);
  }
}

template <class P>
void MaskedByEvensRow(std::uint8_t* target, const std::uint8_t* child, const std::uint8_t* mask,
                      std::size_t count) noexcept {
  std::size_t i = 0;
  for (; i + P::kBytes <= count; i += P::kBytes) {
    P::Store(target + i,
             P::Blend(P::Load(child + i), P::Load(target + i),
                      P::Evens(P::Load(mask + 2 * i), P::Load(mask + 2 * i + P::kBytes))));
  }
  if constexpr (P::kMaskedTail) {
    if (const std::size_t n = count - i; n != 0) {
      const std::size_t low = 2 * n < P::kBytes ? 2 * n : P::kBytes;
      const typename P::V weights =
          P::Evens(P::LoadTail(mask + 2 * i, low), P::LoadTail(mask + 2 * i + low, 2 * n - low));
      P::StoreTail(target + i, n,
                   P::Blend(P::LoadTail(child + i, n), P::LoadTail(target + i, n), weights));
    }
  } else {
    for (; i < count; ++i) target[i] = BlendSample(child[i], target[i], mask[2 * i]);
  }
}

template <class P>
void MaskedByPairsRow(std::uint8_t* target, const std::uint8_t* child, const std::uint8_t* mask,
                      std::size_t count) noexcept {
  std::size_t i = 0;
  for (; i + P::kBytes <= count; i += P::kBytes) {
    const typename P::V m = P::Load(mask + i);
    std::uint8_t* t = target + 2 * i;
    const std::uint8_t* c = child + 2 * i;
    P::Store(t, P::Blend(P::Load(c), P::Load(t), P::PairsLow(m)));
    P::Store(t + P::kBytes,
             P::Blend(P::Load(c + P::kBytes), P::Load(t + P::kBytes), P::PairsHigh(m)));
  }
  if constexpr (P::kMaskedTail) {
    if (const std::size_t n = count - i; n != 0) {
      const typename P::V m = P::LoadTail(mask + i, n);
      const std::size_t low = 2 * n < P::kBytes ? 2 * n : P::kBytes;
      std::uint8_t* t = target + 2 * i;
      const std::uint8_t* c = child + 2 * i;
      P::StoreTail(t, low, P::Blend(P::LoadTail(c, low), P::LoadTail(t, low), P::PairsLow(m)));
      if (const std::size_t high = 2 * n - low; high != 0) {
        P::StoreTail(t + low, high,
                     P::Blend(P::LoadTail(c + low, high), P::LoadTail(t + low, high),
                              P::PairsHigh(m)));
      }
    }
  } else {
    for (i *= 2; i < 2 * count; ++i) target[i] = BlendSample(child[i], target[i], mask[i / 2]);
  }
}

template <class P>
void ConstantRow(std::uint8_t* target, const std::uint8_t* child, std::uint32_t weight,
                 std::size_t count) noexcept {
  const typename P::V w = P::Set(weight);
  std::size_t i = 0;
  for (; i + P::kBytes <= count; i += P::kBytes) {
    P::Store(target + i, P::BlendWide(P::Load(child + i), P::Load(target + i), w));
  }
  if constexpr (P::kMaskedTail) {
    if (const std::size_t n = count - i; n != 0) {
      P::StoreTail(target + i, n,
                   P::BlendWide(P::LoadTail(child + i, n), P::LoadTail(target + i, n), w));
    }
  } else {
    for (; i < count; ++i) target[i] = BlendSample(child[i], target[i], weight);
  }
}

}  // namespace
}  // namespace zor
