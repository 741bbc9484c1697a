// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The walk of a row of boxes over a vector policy; included by the vector forms only, each with
/// its own policy, so that every copy is private to its file's instruction flags.
///
/// A policy has a register type `V` of `kLanes` 16-bit lanes and:
///   Widen        kLanes bytes, each in a lane
///   Load, Store  lanes, unaligned
///   Add, Shift   lane by lane; the shift's count is the same for all
///   StoreBytes   kLanes bytes, held to 255

#include "platform/compiler.h"
#include "scale/box_rows.h"

namespace zor {
namespace {

/// The bytes of a row that its boxes read, in bytes from the row's first.
struct BoxSpan {
  std::int64_t first;
  std::int64_t end;
};

ZOR_ALWAYS_INLINE BoxSpan SpanOf(const BoxRow& row) {
  BoxSpan span{0, 0};
  std::int32_t used = 0;
  for (std::int32_t i = 0; i < row.count; ++i) {
    const auto h = static_cast<std::int64_t>(row.counts[i]);
    if (h == 0) continue;
    const std::int64_t at = row.offsets[used];
    if (used == 0) span.first = at;
    // The last pixel is read four bytes wide.
    const std::int64_t end = at + (h - 1) * row.pixelBytes + 4;
    if (end > span.end) span.end = end;
    ++used;
  }
  return span;
}

/// Sums of the box rows, column by column: sums[k] for the byte span.first + k.
template <class P>
ZOR_ALWAYS_INLINE void SumColumns(std::uint16_t* sums, const BoxRow& row, const BoxSpan& span) {
  const std::uint8_t* start = row.source + span.first;
  // The last row decides how far whole vectors may read.
  const std::uint8_t* last = start + (row.rows - 1) * row.sourceStride;
  std::int64_t readable = row.memory.end - last;
  const std::int64_t length = span.end - span.first;
  if (readable > length) readable = length;
  std::int64_t k = 0;
  for (; k + P::kLanes <= readable; k += P::kLanes) {
    typename P::V sum = P::Widen(start + k);
    for (std::int32_t v = 1; v < row.rows; ++v) {
      sum = P::Add(sum, P::Widen(start + v * row.sourceStride + k));
    }
    P::Store(sums + k, sum);
  }
  for (; k < length; ++k) {
    std::uint32_t sum = 0;
    for (std::int32_t v = 0; v < row.rows; ++v) {
      const std::uint8_t* at = start + v * row.sourceStride + k;
      if (at < row.memory.end) sum += *at;
    }
    sums[k] = static_cast<std::uint16_t>(sum);
  }
}

/// Sums of the boxes, four lanes each. No lane passes 16 bits, so four are added as one word.
ZOR_ALWAYS_INLINE void SumBoxes(std::uint16_t* boxes, const std::uint16_t* sums, const BoxRow& row,
                                const BoxSpan& span) {
  std::int32_t used = 0;
  for (std::int32_t i = 0; i < row.count; ++i) {
    std::uint64_t sum = 0;
    if (const std::uint32_t h = row.counts[i]; h != 0) {
      const std::uint16_t* at = sums + (row.offsets[used++] - span.first);
      for (std::uint32_t x = 0; x < h; ++x, at += row.pixelBytes) {
        std::uint64_t pixel;
        __builtin_memcpy(&pixel, at, 8);
        sum += pixel;
      }
    }
    __builtin_memcpy(boxes + 4 * static_cast<std::int64_t>(i), &sum, 8);
  }
}

template <class P>
ZOR_ALWAYS_INLINE typename P::V Reduce(typename P::V sum, const BoxReduction& reduction) {
  typename P::V term = reduction.halve ? P::Shift(sum, 1) : sum;
  typename P::V total = term;
  for (int i = 0; i < 6 && reduction.shifts[i] != 0; ++i) {
    term = P::Shift(term, reduction.shifts[i]);
    total = P::Add(total, term);
  }
  return P::Shift(total, reduction.finalShift);
}

/// Reduces runs of boxes: whole vectors where their boxes are alike, otherwise box by box.
template <class P>
ZOR_ALWAYS_INLINE void ReduceBoxes(std::uint8_t* out, const std::uint16_t* boxes,
                                   const BoxRow& row) {
  constexpr std::int32_t kBoxes = P::kLanes / 4;
  for (std::int32_t i = 0; i < row.count; i += kBoxes) {
    const std::int32_t n = row.count - i < kBoxes ? row.count - i : kBoxes;
    const std::uint16_t* sums = boxes + 4 * static_cast<std::int64_t>(i);
    std::uint8_t* bytes = out + 4 * static_cast<std::int64_t>(i);
    const std::uint32_t h = row.counts[i];
    bool alike = true;
    for (std::int32_t k = 1; k < n; ++k) alike &= row.counts[i + k] == h;
    if (alike) {
      P::StoreBytes(bytes, Reduce<P>(P::Load(sums), row.reductions[h]));
      continue;
    }
    // Two sizes, seldom three, take turns: reduce by each and keep what is its own.
    std::uint32_t seen = 0;
    for (std::int32_t k = 0; k < n; ++k) seen |= 1u << row.counts[i + k];
    for (; seen != 0; seen &= seen - 1) {
      const auto size = static_cast<std::uint32_t>(__builtin_ctz(seen));
      std::uint8_t all[P::kLanes];
      P::StoreBytes(all, Reduce<P>(P::Load(sums), row.reductions[size]));
      for (std::int32_t k = 0; k < n; ++k) {
        if (row.counts[i + k] == size) __builtin_memcpy(bytes + 4 * k, all + 4 * k, 4);
      }
    }
  }
}

template <class P>
ZOR_ALWAYS_INLINE void AverageRow(std::uint8_t* out, const BoxRow& row, const BoxScratch& scratch) {
  const BoxSpan span = SpanOf(row);
  SumColumns<P>(scratch.columns, row, span);
  SumBoxes(scratch.boxes, scratch.columns, row, span);
  ReduceBoxes<P>(out, scratch.boxes, row);
}

}  // namespace
}  // namespace zor
