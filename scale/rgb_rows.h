// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Fast rows of 3- and 4-byte pixels, in forms of equal bytes.
///
/// A kernel that reads through a column table writes target pixels side by side: of a 4-byte source
/// a 3-byte target drops the fourth byte, and of a 3-byte source a 4-byte target gets a 0 there.

#include <cstdint>

namespace zor {

/// A run of columns as the axis table gives it.
struct RgbColumns {
  const std::int32_t* offsets;  ///< bytes of each column's pixel in a source row, never falling
  const std::uint32_t* words;   ///< one weight in all four bytes; not read by picking
  std::int32_t count;
  std::int32_t sourceBytes;  ///< of a pixel: 3 or 4
  std::int32_t targetBytes;  ///< of a pixel: 3 or 4
  std::int64_t rowBytes;     ///< bytes of a source row that may be read
};

/// Copies the pixel at each offset. The plan is made from the table once per picture.
struct RgbPickKernel {
  /// @return bytes of a plan, or -1 if these columns are beyond the form's reach.
  std::int64_t (*planBytes)(const RgbColumns& columns) noexcept;
  /// @param plan aligned to 64.
  void (*plan)(const RgbColumns& columns, std::uint8_t* plan) noexcept;
  void (*row)(std::uint8_t* out, const std::uint8_t* row, const RgbColumns& columns,
              const std::uint8_t* plan) noexcept;
};

/// Interpolates the pixel at each offset, p, and the one behind it, q.
struct RgbLerpKernel {
  std::int64_t (*planBytes)(const RgbColumns& columns) noexcept;
  void (*plan)(const RgbColumns& columns, std::uint8_t* plan) noexcept;
  /// lerp(p, q, wx) of each column.
  void (*across)(std::uint8_t* out, const std::uint8_t* row, const RgbColumns& columns,
                 const std::uint8_t* plan) noexcept;
  /// lerp(lerp(p, q, wx), lerp(s, t, wx), weight), s and t from the next row.
  /// @param weight 1 to 255.
  void (*both)(std::uint8_t* out, const std::uint8_t* row, const std::uint8_t* nextRow,
               const RgbColumns& columns, const std::uint8_t* plan, std::int32_t weight) noexcept;
};

struct RgbRowForm {
  const char* name;
  RgbPickKernel pick;
  RgbLerpKernel lerp;
  /// Drops every fourth byte: count pixels of 4 bytes to exactly 3 x count bytes.
  void (*pack)(std::uint8_t* out, const std::uint8_t* in, std::int32_t count) noexcept;
};

extern const RgbRowForm kRgbRowsPlain;
extern const RgbRowForm kRgbRowsAvx2;
extern const RgbRowForm kRgbRowsAvx512;

/// The forms from plain to widest.
inline constexpr const RgbRowForm* kRgbRowForms[] = {&kRgbRowsPlain, &kRgbRowsAvx2,
                                                     &kRgbRowsAvx512};

}  // namespace zor
