// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The row kernel of the packed scaler and the forms it exists in. All forms give the same bytes:
/// each rounds to float where the scaler does and nowhere else.

#include <cstdint>

#include "scale/area_rows.h"

namespace zor {

/// A list of columns has two channels and two entries a column: the left neighbour, whose weight is
/// the share of the right one, and the right neighbour.
struct PackedRowForm {
  const char* name;
  /// @return bytes that a plan may need, or 0 if the list is beyond the form.
  std::uint64_t (*planBytes)(const AreaList& list) noexcept;
  /// @param plan aligned to 64. @return false if the list is beyond the form's reach after all.
  bool (*plan)(const AreaList& list, std::uint8_t* plan) noexcept;
  /// With across(row) = l - (l - r) * share of r, in double:
  ///     top = float(across(upper)), out = trunc(top - (top - across(lower)) * share)
  /// @param share of the lower row, 0 to below 1.
  void (*row)(std::uint8_t* out, const std::uint8_t* upper, const std::uint8_t* lower, double share,
              const std::uint8_t* plan) noexcept;
  /// The two steps of `row` apart, for rows that are used again: across(row) of all values.
  /// @param out aligned to 64, with room for a whole last group of `kAreaGroup`.
  void (*across)(double* out, const std::uint8_t* row, const std::uint8_t* plan) noexcept;
  void (*down)(std::uint8_t* out, const double* upper, const double* lower, double share,
               const std::uint8_t* plan) noexcept;
};

extern const PackedRowForm kPackedRowsPlain;
extern const PackedRowForm kPackedRowsAvx2;
extern const PackedRowForm kPackedRowsAvx512;

/// The forms from plain to widest; plain takes any list.
inline constexpr const PackedRowForm* kPackedRowForms[] = {&kPackedRowsPlain, &kPackedRowsAvx2,
                                                           &kPackedRowsAvx512};

}  // namespace zor
