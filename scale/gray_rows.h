// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The row kernels of the one-byte scaler and the forms they exist in. All forms of a kernel give
/// the same bytes.
///
/// A kernel that reads through a column table works on a plan, which its form makes from the table
/// once per picture: byte shuffles and weights in the order in which its vectors want them.

#include <cstdint>

namespace zor {

/// A run of columns as the tables give it.
struct GrayColumns {
  const std::int32_t* offsets;  ///< source pixel of each column
  const std::uint8_t* weights;  ///< share of the pixel behind it; not read by picking kernels
  std::int32_t count;           ///< columns, at least 1
  std::int32_t sourceWidth;     ///< bytes of a source row that may be read
};

/// out[i] = row[offset of i].
struct GrayPickKernel {
  /// @return bytes of a plan, or 0 if these columns are beyond the form's reach.
  std::uint64_t (*planBytes)(const GrayColumns& columns) noexcept;
  /// @param plan aligned to 64.
  void (*plan)(const GrayColumns& columns, std::uint8_t* plan) noexcept;
  void (*row)(std::uint8_t* out, const std::uint8_t* row, const std::uint8_t* plan) noexcept;
};

/// Interpolation across; reads the pixel at each offset and the one behind it.
struct GrayLerpKernel {
  std::uint64_t (*planBytes)(const GrayColumns& columns) noexcept;
  void (*plan)(const GrayColumns& columns, std::uint8_t* plan) noexcept;
  /// out[i] = lerp(p, q, wx).
  void (*across)(std::uint8_t* out, const std::uint8_t* row, const std::uint8_t* plan) noexcept;
  /// out[i] = lerp(lerp(p, q, wx), lerp(s, t, wx), weight), s and t from the second row.
  /// @param weight 1 to 255.
  void (*both)(std::uint8_t* out, const std::uint8_t* row, const std::uint8_t* nextRow,
               const std::uint8_t* plan, std::int32_t weight) noexcept;
};

/// out[i] = lerp(a[i], b[i], weight). @param weight 1 to 255. Nothing overlaps.
using GrayDownKernel = void (*)(std::uint8_t* out, const std::uint8_t* a, const std::uint8_t* b,
                                std::int32_t weight, std::int32_t count) noexcept;

/// The kernels of one instruction set.
struct GrayRowForm {
  const char* name;
  GrayPickKernel pick;
  GrayLerpKernel lerp;
  GrayDownKernel down;
};

extern const GrayRowForm kGrayRowsPlain;
extern const GrayRowForm kGrayRowsSse2;
extern const GrayRowForm kGrayRowsAvx2;
extern const GrayRowForm kGrayRowsAvx512;

/// The forms from plain to widest. Plain and SSE2 take any columns.
inline constexpr const GrayRowForm* kGrayRowForms[] = {&kGrayRowsPlain, &kGrayRowsSse2,
                                                       &kGrayRowsAvx2, &kGrayRowsAvx512};

}  // namespace zor
