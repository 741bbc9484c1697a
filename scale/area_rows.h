// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The row kernels of the area scaler and the forms they exist in. All forms give the same bytes:
/// the additions of one value keep their order, only values are worked on side by side.

#include <cstdint>

#include "convert/feature_word.h"

namespace zor {

/// One source pixel's share in one destination pixel.
struct AreaEntry {
  std::int32_t source;  ///< byte offset within a source row
  std::int32_t value;   ///< first channel's index within a destination row
  float weight;
};

/// The contributions to one row, in the order of the source.
struct AreaList {
  const AreaEntry* entries;
  std::int32_t count;
  std::int32_t channels;
  std::int32_t values;    ///< destination width times channels
  std::int32_t rowBytes;  ///< bytes of a source row
  std::int32_t reach;     ///< bytes that the entries read of a row; rounding can pass the row's end
};

/// One destination row and the source rows that end in it.
struct AreaTargetRow {
  std::uint8_t* out;
  const std::uint8_t* const* rows;  ///< source rows
  std::int32_t count;               ///< of them, at least 1
  float share;                      ///< of the last one, behind the boundary
  float rest;                       ///< 1 - share
};

/// The kernel makes destination rows. For each source row, A[v] is the sum of byte times weight
/// over the entries of v, and B[v] what has gathered for v so far. Every row but the last adds A to
/// B. The last one straddles the boundary by the given share:
///     out[v] = low byte of trunc(A[v] * rest + B[v] + 0.5), B[v] = A[v] * share
/// so that without a share all of it is given out and nothing stays.
struct AreaRowForm {
  const char* name;
  /// @return bytes that a plan may need, or 0 if the list is beyond the form.
  std::uint64_t (*planBytes)(const AreaList& list) noexcept;
  /// @param plan aligned to 64. @return false if the list is beyond the form's reach after all.
  bool (*plan)(const AreaList& list, std::uint8_t* plan) noexcept;
  /// Makes @p count rows, one after another or side by side.
  /// @param b gathered sums, aligned to 64, with room for a whole last group.
  void (*rows)(const AreaTargetRow* targets, std::int32_t count, float* b,
               const std::uint8_t* plan) noexcept;
};

/// Values are worked on in groups; the gathered sums have room for a whole last group.
inline constexpr std::int32_t kAreaGroup = 16;

extern const AreaRowForm kAreaRowsPlain;
extern const AreaRowForm kAreaRowsSse2;
extern const AreaRowForm kAreaRowsAvx2;
extern const AreaRowForm kAreaRowsAvx512;

/// The forms from plain to widest; plain takes any list.
inline constexpr const AreaRowForm* kAreaRowForms[] = {&kAreaRowsPlain, &kAreaRowsSse2,
                                                       &kAreaRowsAvx2, &kAreaRowsAvx512};

}  // namespace zor
