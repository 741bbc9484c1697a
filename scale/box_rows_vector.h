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
///   StoreBytes   kLanes bytes, held to 255, or those of two registers
///   Pairs        the sums of neighbouring pixels of 3 or 4 bytes, as many as make kLanes; of
///   3-byte
///                ones it may read up to kLanes / 2 bytes more
///   AddPixels    the sums of neighbouring pixels of four lanes: those of one register, then those
///                of another
///   Sized        which of kLanes / 4 boxes have a size; Select takes those from its last operand
///   InTurn       averages leading boxes by the form's plan from the sums of columns; how many

#include "platform/compiler.h"
#include "scale/box_rows.h"

namespace zor {
namespace {

/// Sums of one register of columns over @p rows rows.
template <class P>
ZOR_ALWAYS_INLINE typename P::V SumDown(const std::uint8_t* at, std::int64_t stride,
                                        std::int32_t rows) {
  typename P::V sum = P::Widen(at);
  for (std::int32_t v = 1; v < rows; ++v) sum = P::Add(sum, P::Widen(at += stride));
  return sum;
}

/// Sums of the box rows, column by column: sums[k] for the byte run.first + k.
template <class P>
ZOR_ALWAYS_INLINE void SumColumns(std::uint16_t* sums, const BoxRow& row, const BoxRun& run,
                                  std::int32_t rows) {
  const std::uint8_t* start = row.source + run.first;
  const std::int64_t stride = row.sourceStride;
  // The last row decides how far whole vectors may read.
  const std::uint8_t* last = start + (rows - 1) * stride;
  std::int64_t readable = row.memory.end - last;
  const std::int64_t length = run.end - run.first;
  if (readable > length) readable = length;
  std::int64_t k = 0;
  for (; k + 2 * P::kLanes <= readable; k += 2 * P::kLanes) {
    const auto low = SumDown<P>(start + k, stride, rows);
    const auto high = SumDown<P>(start + k + P::kLanes, stride, rows);
    P::Store(sums + k, low);
    P::Store(sums + k + P::kLanes, high);
  }
  for (; k < length; ++k) {
    std::uint32_t sum = 0;
    for (std::int32_t v = 0; v < rows; ++v) {
      const std::uint8_t* at = start + v * stride + k;
      if (at < row.memory.end) sum += *at;
    }
    sums[k] = static_cast<std::uint16_t>(sum);
  }
}

/// The same, with loops of their own for the usual numbers of rows.
template <class P>
ZOR_ALWAYS_INLINE void SumColumns(std::uint16_t* sums, const BoxRow& row, const BoxRun& run) {
  switch (row.rows) {
    case 2:
      return SumColumns<P>(sums, row, run, 2);
    case 3:
      return SumColumns<P>(sums, row, run, 3);
    default:
      return SumColumns<P>(sums, row, run, row.rows);
  }
}

ZOR_ALWAYS_INLINE std::uint64_t FourLanes(const std::uint16_t* at) {
  std::uint64_t lanes;
  __builtin_memcpy(&lanes, at, 8);
  return lanes;
}

/// Sums of the boxes, four lanes each. No lane passes 16 bits, so four are added as one word.
ZOR_ALWAYS_INLINE void SumBoxes(std::uint16_t* boxes, const std::uint16_t* sums,
                                const BoxRun& run) {
  const std::uint32_t* counts = run.counts;
  const std::int32_t* offsets = run.offsets;
  const std::int64_t first = run.first;
  const std::int32_t pixel = run.pixelBytes;
  std::int32_t i = 0;
  // In turn all boxes have `least` pixels, and one more counts or doesn't: nothing to foresee.
  for (const std::int32_t n = run.inTurn; i < n; ++i) {
    const std::uint16_t* at = sums + (*offsets++ - first);
    std::uint64_t sum = FourLanes(at);
    for (std::uint32_t h = 1; h < run.least; ++h) sum += FourLanes(at += pixel);
    sum += FourLanes(at + pixel) & (0 - static_cast<std::uint64_t>(counts[i] - run.least));
    __builtin_memcpy(boxes + 4 * static_cast<std::int64_t>(i), &sum, 8);
  }
  for (const std::int32_t n = run.count; i < n; ++i) {
    std::uint64_t sum = 0;
    if (std::uint32_t h = counts[i]; h != 0) {
      const std::uint16_t* at = sums + (*offsets++ - first);
      do {
        sum += FourLanes(at);
        at += pixel;
      } while (--h != 0);
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

/// Reduces whole vectors of boxes that come in turn: all by either size, of which each box keeps
/// its own. @return how many boxes.
template <class P>
ZOR_ALWAYS_INLINE std::int32_t ReduceInTurn(std::uint8_t* out, const std::uint16_t* boxes,
                                            const BoxRow& row, const BoxRun& run) {
  constexpr std::int32_t kBoxes = P::kLanes / 4;
  if (run.inTurn < kBoxes) return 0;
  const BoxReduction less = row.reductions[run.least];
  const BoxReduction more = row.reductions[run.least + 1 > 16 ? 16 : run.least + 1];
  std::int32_t i = 0;
  for (; i + kBoxes <= run.inTurn; i += kBoxes) {
    const typename P::V sums = P::Load(boxes + 4 * static_cast<std::int64_t>(i));
    P::StoreBytes(out + 4 * static_cast<std::int64_t>(i),
                  P::Select(P::Sized(run.counts + i, run.least + 1), Reduce<P>(sums, less),
                            Reduce<P>(sums, more)));
  }
  return i;
}

/// Reduces runs of boxes, of which each size has its own sequence: all by each size that a vector
/// has, and each box keeps its own.
template <class P>
ZOR_ALWAYS_INLINE void ReduceBoxes(std::uint8_t* out, const std::uint16_t* boxes, const BoxRow& row,
                                   const BoxRun& run) {
  constexpr std::int32_t kBoxes = P::kLanes / 4;
  for (std::int32_t i = ReduceInTurn<P>(out, boxes, row, run); i < run.count; i += kBoxes) {
    const std::int32_t n = run.count - i < kBoxes ? run.count - i : kBoxes;
    const std::uint32_t* counts = run.counts + i;
    const typename P::V sums = P::Load(boxes + 4 * static_cast<std::int64_t>(i));
    std::uint8_t* bytes = out + 4 * static_cast<std::int64_t>(i);
    std::uint32_t seen = 0;
    for (std::int32_t k = 0; k < n; ++k) seen |= 1u << counts[k];
    for (; seen != 0; seen &= seen - 1) {
      const auto size = static_cast<std::uint32_t>(__builtin_ctz(seen));
      std::uint8_t all[P::kLanes];
      P::StoreBytes(all, Reduce<P>(sums, row.reductions[size]));
      for (std::int32_t k = 0; k < n; ++k) {
        if (counts[k] == size) __builtin_memcpy(bytes + 4 * k, all + 4 * k, 4);
      }
    }
  }
}

/// Sums of kLanes / 4 boxes, @p kAcross pixels of @p kBytes each, that lie side by side.
template <class P, int kBytes, int kAcross>
ZOR_ALWAYS_INLINE typename P::V SumAlike(const std::uint8_t* at, std::int64_t stride,
                                         std::int32_t rows) {
  if constexpr (kAcross == 2) {
    typename P::V sum = P::template Pairs<kBytes>(at);
    for (std::int32_t v = 1; v < rows; ++v) {
      sum = P::Add(sum, P::template Pairs<kBytes>(at += stride));
    }
    return sum;
  } else {
    constexpr std::int64_t kHalf = P::kLanes / 4 * kAcross / 2 * kBytes;
    return P::AddPixels(SumAlike<P, kBytes, kAcross / 2>(at, stride, rows),
                        SumAlike<P, kBytes, kAcross / 2>(at + kHalf, stride, rows));
  }
}

/// Averages as many boxes as fill whole vectors, without going through memory.
/// @return how many.
template <class P, int kBytes, int kAcross>
ZOR_ALWAYS_INLINE std::int32_t AverageAlike(std::uint8_t* out, const BoxRow& row,
                                            const BoxRun& run) {
  constexpr std::int32_t kBoxes = P::kLanes / 4;
  constexpr std::int64_t kStep = kBoxes * kAcross * kBytes;
  const std::int64_t stride = row.sourceStride;
  const std::uint8_t* at = row.source + run.first;
  std::int64_t readable = row.memory.end - at - (row.rows - 1) * stride;
  // Three-byte pixels are read in whole registers too.
  if (kBytes == 3) readable -= P::kLanes / 2;
  const BoxReduction reduction = row.reductions[kAcross];
  const auto average = [&](const std::uint8_t* from) {
    // A number of rows that is known keeps the loop out of it.
    return Reduce<P>(row.rows == kAcross ? SumAlike<P, kBytes, kAcross>(from, stride, kAcross)
                                         : SumAlike<P, kBytes, kAcross>(from, stride, row.rows),
                     reduction);
  };
  std::int32_t done = 0;
  for (; done + 2 * kBoxes <= run.count && readable >= 2 * kStep; done += 2 * kBoxes) {
    P::StoreBytes(out, average(at), average(at + kStep));
    at += 2 * kStep;
    out += 2 * P::kLanes;
    readable -= 2 * kStep;
  }
  return done;
}

/// @return whether most boxes are averaged straight from the source.
ZOR_ALWAYS_INLINE bool AveragesAlike(const BoxRun& run) {
  return run.alike == 2 || run.alike == 4;
}

template <class P, int kBytes>
ZOR_ALWAYS_INLINE std::int32_t AverageAlike(std::uint8_t* out, const BoxRow& row,
                                            const BoxRun& run) {
  if (!AveragesAlike(run)) return 0;
  if (run.alike == 2) return AverageAlike<P, kBytes, 2>(out, row, run);
  return AverageAlike<P, kBytes, 4>(out, row, run);
}

/// @return the run behind its first @p done boxes, none of which is empty.
ZOR_ALWAYS_INLINE BoxRun Behind(const BoxRun& run, std::int32_t done) {
  BoxRun rest = run;
  rest.counts += done;
  rest.offsets += done;
  rest.count -= done;
  rest.inTurn -= done;
  return rest;
}

template <class P>
ZOR_ALWAYS_INLINE void AverageRow(std::uint8_t* out, const BoxRow& row, const BoxRun& run,
                                  const BoxScratch& scratch) {
  std::int32_t done =
      run.pixelBytes == 4 ? AverageAlike<P, 4>(out, row, run) : AverageAlike<P, 3>(out, row, run);
  if (done == run.count) return;
  BoxRun rest = Behind(run, done);
  if (done > 0) rest.first = rest.offsets[0];
  out += 4 * static_cast<std::int64_t>(done);
  SumColumns<P>(scratch.columns, row, rest);
  done = P::InTurn(out, row, rest, scratch.columns);
  if (done > 0) rest = Behind(rest, done);
  out += 4 * static_cast<std::int64_t>(done);
  SumBoxes(scratch.boxes, scratch.columns, rest);
  ReduceBoxes<P>(out, scratch.boxes, row, rest);
}

}  // namespace
}  // namespace zor
