// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Right-angle moves of pixels and the forms they exist in. All forms give the same bytes, and read
/// and write nothing but the pixels they move.

#include <cstdint>

#include "convert/feature_word.h"

namespace zor {

/// A tile whose columns are the source's rows: column x, row y takes the pixel at
/// source + x columnStep + y pixels. Source and target don't overlap.
struct TurnedTile {
  std::uint8_t* target;
  std::int64_t targetStep;
  const std::uint8_t* source;
  std::int64_t columnStep;
  std::int32_t columns;
  std::int32_t rows;
  /// Where the rows that come next are written, if they are one run of memory and not written past
  /// the caches; otherwise 0. Those of the source come behind the tile's own.
  std::uintptr_t targetAhead = 0;
};

/// The moves of one pixel size.
struct MoveKernels {
  /// The smallest tile that @p turn takes.
  std::int32_t columns;
  std::int32_t rows;
  void (*turn)(const TurnedTile& tile) noexcept;
  /// Writes @p count pixels in reverse. @param source the last one to be written; at least 1.
  void (*reverse)(std::uint8_t* target, const std::uint8_t* source, std::int32_t count) noexcept;
};

/// The kernels of one instruction set.
struct MoveForm {
  const char* name;
  MoveKernels gray;
  MoveKernels rgb24;
  MoveKernels rgb32;

  constexpr const MoveKernels& For(std::int32_t pixelBytes) const noexcept {
    return pixelBytes == 1 ? gray : pixelBytes == 3 ? rgb24 : rgb32;
  }
};

extern const MoveForm kMovesPlain;
extern const MoveForm kMovesSse2;
extern const MoveForm kMovesAvx2;
extern const MoveForm kMovesAvx512;

/// The forms from plain to widest.
inline constexpr const MoveForm* kMoveForms[] = {&kMovesPlain, &kMovesSse2, &kMovesAvx2,
                                                 &kMovesAvx512};

/// Kernels of the plain form, for pixel sizes that a form has none for.
void TurnPlain3(const TurnedTile& tile) noexcept;
void ReversePlain3(std::uint8_t* target, const std::uint8_t* source, std::int32_t count) noexcept;

}  // namespace zor
